#include "QVPlatform/Image.h"
#include "Support/TestImages.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <vector>

namespace {

using qv::Image;
using qv::ImageFileType;
using qv::Size;
using namespace testsupport;

std::shared_ptr<Image> imageOf(const Pixels& pixels) {
    return Image::initWithData(makePNG(pixels));
}

Pixels pixelsOf(const std::shared_ptr<Image>& image) {
    const auto data = image->representationUsingType(ImageFileType::PNG);
    EXPECT_TRUE(data);
    return data ? readPNG(*data) : Pixels();
}

struct SizeCase {
    const char* name;
    Size size;
    int width;
    int height;
};

class ImageDrawing : public testing::TestWithParam<SizeCase> {};

TEST_P(ImageDrawing, HasItsExactSizeAndTheNearestPixels) {
    const auto drawn = Image::initWithSize(GetParam().size, imageOf(quarters(50, 30)));
    EXPECT_TRUE(drawn->isValid());
    EXPECT_EQ(drawn->size(), GetParam().size);
    const Pixels pixels = pixelsOf(drawn);
    EXPECT_EQ(pixels.width, GetParam().width);
    EXPECT_EQ(pixels.height, GetParam().height);
}

INSTANTIATE_TEST_SUITE_P(Sizes, ImageDrawing,
                         testing::Values(SizeCase{"Whole", {20, 10}, 20, 10}, SizeCase{"Down", {20.4, 10.49}, 20, 10},
                                         SizeCase{"Up", {20.5, 10.6}, 21, 11}, SizeCase{"Tiny", {0.01, 0.3}, 1, 1},
                                         SizeCase{"Enlarged", {1024, 614.4000244140625}, 1024, 614},
                                         SizeCase{"OneColumn", {1, 300}, 1, 300}, SizeCase{"OneRow", {300, 1}, 300, 1},
                                         SizeCase{"Long", {70000, 1}, 70000, 1}),
                         [](const auto& row) { return row.param.name; });

TEST(ImageDrawingOfNothing, IsNotValid) {
    EXPECT_FALSE(Image::initWithSize({10, 10}, nullptr)->isValid());
    const auto drawn = Image::initWithSize({10, 10}, Image::initWithData({1, 2, 3}));
    EXPECT_FALSE(drawn->isValid());
    EXPECT_EQ(drawn->size(), (Size{0, 0}));
    EXPECT_FALSE(drawn->TIFFRepresentation());
    EXPECT_TRUE(drawn->encodedData().empty());
}

TEST(ImageDrawingOfNoSize, IsNotValid) {
    const auto image = imageOf(quarters(8, 8));
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    constexpr double kEndless = std::numeric_limits<double>::infinity();
    for (const Size size : {Size{0, 10}, Size{10, 0}, Size{-1, 10}, Size{10, -0.5}, Size{kNone, 10}, Size{10, kNone},
                            Size{kEndless, 1}, Size{1, kEndless}, Size{1e300, 1e300}, Size{1e7, 1}, Size{8001, 8000}}) {
        EXPECT_FALSE(Image::initWithSize(size, image)->isValid()) << size.width << " x " << size.height;
    }
    EXPECT_TRUE(Image::initWithSize({8000, 8000}, image)->isValid());
}

TEST(ImageDrawingOfSameSize, KeepsEveryPixel) {
    const Pixels pixels = photograph(37, 29);
    EXPECT_EQ(pixelsOf(Image::initWithSize({37, 29}, imageOf(pixels))).rgba, pixels.rgba);
}

TEST(ImageDrawingReduced, KeepsPlacesAndColours) {
    const Pixels small = pixelsOf(Image::initWithSize({20, 12}, imageOf(quarters(200, 120))));
    EXPECT_LE(distance(small.colour(3, 2), kRed), 1);
    EXPECT_LE(distance(small.colour(16, 2), kGreen), 1);
    EXPECT_LE(distance(small.colour(3, 9), kBlue), 1);
    EXPECT_LE(distance(small.colour(16, 9), kYellow), 1);
}

TEST(ImageDrawingReduced, IsCloseToTheMeanOfWhatEachPixelCovers) {
    const Pixels pixels = photograph(601, 403);
    const Pixels small = pixelsOf(Image::initWithSize({150, 101}, imageOf(pixels)));
    EXPECT_GT(psnr(small, boxReduced(pixels, 150, 101)), 30);
}

TEST(ImageDrawingEnlarged, KeepsFlatColoursExact) {
    for (const int side : {1, 2, 3, 5}) {
        const Pixels large = pixelsOf(Image::initWithSize({100, 77}, imageOf(Pixels(side, side, kBlue))));
        EXPECT_EQ(large.rgba, Pixels(100, 77, kBlue).rgba) << side;
    }
}

// What is kept from one drawing to the next must not show.
TEST(ImageDrawingOfManySizes, GivesTheSameBytesAgain) {
    const auto image = imageOf(photograph(60, 40));
    std::vector<std::optional<qv::Data>> first;
    for (int round = 0; round < 2; ++round) {
        for (int width = 10; width < 40; ++width) {
            const auto drawn = Image::initWithSize({width + 0.0, 30}, image)->TIFFRepresentation();
            ASSERT_TRUE(drawn);
            if (round == 0) first.push_back(drawn);
            EXPECT_EQ(drawn, first[static_cast<std::size_t>(width - 10)]) << width;
        }
    }
}

// Its samples lie in a narrower range than those of the other formats.
TEST(ImageDrawingOfLossyWebP, ReachesBlackAndWhite) {
    for (const Colour colour : {Colour{0, 0, 0, 255}, kWhite}) {
        const auto image = Image::initWithData(makeWebP(Pixels(32, 24, colour), {.isLossless = false}));
        EXPECT_LE(distance(pixelsOf(image).colour(16, 12), colour), 1);
        EXPECT_LE(distance(pixelsOf(Image::initWithSize({13, 7}, image)).colour(6, 3), colour), 1);
    }
}

TEST(ImageDrawingOfExtremeShapes, Works) {
    EXPECT_EQ(pixelsOf(Image::initWithSize({1024, 1}, imageOf(Pixels(100000, 1, kRed)))).rgba,
              Pixels(1024, 1, kRed).rgba);
    EXPECT_EQ(pixelsOf(Image::initWithSize({1, 1024}, imageOf(Pixels(1, 100000, kRed)))).rgba,
              Pixels(1, 1024, kRed).rgba);
    EXPECT_EQ(pixelsOf(Image::initWithSize({1, 1}, imageOf(Pixels(3000, 2000, kGreen)))).rgba,
              Pixels(1, 1, kGreen).rgba);
}

TEST(ImageDrawingOfADrawing, SeesItsPixels) {
    const Pixels checks = [] {
        Pixels pixels(64, 64, {0, 0, 0, 255});
        for (int y = 0; y < 64; ++y) {
            for (int x = y % 2; x < 64; x += 2)
                pixels.set(x, y, kWhite);
        }
        return pixels;
    }();
    // Once it is reduced to one pixel there is no pattern left to enlarge.
    const auto one = Image::initWithSize({1, 1}, imageOf(checks));
    const Pixels large = pixelsOf(Image::initWithSize({64, 64}, one));
    EXPECT_LE(distance(large.colour(0, 0), {128, 128, 128, 255}), 2);
    EXPECT_EQ(large.rgba, Pixels(64, 64, large.colour(0, 0)).rgba);
}

TEST(ImageDrawingOfADrawing, KeepsTheInnerImageAlive) {
    std::shared_ptr<Image> outer;
    {
        const auto inner = Image::initWithSize({20, 20}, imageOf(quarters(40, 40)));
        outer = Image::initWithSize({10.4, 10}, inner);
    }
    EXPECT_EQ(outer->size(), (Size{10.4, 10}));
    EXPECT_LE(distance(pixelsOf(outer).colour(1, 1), kRed), 2);
}

TEST(ImageDrawingWithAlpha, WeightsColoursWithTheirOpacity) {
    // Clear black beside opaque white: were it not weighted, the border would turn grey.
    Pixels pixels(40, 40, {0, 0, 0, 0});
    for (int y = 0; y < 40; ++y) {
        for (int x = 20; x < 40; ++x)
            pixels.set(x, y, kWhite);
    }
    const auto image = Image::initWithData(makePNG(pixels, {.kind = PNGOptions::Kind::RGBA}));
    const Pixels small = pixelsOf(Image::initWithSize({7, 7}, image));
    EXPECT_EQ(small.colour(0, 3)[3], 0);
    EXPECT_EQ(small.colour(6, 3), kWhite);
    const Colour border = small.colour(3, 3);
    EXPECT_GT(border[3], 64);
    EXPECT_LT(border[3], 192);
    EXPECT_GE(border[0], 253);
}

TEST(ImageDrawingWithAlpha, KeepsFaintColoursWhereNothingIsScaled) {
    Pixels pixels(2, 1, {200, 100, 50, 3});
    const auto image = Image::initWithData(makePNG(pixels, {.kind = PNGOptions::Kind::RGBA}));
    EXPECT_EQ(pixelsOf(image).rgba, pixels.rgba);
}

}  // namespace
