#include "QVPlatform/Image.h"
#include "Support/TestImages.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <random>

namespace {

using qv::Image;
using qv::ImageFileType;
using namespace testsupport;

/// Asks for everything; the answer does not matter, coming back does. Returns whether there were pixels.
bool exercise(const qv::Data& data) {
    const auto image = Image::initWithData(data);
    const auto drawn = Image::initWithSize({9, 7}, image);
    const bool hasPixels = drawn->representationUsingType(ImageFileType::JPEG, 0.7).has_value();
    EXPECT_TRUE(image->isValid() || !hasPixels);
    EXPECT_EQ(drawn->isValid(), image->isValid());
    return hasPixels;
}

std::vector<std::pair<const char*, qv::Data>> smallPictures() {
    const Pixels pixels = quarters(18, 14);
    std::vector<std::pair<const char*, qv::Data>> pictures{
        {"JPEG", makeJPEG(pixels, {.horizontalSampling = 2, .verticalSampling = 2, .orientation = 6})},
        {"progressive JPEG", makeJPEG(pixels, {.isProgressive = true})},
        {"CMYK JPEG", makeJPEG(pixels, {.colours = JPEGOptions::Colours::CMYK})},
        {"PNG", makePNG(pixels, {.kind = PNGOptions::Kind::RGBA, .orientation = 3})},
        {"interlaced PNG", makePNG(pixels, {.kind = PNGOptions::Kind::Palette, .isInterlaced = true})},
        {"TIFF", makeTIFF(pixels)},
        {"deflated TIFF", makeTIFF(pixels, {.hasAlpha = true, .compression = 8})},
        {"WebP", makeWebP(pixels, {.orientation = 5})},
        {"lossy WebP", makeWebP(pixels, {.isLossless = false})}};
    if (auto heic = makeHEIC(quarters(64, 64))) pictures.emplace_back("HEIC", std::move(*heic));
    return pictures;
}

TEST(HostileImage, MayEndAnywhere) {
    for (const auto& [name, data] : smallPictures()) {
        SCOPED_TRACE(name);
        EXPECT_TRUE(exercise(data));
        for (std::size_t count = 0; count < data.size(); ++count)
            exercise({data.begin(), data.begin() + static_cast<std::ptrdiff_t>(count)});
    }
}

TEST(HostileImage, MayHaveAnyByteWrong) {
    std::minstd_rand random(7);
    for (const auto& [name, data] : smallPictures()) {
        SCOPED_TRACE(name);
        for (std::size_t index = 0; index < data.size(); ++index) {
            qv::Data broken = data;
            broken[index] = static_cast<std::uint8_t>(random());
            exercise(broken);
        }
    }
}

TEST(HostileImage, MayBeNoiseBehindASignature) {
    std::minstd_rand random(11);
    for (const auto& [name, data] : smallPictures()) {
        SCOPED_TRACE(name);
        for (int round = 0; round < 50; ++round) {
            qv::Data noise(data.begin(),
                           data.begin() + std::min<std::ptrdiff_t>(64, static_cast<std::ptrdiff_t>(data.size()) / 2));
            for (int index = 0; index < 500; ++index)
                noise.push_back(static_cast<std::uint8_t>(random()));
            exercise(noise);
        }
    }
}

TEST(HostileImage, IsUsedWhenAJPEGIsCutInItsPixels) {
    const qv::Data whole = makeJPEG(photograph(160, 120));
    const qv::Data half(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(whole.size() / 2));
    const auto image = Image::initWithData(half);
    ASSERT_TRUE(image->isValid());
    const auto data = image->representationUsingType(ImageFileType::JPEG, 0.9);
    ASSERT_TRUE(data);
    const Pixels decoded = readJPEG(*data);
    const Pixels expected = photograph(160, 120);
    // The upper rows were there.
    EXPECT_LE(std::abs(decoded.at(20, 5)[1] - expected.at(20, 5)[1]), 20);
}

TEST(HostileImage, YieldsNothingWhenOtherFormatsAreCut) {
    for (const qv::Data& whole :
         {makePNG(photograph(80, 60)), makeTIFF(photograph(80, 60)), makeWebP(photograph(80, 60))}) {
        qv::Data half(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(whole.size() / 2));
        const auto image = Image::initWithData(half);
        EXPECT_FALSE(image->representationUsingType(ImageFileType::PNG));
    }
}

void putBigEndian(qv::Data& data, std::size_t offset, std::uint32_t value, int bytes) {
    for (int index = 0; index < bytes; ++index) {
        data[offset + static_cast<std::size_t>(index)] = static_cast<std::uint8_t>(value >> (8 * (bytes - 1 - index)));
    }
}

std::uint32_t checksum(const qv::Data& data, std::size_t offset, std::size_t count) {
    std::uint32_t crc = ~0U;
    for (std::size_t index = offset; index < offset + count; ++index) {
        crc ^= data[index];
        for (int bit = 0; bit < 8; ++bit)
            crc = crc & 1 ? crc >> 1 ^ 0xEDB88320U : crc >> 1;
    }
    return ~crc;
}

qv::Data pngClaiming(std::uint32_t width, std::uint32_t height) {
    qv::Data data = makePNG(quarters(8, 8));
    putBigEndian(data, 16, width, 4);
    putBigEndian(data, 20, height, 4);
    putBigEndian(data, 29, checksum(data, 12, 17), 4);
    return data;
}

qv::Data jpegClaiming(std::uint32_t width, std::uint32_t height, bool isProgressive) {
    qv::Data data = makeJPEG(quarters(8, 8), {.isProgressive = isProgressive});
    const qv::Data marker{0xFF, static_cast<std::uint8_t>(isProgressive ? 0xC2 : 0xC0)};
    const auto frame =
        static_cast<std::size_t>(std::search(data.begin(), data.end(), marker.begin(), marker.end()) - data.begin());
    putBigEndian(data, frame + 5, height, 2);
    putBigEndian(data, frame + 7, width, 2);
    return data;
}

/// A TIFF of one directory with 32-bit numbers only, big-endian.
qv::Data tiffClaiming(std::uint32_t width, std::uint32_t height) {
    qv::Data data = makeTIFF(quarters(8, 8), {.isBigEndian = true});
    std::size_t entry =
        (std::size_t{data[4]} << 24 | std::size_t{data[5]} << 16 | std::size_t{data[6]} << 8 | data[7]) + 2;
    for (const std::uint32_t value : {width, height}) {
        putBigEndian(data, entry + 2, 4, 2);
        putBigEndian(data, entry + 8, value, 4);
        entry += 12;
    }
    return data;
}

std::int64_t peakMemory() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return std::int64_t{usage.ru_maxrss} * 1024;
}

