#include "QVPlatform/Image.h"
#include "Support/TestImages.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using qv::Image;
using qv::ImageFileType;
using namespace testsupport;

class ImageOrientation : public testing::TestWithParam<int> {
  protected:
    /// Checks size and pixels, at the picture's size and reduced to odd sizes.
    void expectUpright(const qv::Data& data, const Pixels& stored, double accuracy) const {
        const Pixels upright = turnedUpright(stored, GetParam());
        const auto image = Image::initWithData(data);
        ASSERT_TRUE(image->isValid());
        EXPECT_EQ(image->size(), (qv::Size{double(upright.width), double(upright.height)}));
        EXPECT_GE(psnr(readPNG(*image->representationUsingType(ImageFileType::PNG)), upright), accuracy);
        EXPECT_GT(psnr(readJPEG(*image->representationUsingType(ImageFileType::JPEG, 1)), upright), 25);
        const int width = upright.width / 3;
        const int height = upright.height / 3;
        const auto drawn = Image::initWithSize({double(width), double(height)}, image);
        const Pixels small = readPNG(*drawn->representationUsingType(ImageFileType::PNG));
        EXPECT_GT(psnr(small, boxReduced(upright, width, height)), 25);
    }
};

TEST_P(ImageOrientation, IsAppliedToJPEG) {
    const Pixels stored = quarters(97, 61);
    for (const bool isBigEndian : {false, true}) {
        for (const int sampling : {1, 2}) {
            expectUpright(makeJPEG(stored, {.horizontalSampling = sampling,
                                            .verticalSampling = sampling,
                                            .orientation = GetParam(),
                                            .isBigEndianExif = isBigEndian}),
                          stored, 26);
        }
        expectUpright(makeJPEG(stored, {.horizontalSampling = 2, .orientation = GetParam()}), stored, 26);
    }
}

TEST_P(ImageOrientation, IsAppliedToJPEGInRGB) {
    const Pixels stored = quarters(97, 61);
    expectUpright(makeJPEG(stored, {.colours = JPEGOptions::Colours::RGB, .orientation = GetParam()}), stored, 28);
}

TEST_P(ImageOrientation, IsAppliedToTIFF) {
    const Pixels stored = quarters(50, 40);
    expectUpright(makeTIFF(stored, {.orientation = GetParam()}), stored, 99);
}

TEST_P(ImageOrientation, IsAppliedToPNG) {
    const Pixels stored = quarters(33, 45);
    expectUpright(makePNG(stored, {.orientation = GetParam()}), stored, 99);
}

TEST_P(ImageOrientation, IsAppliedToWebP) {
    const Pixels stored = quarters(44, 35);
    expectUpright(makeWebP(stored, {.orientation = GetParam()}), stored, 99);
}

INSTANTIATE_TEST_SUITE_P(All, ImageOrientation, testing::Range(1, 9));

TEST(ImageOrientationTag, CountsOnlyFromOneToEight) {
    for (const int orientation : {9, 200}) {
        const auto image = Image::initWithData(makeJPEG(quarters(20, 10), {.orientation = orientation}));
        EXPECT_EQ(image->size(), (qv::Size{20, 10})) << orientation;
    }
}

TEST(ImageOrientationTag, IsNotLookedForInBrokenExif) {
    const qv::Data whole = makeJPEG(quarters(20, 10), {.orientation = 6});
    const qv::Data signature{'E', 'x', 'i', 'f', 0, 0};
    const auto found = std::search(whole.begin(), whole.end(), signature.begin(), signature.end());
    const auto exif = static_cast<std::size_t>(found - whole.begin()) + signature.size();
    // Any byte of the block may be wrong: the picture is drawn all the same, turned or not.
    for (std::size_t index = exif; index < exif + 26; ++index) {
        for (const int value : {0x00, 0x7F, 0xFF}) {
            qv::Data broken = whole;
            broken[index] = static_cast<std::uint8_t>(value);
            const auto image = Image::initWithData(broken);
            ASSERT_TRUE(image->isValid());
            EXPECT_TRUE(image->representationUsingType(ImageFileType::JPEG, 0.7));
        }
    }
}

TEST(ImageOrientationTag, TurnsADrawingOnlyOnce) {
    const auto image = Image::initWithData(makeJPEG(quarters(80, 40), {.orientation = 6}));
    const auto inner = Image::initWithSize({40, 80}, image);
    const auto outer = Image::initWithSize({20, 40}, inner);
    const Pixels pixels = readPNG(*outer->representationUsingType(ImageFileType::PNG));
    EXPECT_LE(distance(pixels.colour(4, 8), kBlue), 6);
    EXPECT_LE(distance(pixels.colour(15, 8), kRed), 6);
    EXPECT_LE(distance(pixels.colour(4, 31), kYellow), 6);
    EXPECT_LE(distance(pixels.colour(15, 31), kGreen), 6);
}

}  // namespace
