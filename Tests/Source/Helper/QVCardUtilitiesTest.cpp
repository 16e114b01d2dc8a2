#include "QVCardScan/QVCardUtilities.h"
#include "Support/TestImages.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using qv::Size;
using namespace testsupport;

std::shared_ptr<qv::Image> imageOfSize(int width, int height) {
    return qv::Image::initWithData(makePNG(quarters(width, height)));
}

TEST(QVCardUtilities, LimitsAreTheServers) {
    EXPECT_EQ(QVCardMaxRecoWidth, 1024);
    EXPECT_EQ(QVCardMaxRecoHeight, 1024);
    EXPECT_EQ(QVCardRecoCompressionFactor, 0.7);
    EXPECT_TRUE((std::is_same_v<decltype(QVCardMaxRecoWidth), const long>));
    EXPECT_TRUE((std::is_same_v<decltype(QVCardRecoCompressionFactor), const double>));
    EXPECT_TRUE(std::is_empty_v<QVCardUtilities>);
}

struct FitCase {
    const char* name;
    int width;
    int height;
    Size target;
    Size expected;
};

class ScalingProportionally : public testing::TestWithParam<FitCase> {};

TEST_P(ScalingProportionally, GivesTheExactSize) {
    const FitCase& fit = GetParam();
    const auto scaled = imageByScalingProportionallyToSize(imageOfSize(fit.width, fit.height), fit.target);
    ASSERT_TRUE(scaled);
    EXPECT_EQ(scaled->size().width, fit.expected.width);
    EXPECT_EQ(scaled->size().height, fit.expected.height);
}

constexpr Size kBox{1024, 1024};

INSTANTIATE_TEST_SUITE_P(Sizes, ScalingProportionally,
                         testing::Values(FitCase{"Wide", 2048, 1024, kBox, {1024, 512}},
                                         FitCase{"High", 1024, 2048, kBox, {512, 1024}},
                                         // The single-precision neighbour of 614.4, not 614 and not 614.4 itself.
                                         FitCase{"Enlarged", 500, 300, kBox, {1024, 614.4000244140625}},
                                         FitCase{"Exact", 1024, 1024, kBox, {1024, 1024}},
                                         FitCase{"Small", 1, 1, kBox, {1024, 1024}},
                                         // 3000 × (1024 ÷ 4000) in single precision goes a little beyond 768.
                                         FitCase{"TwelveMegapixels", 4000, 3000, kBox, {1024, 768.00006103515625}},
                                         FitCase{"OneRow", 2048, 1, kBox, {1024, 0.5}},
                                         FitCase{"OtherBox", 700, 300, {64, 64}, {64, 27.428571701049805}},
                                         FitCase{"ExactOtherBox", 30, 20, {30, 20}, {30, 20}}),
                         [](const auto& row) { return row.param.name; });

TEST(ScalingProportionallySkipsArithmetic, OnlyWhenBothSidesAreEqual) {
    // Single precision cannot hold this width; only the shortcut keeps it.
    constexpr double kFine = 100.00000001;
    const auto image = qv::Image::initWithSize({kFine, 50}, imageOfSize(100, 50));
    EXPECT_EQ(imageByScalingProportionallyToSize(image, {kFine, 50})->size(), (Size{kFine, 50}));
    EXPECT_EQ(imageByScalingProportionallyToSize(image, {kFine, 60})->size(), (Size{100, 50}));
}

TEST(ScalingProportionallyGivesANewImage, EvenForTheSameSize) {
    const auto image = imageOfSize(1024, 1024);
    const auto scaled = imageByScalingProportionallyToSize(image, kBox);
    ASSERT_TRUE(scaled);
    EXPECT_NE(scaled, image);
}

TEST(ScalingProportionallyToNothing, GivesAnImageThatIsNotValid) {
    const auto scaled = imageByScalingProportionallyToSize(imageOfSize(10, 10), {0, 0});
    ASSERT_TRUE(scaled);
    EXPECT_FALSE(scaled->isValid());
    EXPECT_FALSE(JPEGRepresentationUsingCompressionFactor(scaled, 0.7));
}

TEST(AnUnusableImage, GivesNoScaledImageAndNoBytes) {
    const auto invalid = qv::Image::initWithData({'n', 'o'});
    EXPECT_FALSE(imageByScalingProportionallyToSize(invalid, kBox));
    EXPECT_FALSE(JPEGRepresentationUsingCompressionFactor(invalid, 0.7));
    EXPECT_FALSE(imageByScalingProportionallyToSize(nullptr, kBox));
    EXPECT_FALSE(JPEGRepresentationUsingCompressionFactor(nullptr, 0.7));
}

TEST(JPEGRepresentation, HasTheWholePictureInTheNearestPixels) {
    const auto scaled = imageByScalingProportionallyToSize(imageOfSize(500, 300), kBox);
    const auto data = JPEGRepresentationUsingCompressionFactor(scaled, QVCardRecoCompressionFactor);
    ASSERT_TRUE(data);
    const Pixels pixels = readJPEG(*data);
    EXPECT_EQ(pixels.width, 1024);
    EXPECT_EQ(pixels.height, 614);
    EXPECT_LE(distance(pixels.colour(20, 20), kRed), 4);
    EXPECT_LE(distance(pixels.colour(1000, 20), kGreen), 4);
    EXPECT_LE(distance(pixels.colour(20, 600), kBlue), 4);
    EXPECT_LE(distance(pixels.colour(1000, 600), kYellow), 4);
}

TEST(JPEGRepresentation, GrowsWithTheFactor) {
    const auto image = qv::Image::initWithData(makePNG(photograph(200, 150)));
    std::size_t previous = 0;
    for (const double factor : {0.1, 0.4, 0.7, 0.95}) {
        const auto data = JPEGRepresentationUsingCompressionFactor(image, factor);
        ASSERT_TRUE(data);
        EXPECT_GT(data->size(), previous) << factor;
        previous = data->size();
    }
}

}  // namespace
