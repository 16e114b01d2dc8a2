#include "Batch/BatchProgress.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using qvhost::durationText;
using qvhost::progressLine;

TEST(BatchProgress, ShowsBarCountTimeLeftAndRate) {
    EXPECT_EQ(progressLine({60, 15, 2}, 0.5, 79),
              "[##########..............................] 15/60  2 failed  1:30 left  0.5/s");
    EXPECT_EQ(progressLine({60, 0, 0}, 0, 79), "[........................................] 0/60");
    EXPECT_EQ(progressLine({60, 60, 0}, 2, 79), "[########################################] 60/60");
    EXPECT_EQ(progressLine({0, 0, 0}, 0, 79), "[........................................] 0/0");
}

TEST(BatchProgress, LeavesOutWhatDoesNotFit) {
    EXPECT_EQ(progressLine({60, 30, 2}, 12, 50), "[#######........] 30/60  2 failed  0:03 left  12/s");
    EXPECT_EQ(progressLine({60, 30, 2}, 12, 35), "30/60  2 failed  0:03 left  12/s");
    EXPECT_EQ(progressLine({60, 30, 2}, 12, 20), "30/60  2 failed");
    EXPECT_EQ(progressLine({60, 30, 2}, 12, 3), "");
    for (std::size_t width = 0; width < 100; ++width)
        EXPECT_LE(progressLine({1000, 999, 17}, 0.01, width).size(), width);
}

TEST(BatchProgress, SaysTimesAsPeopleDo) {
    EXPECT_EQ(durationText(0), "0:00");
    EXPECT_EQ(durationText(0.2), "0:01");
    EXPECT_EQ(durationText(59), "0:59");
    EXPECT_EQ(durationText(60), "1:00");
    EXPECT_EQ(durationText(3723), "1:02:03");
    EXPECT_EQ(durationText(1e300), "99:59:59");
    EXPECT_EQ(durationText(-5), "0:00");
}

}  // namespace
