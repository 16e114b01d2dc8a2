#include "Picture/CardOutline.h"
#include "Recognition/DrawnCard.h"

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

namespace qv::recognition {
namespace {

const std::vector<cv::Point> kCorners = {{150, 120}, {860, 170}, {820, 600}, {120, 540}};

cv::Mat cardOnDesk() {
    cv::Mat picture(768, 1024, CV_8UC3, cv::Scalar(40, 60, 80));
    cv::fillConvexPoly(picture, kCorners, cv::Scalar(240, 245, 250), cv::LINE_AA);
    return picture;
}

TEST(CardOutlineTest, FindsATiltedCard) {
    const auto outline = findOutline(cardOnDesk());
    ASSERT_TRUE(outline);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR((*outline)[i].x, static_cast<float>(kCorners[i].x), 6);
        EXPECT_NEAR((*outline)[i].y, static_cast<float>(kCorners[i].y), 6);
    }
}

TEST(CardOutlineTest, FindsNoneWhereTheCardFillsThePicture) {
    EXPECT_FALSE(findOutline(drawnCard({"Jane Doe", "Manager"})));
    EXPECT_FALSE(findOutline(cv::Mat(600, 1000, CV_8UC3, cv::Scalar::all(255))));
}

TEST(CardOutlineTest, FindsNoneForASquareOrASliver) {
    cv::Mat square(768, 1024, CV_8UC3, cv::Scalar::all(60));
    cv::rectangle(square, {300, 150}, {760, 610}, cv::Scalar::all(240), cv::FILLED);
    EXPECT_FALSE(findOutline(square));
    cv::Mat sliver(768, 1024, CV_8UC3, cv::Scalar::all(60));
    cv::rectangle(sliver, {50, 300}, {980, 480}, cv::Scalar::all(240), cv::FILLED);
    EXPECT_FALSE(findOutline(sliver));
}

// The dark half of a card has four sides too, but two of them go on beyond it.
TEST(CardOutlineTest, DoesNotTakeAPanelForTheCard) {
    cv::Mat picture(768, 1024, CV_8UC3, cv::Scalar::all(110));
    cv::rectangle(picture, {100, 120}, {920, 640}, cv::Scalar::all(245), cv::FILLED);
    cv::rectangle(picture, {100, 120}, {480, 640}, cv::Scalar::all(25), cv::FILLED);
    const auto outline = findOutline(picture);
    ASSERT_TRUE(outline);
    EXPECT_NEAR((*outline)[1].x, 920, 8);
}

TEST(CardOutlineTest, UnwarpsAndLeadsBack) {
    const Outline outline{cv::Point2f(150, 120), cv::Point2f(860, 170), cv::Point2f(820, 600), cv::Point2f(120, 540)};
    const Unwarped card = unwarp(cardOnDesk(), outline, 800);
    EXPECT_EQ(card.picture.cols, 800);
    EXPECT_NEAR(card.picture.rows, 480, 20);
    EXPECT_GT(cv::mean(card.picture)[0], 225);
    const auto corner = card.toSource.map(cv::Point2d(card.picture.cols, card.picture.rows));
    EXPECT_NEAR(corner.x, 820, 0.5);
    EXPECT_NEAR(corner.y, 600, 0.5);
}

TEST(CardOutlineTest, TakesTinyPictures) {
    EXPECT_FALSE(findOutline(cv::Mat(1, 1, CV_8UC3, cv::Scalar::all(0))));
    EXPECT_FALSE(findOutline(cv::Mat(2, 900, CV_8UC3, cv::Scalar::all(0))));
}

}  // namespace
}  // namespace qv::recognition
