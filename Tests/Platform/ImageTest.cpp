#include "QVPlatform/Image.h"
#include "Support/TestImages.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <thread>
#include <vector>

namespace {

using qv::Image;
using qv::ImageFileType;
using namespace testsupport;

/// A file that goes away with the test.
class TemporaryFile {
  public:
    explicit TemporaryFile(const qv::Data& data)
        : mPath(std::filesystem::temp_directory_path() /
                ("qv-image-" + std::to_string(reinterpret_cast<std::uintptr_t>(this)) + "-" +
                 testing::UnitTest::GetInstance()->current_test_info()->name())) {
        std::ofstream(mPath, std::ios::binary)
            .write(reinterpret_cast<const char*>(data.data()), static_cast<std::streamsize>(data.size()));
    }
    ~TemporaryFile() { std::filesystem::remove(mPath); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    const std::filesystem::path& path() const { return mPath; }

  private:
    std::filesystem::path mPath;
};

void expectNothing(const std::shared_ptr<Image>& image) {
    ASSERT_TRUE(image);
    EXPECT_FALSE(image->isValid());
    EXPECT_EQ(image->size(), (qv::Size{0, 0}));
    EXPECT_FALSE(image->TIFFRepresentation());
    EXPECT_FALSE(image->representationUsingType(ImageFileType::JPEG, 0.5));
    EXPECT_FALSE(image->representationUsingType(ImageFileType::PNG));
}

TEST(Image, KnowsItsSizeAndKeepsItsBytes) {
    const qv::Data data = makePNG(quarters(31, 17));
    const auto image = Image::initWithData(data);
    EXPECT_TRUE(image->isValid());
    EXPECT_EQ(image->size(), (qv::Size{31, 17}));
    EXPECT_EQ(image->encodedData(), data);
}

TEST(Image, OfNoBytesIsNotValid) {
    expectNothing(Image::initWithData({}));
}

TEST(Image, OfForeignBytesIsNotValid) {
    for (const char* text : {"x", "<html></html>", "GIF89a", "\xFF\xD8", "\x89PNG", "BM", "%PDF-1.4", "RIFF....WAVE"}) {
        const std::string bytes(text);
        expectNothing(Image::initWithData({bytes.begin(), bytes.end()}));
    }
}

TEST(Image, IsReadFromAFile) {
    const TemporaryFile file(makeJPEG(quarters(40, 20)));
    const auto image = Image::initWithContentsOfFile(file.path());
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), (qv::Size{40, 20}));
}

TEST(Image, OfAFileThatIsNoPictureIsNotValid) {
    const TemporaryFile file({'t', 'e', 'x', 't'});
    expectNothing(Image::initWithContentsOfFile(file.path()));
}

TEST(Image, OfAnEmptyFileIsNotValid) {
    const TemporaryFile file({});
    expectNothing(Image::initWithContentsOfFile(file.path()));
}

TEST(Image, IsNullForAFileThatIsFarTooLarge) {
    const TemporaryFile file(makePNG(quarters(8, 8)));
    std::filesystem::resize_file(file.path(), (std::uintmax_t{1} << 30) + 1);
    EXPECT_FALSE(Image::initWithContentsOfFile(file.path()));
}

TEST(Image, IsNullWhereThereIsNoFile) {
    EXPECT_FALSE(Image::initWithContentsOfFile("/nonexistent/card.jpg"));
    EXPECT_FALSE(Image::initWithContentsOfFile(""));
    EXPECT_FALSE(Image::initWithContentsOfFile(std::filesystem::temp_directory_path()));
    EXPECT_FALSE(Image::initWithContentsOfFile("/dev/zero"));
}

TEST(Image, GivesTheSameBytesEachTime) {
    const auto image = Image::initWithData(makeJPEG(photograph(301, 203)));
    const auto again = Image::initWithData(makeJPEG(photograph(301, 203)));
    for (const ImageFileType type : {ImageFileType::JPEG, ImageFileType::PNG, ImageFileType::TIFF}) {
        const auto first = image->representationUsingType(type, 0.7);
        ASSERT_TRUE(first);
        EXPECT_EQ(first, image->representationUsingType(type, 0.7));
        EXPECT_EQ(first, again->representationUsingType(type, 0.7));
    }
}

TEST(Image, WritesNeitherDatesNorVersions) {
    const auto image = Image::initWithData(makePNG(quarters(16, 16)));
    const qv::Data png = image->representationUsingType(ImageFileType::PNG).value();
    const qv::Data tiff = image->TIFFRepresentation().value();
    const std::string pngText(png.begin(), png.end());
    EXPECT_EQ(pngText.find("tIME"), std::string::npos);
    EXPECT_EQ(pngText.find("tEXt"), std::string::npos);
    const std::string tiffText(tiff.begin(), tiff.end());
    EXPECT_EQ(tiffText.find("TIFF"), std::string::npos);
    EXPECT_EQ(tiffText.find("20"), std::string::npos);
}

TEST(Image, TIFFRepresentationIsTheTIFFType) {
    const auto image = Image::initWithData(makePNG(quarters(16, 16)));
    EXPECT_EQ(image->TIFFRepresentation(), image->representationUsingType(ImageFileType::TIFF));
}

TEST(Image, SurvivesTheFormatItIsWrittenIn) {
    const Pixels pixels = photograph(61, 43);
    const auto image = Image::initWithData(makePNG(pixels));
    EXPECT_EQ(readPNG(*image->representationUsingType(ImageFileType::PNG)).rgba, pixels.rgba);
    EXPECT_EQ(readTIFF(*image->TIFFRepresentation()).rgba, pixels.rgba);
    EXPECT_GT(psnr(readJPEG(*image->representationUsingType(ImageFileType::JPEG, 1)), pixels), 42);
}

TEST(Image, IsUsedBySeveralThreadsAtOnce) {
    const auto image = Image::initWithData(makeJPEG(photograph(640, 480)));
    const auto drawn = Image::initWithSize({320, 240}, image);
    const auto expected = drawn->representationUsingType(ImageFileType::JPEG, 0.7);
    ASSERT_TRUE(expected);
    std::atomic<int> equal = 0;
    std::vector<std::thread> threads;
    for (int index = 0; index < 4; ++index) {
        threads.emplace_back([&] {
            for (int round = 0; round < 3; ++round) {
                if (drawn->representationUsingType(ImageFileType::JPEG, 0.7) == expected) ++equal;
                if (image->isValid() && image->size().width == 640) ++equal;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(equal, 4 * 3 * 2);
}

}  // namespace