TEST(HostileImage, TheClaimMakersWork) {
    for (const qv::Data& data :
         {pngClaiming(8, 8), jpegClaiming(8, 8, false), jpegClaiming(8, 8, true), tiffClaiming(8, 8)}) {
        EXPECT_TRUE(exercise(data));
    }
    EXPECT_EQ(Image::initWithData(pngClaiming(700, 30))->size(), (qv::Size{700, 30}));
    EXPECT_EQ(Image::initWithData(jpegClaiming(700, 30, false))->size(), (qv::Size{700, 30}));
    EXPECT_EQ(Image::initWithData(tiffClaiming(700, 30))->size(), (qv::Size{700, 30}));
}

TEST(HostileImage, IsNotValidBeyondTheLimits) {
    for (const auto& [width, height] : {std::pair{60000U, 60000U}, {0U, 10U}, {10U, 0U}, {0U, 0U}}) {
        EXPECT_FALSE(Image::initWithData(pngClaiming(width, height))->isValid()) << width;
        EXPECT_FALSE(Image::initWithData(tiffClaiming(width, height))->isValid()) << width;
        EXPECT_FALSE(Image::initWithData(jpegClaiming(width, height, false))->isValid()) << width;
        EXPECT_FALSE(Image::initWithData(jpegClaiming(width, height, true))->isValid()) << width;
    }
    EXPECT_FALSE(Image::initWithData(pngClaiming(8001, 8000))->isValid());
    EXPECT_TRUE(Image::initWithData(pngClaiming(8000, 8000))->isValid());
    EXPECT_FALSE(Image::initWithData(pngClaiming(1'000'001, 1))->isValid());
    EXPECT_FALSE(Image::initWithData(tiffClaiming(8001, 8000))->isValid());
    EXPECT_FALSE(Image::initWithData(tiffClaiming(0xFFFFFFFF, 0xFFFFFFFF))->isValid());
    EXPECT_FALSE(Image::initWithData(jpegClaiming(15625, 16001, false))->isValid());
    EXPECT_TRUE(Image::initWithData(jpegClaiming(15625, 16000, false))->isValid());
    EXPECT_FALSE(Image::initWithData(jpegClaiming(8001, 8000, true))->isValid());
    EXPECT_TRUE(Image::initWithData(jpegClaiming(8000, 8000, true))->isValid());
}

TEST(HostileImage, CostsNoMemoryForPixelsThatAreNotThere) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the sanitizer's own book-keeping hides what is measured";
#endif
    constexpr std::int64_t kMargin = 64 << 20;
    const std::int64_t before = peakMemory();
    for (const qv::Data& data :
         {pngClaiming(60000, 60000), tiffClaiming(60000, 60000), jpegClaiming(60000, 60000, false),
          jpegClaiming(60000, 60000, true), pngClaiming(8000, 8000), tiffClaiming(8000, 8000)}) {
        EXPECT_FALSE(exercise(data));
    }
    // A baseline JPEG that ends early is used; reduced in its decoder it needs little at any size.
    EXPECT_TRUE(exercise(jpegClaiming(15625, 16000, false)));
    EXPECT_LT(peakMemory() - before, kMargin);
}

/// A progressive JPEG whose last pass is there `count` times more.
qv::Data jpegWithMorePasses(int count) {
    const qv::Data data = makeJPEG(quarters(64, 64), {.isProgressive = true});
    const qv::Data scanMarker{0xFF, 0xDA};
    const auto last = std::find_end(data.begin(), data.end(), scanMarker.begin(), scanMarker.end());
    qv::Data longer(data.begin(), data.end() - 2);
    for (int pass = 0; pass < count; ++pass)
        longer.insert(longer.end(), last, data.end() - 2);
    longer.insert(longer.end(), data.end() - 2, data.end());
    return longer;
}

// Each pass costs a few bytes and a walk over the whole picture.
TEST(HostileImage, YieldsNothingWhenAJPEGHasEndlessPasses) {
    EXPECT_TRUE(exercise(jpegWithMorePasses(100)));
    EXPECT_FALSE(exercise(jpegWithMorePasses(600)));
}

TEST(HostileImage, YieldsNothingAtASizeThatDoesNotFit) {
    const auto image = Image::initWithData(jpegClaiming(15625, 16000, false));
    EXPECT_FALSE(image->TIFFRepresentation());
}

}  // namespace
