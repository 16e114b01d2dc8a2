#include "QVPlatform/Image.h"
#include "Support/TestImages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <ostream>
#include <utility>

namespace {

using qv::Image;
using qv::ImageFileType;
using namespace testsupport;
using Colours = JPEGOptions::Colours;

qv::Data jpegOf(const std::shared_ptr<Image>& image, double factor) {
    const auto data = image->representationUsingType(ImageFileType::JPEG, factor);
    EXPECT_TRUE(data);
    return data.value_or(qv::Data());
}

void expectMean(const Pixels& pixels, Colour colour, double tolerance) {
    const auto mean = meanColour(pixels);
    for (std::size_t index = 0; index < 3; ++index)
        EXPECT_NEAR(mean[index], colour[index], tolerance);
}

struct JPEGCase {
    const char* name;
    JPEGOptions options;
    friend std::ostream& operator<<(std::ostream& stream, const JPEGCase& row) { return stream << row.name; }
};

class ImageOfJPEG : public testing::TestWithParam<JPEGCase> {};

TEST_P(ImageOfJPEG, KeepsPlacesAndColours) {
    const auto image = Image::initWithData(makeJPEG(quarters(403, 301), GetParam().options));
    ASSERT_TRUE(image->isValid());
    EXPECT_EQ(image->size(), (qv::Size{403, 301}));
    for (const qv::Size size : {qv::Size{403, 301}, qv::Size{101, 75}, qv::Size{37, 28}, qv::Size{806, 602}}) {
        const Pixels pixels = readJPEG(jpegOf(Image::initWithSize(size, image), 1));
        const int right = pixels.width * 3 / 4;
        const int bottom = pixels.height * 3 / 4;
        EXPECT_LE(distance(pixels.colour(pixels.width / 4, pixels.height / 4), kRed), 4) << size.width;
        EXPECT_LE(distance(pixels.colour(right, pixels.height / 4), kGreen), 4) << size.width;
        EXPECT_LE(distance(pixels.colour(pixels.width / 4, bottom), kBlue), 4) << size.width;
        EXPECT_LE(distance(pixels.colour(right, bottom), kYellow), 4) << size.width;
    }
}

TEST_P(ImageOfJPEG, KeepsTheMeanOfFlatColours) {
    for (const Colour colour : {kRed, kGreen, kBlue, kYellow, Colour{128, 128, 128, 255}, Colour{1, 2, 3, 255}}) {
        const auto image = Image::initWithData(makeJPEG(Pixels(203, 155, colour), GetParam().options));
        const auto drawn = Image::initWithSize({50, 39}, image);
        expectMean(readPNG(*drawn->representationUsingType(ImageFileType::PNG)), colour, 2);
        expectMean(readJPEG(jpegOf(drawn, 1)), colour, 2);
        // Quality 70 itself rounds a flat colour to steps of more than one.
        expectMean(readJPEG(jpegOf(drawn, 0.7)), colour, 3);
    }
}

TEST_P(ImageOfJPEG, WorksForEveryOddAndTinySize) {
    for (const auto& [width, height] : {std::pair{1, 1}, {1, 9}, {9, 1}, {2, 3}, {7, 5}, {17, 16}, {33, 31}}) {
        const auto image = Image::initWithData(makeJPEG(Pixels(width, height, kGreen), GetParam().options));
        ASSERT_EQ(image->size(), (qv::Size{double(width), double(height)}));
        for (const qv::Size size : {image->size(), qv::Size{1, 1}, qv::Size{5, 3}, qv::Size{64, 47}}) {
            const Pixels pixels = readJPEG(jpegOf(Image::initWithSize(size, image), 1));
            for (int y = 0; y < pixels.height; ++y) {
                for (int x = 0; x < pixels.width; ++x)
                    ASSERT_LE(distance(pixels.colour(x, y), kGreen), 4);
            }
        }
    }
}

TEST_P(ImageOfJPEG, SurvivesPNGAndTIFF) {
    const auto image = Image::initWithData(makeJPEG(quarters(64, 48), GetParam().options));
    const Pixels png = readPNG(*image->representationUsingType(ImageFileType::PNG));
    EXPECT_EQ(png.rgba, readTIFF(*image->TIFFRepresentation()).rgba);
    EXPECT_LE(distance(png.colour(10, 10), kRed), 4);
    EXPECT_LE(distance(png.colour(50, 40), kYellow), 4);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, ImageOfJPEG,
    testing::Values(JPEGCase{"Full", {}}, JPEGCase{"Wide422", {.horizontalSampling = 2}},
                    JPEGCase{"Square420", {.horizontalSampling = 2, .verticalSampling = 2}},
                    JPEGCase{"High440", {.verticalSampling = 2}}, JPEGCase{"Quarter411", {.horizontalSampling = 4}},
                    // No planar layout has a name for these two.
                    JPEGCase{"HighQuarter", {.verticalSampling = 4}},
                    JPEGCase{"Quarter410", {.horizontalSampling = 4, .verticalSampling = 2}},
                    JPEGCase{"Third", {.horizontalSampling = 3}},
                    JPEGCase{"Progressive", {.horizontalSampling = 2, .verticalSampling = 2, .isProgressive = true}},
                    JPEGCase{"ScanPerComponent", {.horizontalSampling = 2, .isInterleaved = false}},
                    JPEGCase{"RGB", {.colours = Colours::RGB}}, JPEGCase{"CMYK", {.colours = Colours::CMYK}},
                    JPEGCase{"YCCK", {.colours = Colours::YCCK}},
                    JPEGCase{"PlainCMYK", {.colours = Colours::CMYK, .hasAdobeMarker = false}}),
    [](const auto& row) { return row.param.name; });

TEST(ImageOfGreyJPEG, StaysGrey) {
    const auto data = makeJPEG(quarters(90, 70), {.colours = Colours::Grey});
    const auto image = Image::initWithData(data);
    const Pixels expected = readJPEG(data);
    const qv::Data encoded = jpegOf(image, 1);
    EXPECT_EQ(factsOfJPEG(encoded).components, 1);
    EXPECT_GT(psnr(readJPEG(encoded), expected), 45);
    EXPECT_EQ(readPNG(*image->representationUsingType(ImageFileType::PNG)).rgba, expected.rgba);
    EXPECT_EQ(readTIFF(*image->TIFFRepresentation()).rgba, expected.rgba);
    const Pixels small = readJPEG(jpegOf(Image::initWithSize({9, 7}, image), 0.7));
    EXPECT_LE(distance(small.colour(1, 1), expected.colour(20, 20)), 3);
    EXPECT_LE(distance(small.colour(7, 5), expected.colour(80, 60)), 3);
}

struct SamplingCase {
    double factor;
    const char* sampling;
};

TEST(ImageAsJPEG, IsSubsampledBelowNineTenths) {
    const auto planar = Image::initWithData(makeJPEG(photograph(81, 61), {.horizontalSampling = 2}));
    const auto interleaved = Image::initWithData(makePNG(photograph(81, 61)));
    for (const SamplingCase& row :
         {SamplingCase{0, "4:2:0"}, {0.7, "4:2:0"}, {0.899, "4:2:0"}, {0.9, "4:4:4"}, {1, "4:4:4"}}) {
        EXPECT_EQ(factsOfJPEG(jpegOf(planar, row.factor)).sampling, row.sampling) << row.factor;
        EXPECT_EQ(factsOfJPEG(jpegOf(interleaved, row.factor)).sampling, row.sampling) << row.factor;
    }
}

TEST(ImageAsJPEG, ClampsTheFactor) {
    const auto image = Image::initWithData(makePNG(photograph(40, 30)));
    EXPECT_EQ(jpegOf(image, -3), jpegOf(image, 0));
    EXPECT_EQ(jpegOf(image, 0.01), jpegOf(image, 0));
    EXPECT_EQ(jpegOf(image, 7), jpegOf(image, 1));
    EXPECT_EQ(jpegOf(image, std::numeric_limits<double>::infinity()), jpegOf(image, 1));
    EXPECT_EQ(jpegOf(image, std::numeric_limits<double>::quiet_NaN()), jpegOf(image, 0));
    EXPECT_EQ(jpegOf(image, 0.704), jpegOf(image, 0.7));
    EXPECT_NE(jpegOf(image, 0.706), jpegOf(image, 0.7));
}

TEST(ImageAsJPEG, HasTheQualityOfTheFactor) {
    const Pixels pixels = photograph(120, 90);
    const auto image = Image::initWithData(makePNG(pixels));
    for (const int quality : {30, 70, 100}) {
        // Luma's quantisation table, whose first entry is 16 at quality 50, follows the library's quality rule.
        const qv::Data ours = jpegOf(image, quality / 100.0);
        const qv::Data reference = makeJPEG(pixels, {.quality = quality});
        const auto table = [](const qv::Data& data) {
            const qv::Data marker{0xFF, 0xDB};
            const auto found = std::search(data.begin(), data.end(), marker.begin(), marker.end());
            return qv::Data(found, found + 69);
        };
        EXPECT_EQ(table(ours), table(reference)) << quality;
    }
}

TEST(ImageAsJPEG, LiesOnWhite) {
    Pixels pixels(32, 32, {0, 0, 0, 0});
    for (int y = 0; y < 32; ++y) {
        for (int x = 16; x < 32; ++x)
            pixels.set(x, y, {200, 0, 100, 128});
    }
    for (const qv::Data& data :
         {makePNG(pixels, {.kind = PNGOptions::Kind::RGBA}), makeTIFF(pixels, {.hasAlpha = true}), makeWebP(pixels)}) {
        const Pixels flat = readJPEG(jpegOf(Image::initWithData(data), 1));
        EXPECT_LE(distance(flat.colour(4, 16), kWhite), 3);
        EXPECT_LE(distance(flat.colour(28, 16), {227, 127, 177, 255}), 4);
    }
}

TEST(ImageAsJPEG, GivesNothingWhereTheFormatEnds) {
    const auto image = Image::initWithData(makePNG(Pixels(100000, 1, kRed)));
    EXPECT_TRUE(image->isValid());
    EXPECT_FALSE(image->representationUsingType(ImageFileType::JPEG, 0.7));
    EXPECT_TRUE(image->representationUsingType(ImageFileType::PNG));
}

TEST(ImageOfJPEGAtItsSize, GoesThroughDecoderAndEncoder) {
    const qv::Data data = makeJPEG(photograph(160, 120), {.quality = 95});
    const qv::Data encoded = jpegOf(Image::initWithData(data), 0.7);
    EXPECT_NE(encoded, data);
    EXPECT_LT(encoded.size(), data.size());
    const Pixels original = readJPEG(data);
    const qv::Data reference = makeJPEG(original, {.horizontalSampling = 2, .verticalSampling = 2, .quality = 70});
    EXPECT_NEAR(psnr(readJPEG(encoded), original), psnr(readJPEG(reference), original), 0.3);
}

// A thin red cross on grey: its place in chroma must be its place in luma, whatever the sampling and the turning.
TEST(ImageOfJPEGReduced, KeepsChromaBesideItsLuma) {
    for (const int sampling : {1, 2}) {
        for (int orientation = 1; orientation <= 8; ++orientation) {
            Pixels stored(259, 387, {120, 120, 120, 255});
            for (int y = 150; y < 300; ++y) {
                for (int x = 60; x < 160; ++x)
                    stored.set(x, y, {230, 60, 60, 255});
            }
            const auto image = Image::initWithData(makeJPEG(
                stored, {.horizontalSampling = sampling, .verticalSampling = sampling, .orientation = orientation}));
            const Pixels upright = turnedUpright(stored, orientation);
            const int width = upright.width / 4 | 1;
            const int height = upright.height / 4 | 1;
            const Pixels small = readJPEG(jpegOf(Image::initWithSize({double(width), double(height)}, image), 0.89));
            EXPECT_GT(psnr(small, boxReduced(upright, width, height)), 30) << sampling << ' ' << orientation;
        }
    }
}

}  // namespace
