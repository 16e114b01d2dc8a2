#include "QVPlatform/Image.h"
#include "Support/TestImages.h"

#include <gtest/gtest.h>

#include <functional>
#include <ostream>

namespace {

using qv::Image;
using qv::ImageFileType;
using namespace testsupport;
using Kind = PNGOptions::Kind;

Pixels pixelsOf(const std::shared_ptr<Image>& image) {
    const auto data = image->representationUsingType(ImageFileType::PNG);
    EXPECT_TRUE(data);
    return data ? readPNG(*data) : Pixels();
}

struct FormatCase {
    const char* name;
    std::function<qv::Data(const Pixels&)> make;
    bool isExact = true;
    friend std::ostream& operator<<(std::ostream& stream, const FormatCase& row) { return stream << row.name; }
};

qv::Data makeExactTIFF(const Pixels& pixels, int compression, bool isBigEndian) {
    return makeTIFF(pixels, {.compression = compression, .isBigEndian = isBigEndian});
}

class ImageOfFormat : public testing::TestWithParam<FormatCase> {};

TEST_P(ImageOfFormat, HasItsPixels) {
    const Pixels pixels = quarters(61, 43);
    const auto image = Image::initWithData(GetParam().make(pixels));
    ASSERT_TRUE(image->isValid());
    EXPECT_EQ(image->size(), (qv::Size{61, 43}));
    const Pixels decoded = pixelsOf(image);
    EXPECT_TRUE(!GetParam().isExact || decoded.rgba == pixels.rgba);
    EXPECT_GT(psnr(decoded, pixels), 25);
}

TEST_P(ImageOfFormat, IsReduced) {
    const auto image = Image::initWithData(GetParam().make(quarters(400, 300)));
    const Pixels small = pixelsOf(Image::initWithSize({40, 30}, image));
    EXPECT_LE(distance(small.colour(8, 6), kRed), 4);
    EXPECT_LE(distance(small.colour(32, 6), kGreen), 4);
    EXPECT_LE(distance(small.colour(8, 24), kBlue), 4);
    EXPECT_LE(distance(small.colour(32, 24), kYellow), 4);
}

TEST_P(ImageOfFormat, MayBeOnePixel) {
    const auto image = Image::initWithData(GetParam().make(Pixels(1, 1, kBlue)));
    ASSERT_TRUE(image->isValid());
    EXPECT_LE(distance(pixelsOf(Image::initWithSize({9, 5}, image)).colour(8, 4), kBlue), 4);
}

INSTANTIATE_TEST_SUITE_P(
    Formats, ImageOfFormat,
    testing::Values(
        FormatCase{"PNG", [](const Pixels& pixels) { return makePNG(pixels); }},
        FormatCase{"PNG16", [](const Pixels& pixels) { return makePNG(pixels, {.depth = 16}); }},
        FormatCase{"PNGWithAlpha", [](const Pixels& pixels) { return makePNG(pixels, {.kind = Kind::RGBA}); }},
        FormatCase{"PNGPalette", [](const Pixels& pixels) { return makePNG(pixels, {.kind = Kind::Palette}); }},
        FormatCase{"PNGInterlaced", [](const Pixels& pixels) { return makePNG(pixels, {.isInterlaced = true}); }},
        FormatCase{"PNGInterlaced16",
                   [](const Pixels& pixels) {
                       return makePNG(pixels, {.kind = Kind::RGBA, .depth = 16, .isInterlaced = true});
                   }},
        FormatCase{"TIFF", [](const Pixels& pixels) { return makeExactTIFF(pixels, 1, false); }},
        FormatCase{"TIFFBigEndian", [](const Pixels& pixels) { return makeExactTIFF(pixels, 1, true); }},
        FormatCase{"TIFFLZW", [](const Pixels& pixels) { return makeExactTIFF(pixels, 5, false); }},
        FormatCase{"TIFFDeflate", [](const Pixels& pixels) { return makeExactTIFF(pixels, 8, false); }},
        FormatCase{"TIFF16", [](const Pixels& pixels) { return makeTIFF(pixels, {.depth = 16}); }},
        FormatCase{"TIFFWithAlpha", [](const Pixels& pixels) { return makeTIFF(pixels, {.hasAlpha = true}); }},
        FormatCase{"WebP", [](const Pixels& pixels) { return makeWebP(pixels); }},
        FormatCase{"WebPLossy", [](const Pixels& pixels) { return makeWebP(pixels, {.isLossless = false}); }, false}),
    [](const auto& row) { return row.param.name; });

TEST(ImageOfGreyPNG, IsGrey) {
    Pixels pixels(20, 10);
    for (int y = 0; y < 10; ++y) {
        for (int x = 0; x < 20; ++x) {
            const auto light = static_cast<std::uint8_t>(x * 12 + y);
            pixels.set(x, y, {light, light, light, 255});
        }
    }
    for (const int depth : {8, 16}) {
        const auto image = Image::initWithData(makePNG(pixels, {.kind = Kind::Grey, .depth = depth}));
        EXPECT_EQ(pixelsOf(image).rgba, pixels.rgba) << depth;
    }
}

TEST(ImageOfPNG, KeepsAlpha) {
    Pixels pixels = quarters(20, 10);
    for (int x = 0; x < 20; ++x)
        pixels.at(x, 4)[3] = static_cast<std::uint8_t>(x * 13);
    EXPECT_EQ(pixelsOf(Image::initWithData(makePNG(pixels, {.kind = Kind::RGBA}))).rgba, pixels.rgba);
}

TEST(ImageOfPNG, KeepsAlphaBesideGrey) {
    const Pixels pixels(6, 5, {90, 90, 90, 100});
    EXPECT_EQ(pixelsOf(Image::initWithData(makePNG(pixels, {.kind = Kind::GreyAlpha}))).rgba, pixels.rgba);
}

TEST(ImageOfPNG, ResolvesTransparentColours) {
    for (const Kind kind : {Kind::RGB, Kind::Palette}) {
        for (const int depth : {8, 16}) {
            if (kind == Kind::Palette && depth == 16) continue;
            const Pixels pixels = [] {
                Pixels two(10, 4, kRed);
                for (int y = 0; y < 4; ++y)
                    two.set(9, y, kBlue);
                return two;
            }();
            const auto image =
                Image::initWithData(makePNG(pixels, {.kind = kind, .depth = depth, .hasTransparentColour = true}));
            const Pixels decoded = pixelsOf(image);
            EXPECT_EQ(decoded.colour(0, 0)[3], 0);
            EXPECT_EQ(decoded.colour(9, 0), kBlue);
        }
    }
}

TEST(ImageOfTIFF, KeepsAlphaWhenItIsWritten) {
    Pixels pixels(12, 9, {200, 100, 40, 200});
    const auto image = Image::initWithData(makePNG(pixels, {.kind = Kind::RGBA}));
    const auto again = Image::initWithData(*image->TIFFRepresentation());
    ASSERT_TRUE(again->isValid());
    EXPECT_LE(distance(pixelsOf(again).colour(5, 5), {200, 100, 40, 200}), 1);
}

TEST(ImageOfHEIC, IsReadWhereTheSystemCan) {
    const Pixels pixels = quarters(128, 96);
    const auto data = makeHEIC(pixels);
    if (!data) GTEST_SKIP() << "no HEIC encoder on this system";
    const auto image = Image::initWithData(*data);
    ASSERT_TRUE(image->isValid());
    EXPECT_EQ(image->size(), (qv::Size{128, 96}));
    EXPECT_GT(psnr(pixelsOf(image), pixels), 25);
    const Pixels small = pixelsOf(Image::initWithSize({16, 12}, image));
    EXPECT_LE(distance(small.colour(3, 3), kRed), 8);
    EXPECT_LE(distance(small.colour(12, 9), kYellow), 8);
}

TEST(ImageOfHEIC, IsNotValidWhenItsBoxesAreNot) {
    qv::Data data{0, 0, 0, 24, 'f', 't', 'y', 'p', 'h', 'e', 'i', 'c',
                  0, 0, 0, 0,  'm', 'i', 'f', '1', 'h', 'e', 'i', 'c'};
    EXPECT_FALSE(Image::initWithData(data)->isValid());
    data.resize(4096, 0xA5);
    EXPECT_FALSE(Image::initWithData(data)->isValid());
}

}  // namespace
