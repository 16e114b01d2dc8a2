#include "Picture/PlaneMap.h"

#include <gtest/gtest.h>

namespace qv::recognition {
namespace {

void expectBox(const Box& box, const Box& expected) {
    EXPECT_NEAR(box.x, expected.x, 0.01);
    EXPECT_NEAR(box.y, expected.y, 0.01);
    EXPECT_NEAR(box.w, expected.w, 0.01);
    EXPECT_NEAR(box.h, expected.h, 0.01);
}

TEST(PlaneMapTest, LeavesAsIsByDefault) {
    expectBox(PlaneMap().map(Box{1, 2, 3, 4}), {1, 2, 3, 4});
}

TEST(PlaneMapTest, LeadsBackFromAnEnlargedPicture) {
    expectBox(PlaneMap::scaledBy(2, 4).map(Box{20, 40, 10, 8}), {10, 10, 5, 2});
}

// A picture of 100 × 50 whose top left 10 × 5 corner is followed through each turn.
TEST(PlaneMapTest, LeadsBackFromATurnedPicture) {
    expectBox(PlaneMap::turnedBy(0, 100, 50).map(Box{0, 0, 10, 5}), {0, 0, 10, 5});
    expectBox(PlaneMap::turnedBy(90, 100, 50).map(Box{45, 0, 5, 10}), {0, 0, 10, 5});
    expectBox(PlaneMap::turnedBy(180, 100, 50).map(Box{90, 45, 10, 5}), {0, 0, 10, 5});
    expectBox(PlaneMap::turnedBy(270, 100, 50).map(Box{0, 90, 5, 10}), {0, 0, 10, 5});
}

TEST(PlaneMapTest, AppliesTheInnerMapFirst) {
    const PlaneMap map = PlaneMap::scaledBy(2, 2).after(PlaneMap::turnedBy(90, 100, 50));
    expectBox(map.map(Box{45, 0, 5, 10}), {0, 0, 5, 2.5F});
}

TEST(PlaneMapTest, SurvivesAPointAtInfinity) {
    const PlaneMap map(cv::Matx33d(1, 0, 0, 0, 1, 0, 1, 0, 0));
    const auto point = map.map(cv::Point2d(0, 0));
    EXPECT_FALSE(std::isnan(point.x) && std::isnan(point.y));
}

}  // namespace
}  // namespace qv::recognition
