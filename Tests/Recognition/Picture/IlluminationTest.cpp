#include "Picture/Illumination.h"
#include "Picture/Slant.h"
#include "Recognition/DrawnCard.h"

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

namespace qv::recognition {
namespace {

cv::Mat greyCard() {
    cv::Mat grey;
    cv::cvtColor(drawnCard({"Jane Doe", "Sales Manager", "jane@acme.example", "12 High Street"}), grey,
                 cv::COLOR_BGR2GRAY);
    return grey;
}

TEST(IlluminationTest, TakesAGradientAway) {
    cv::Mat grey = greyCard();
    for (int x = 0; x < grey.cols; ++x)
        grey.col(x) *= 0.5 + 0.5 * x / grey.cols;
    const cv::Mat even = evenLight(grey);
    EXPECT_GT(even.at<std::uint8_t>(20, 10), 235);
    EXPECT_GT(even.at<std::uint8_t>(20, 980), 235);
}

TEST(IlluminationTest, InvertsADarkPanel) {
    cv::Mat grey = greyCard();
    grey.colRange(0, 500) = 255 - grey.colRange(0, 500);
    const cv::Mat even = evenLight(grey);
    EXPECT_GT(even.at<std::uint8_t>(20, 100), 235);
    EXPECT_GT(even.at<std::uint8_t>(20, 900), 235);
    EXPECT_LT(cv::countNonZero(even < 60), static_cast<int>(even.total() / 5));
    EXPECT_GT(cv::countNonZero(even.colRange(0, 480) < 60), 500);
}

// A hard shadow makes paper as dark as a panel, but not its print lighter than its ground.
TEST(IlluminationTest, DoesNotTakeAShadowForAPanel) {
    cv::Mat grey = greyCard() * 0.85;
    grey.colRange(0, 500) *= 0.45;
    EXPECT_LT(cv::countNonZero(darkPanels(grey)(cv::Rect(60, 60, 380, 240))), 380 * 240 / 20);
    grey.colRange(0, 500) = 97 - grey.colRange(0, 500);
    EXPECT_GT(cv::countNonZero(darkPanels(grey)(cv::Rect(60, 60, 380, 240))), 380 * 240 * 9 / 10);
}

TEST(IlluminationTest, SeesDetailOnlyWhereThereIsSome) {
    EXPECT_TRUE(hasDetail(greyCard()));
    for (const int level : {0, 128, 255})
        EXPECT_FALSE(hasDetail(cv::Mat(600, 1000, CV_8U, cv::Scalar(level)))) << level;
    cv::Mat noise(600, 1000, CV_8U);
    cv::RNG random(7);
    random.fill(noise, cv::RNG::NORMAL, 128, 6);
    EXPECT_FALSE(hasDetail(noise));
}

TEST(SlantTest, MeasuresHowTextLeans) {
    const cv::Mat even = evenLight(greyCard());
    EXPECT_NEAR(textSlant(even), 0, 0.6);
    for (const double lean : {-9.0, 5.0, 12.0}) {
        const cv::Mat leaning = 255 - straightened(255 - even, -lean).picture;
        EXPECT_NEAR(textSlant(leaning), lean, 1.1) << lean;
    }
}

TEST(SlantTest, SaysNothingOfAnEmptyPicture) {
    EXPECT_EQ(textSlant(cv::Mat(300, 500, CV_8U, cv::Scalar(255))), 0);
}

}  // namespace
}  // namespace qv::recognition
