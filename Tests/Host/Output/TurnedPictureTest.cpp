#include "Output/TurnedPicture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace {

using qvhost::turnedPicture;
using testing::HasSubstr;
using testing::Not;

TEST(TurnedPicture, AnUprightOneIsPlain) {
    EXPECT_EQ(turnedPicture("data:x", "width:9%", {40, 20}, 0), "<img alt=\"\" style=\"width:9%\" src=\"data:x\">");
    EXPECT_EQ(turnedPicture("data:x", "width:9%", {40, 20}, 360), "<img alt=\"\" style=\"width:9%\" src=\"data:x\">");
}

TEST(TurnedPicture, StandsInABoxOfItsTurnedShape) {
    const struct {
        std::int64_t degrees;
        const char* shape;
        const char* width;
        const char* turn;
    } rows[] = {
        {90, "aspect-ratio:20.0000/40.0000", "width:200.0000%", "rotate(90deg)"},
        {180, "aspect-ratio:40.0000/20.0000", "width:100.0000%", "rotate(180deg)"},
        {270, "aspect-ratio:20.0000/40.0000", "width:200.0000%", "rotate(270deg)"},
        {-90, "aspect-ratio:20.0000/40.0000", "width:200.0000%", "rotate(270deg)"},
        {450, "aspect-ratio:20.0000/40.0000", "width:200.0000%", "rotate(90deg)"},
        {45, "aspect-ratio:42.4264/42.4264", "width:94.2809%", "rotate(45deg)"},
        {std::numeric_limits<std::int64_t>::min(), "aspect-ratio", "width", "rotate("},
        {std::numeric_limits<std::int64_t>::max(), "aspect-ratio", "width", "rotate("},
    };
    for (const auto& row : rows) {
        const std::string markup = turnedPicture("data:x", "width:9%", {40, 20}, row.degrees);
        EXPECT_THAT(markup, HasSubstr("style=\"width:9%;position:relative;overflow:hidden;")) << row.degrees;
        EXPECT_THAT(markup, HasSubstr(row.shape)) << row.degrees;
        EXPECT_THAT(markup, HasSubstr(row.width)) << row.degrees;
        EXPECT_THAT(markup, HasSubstr(row.turn)) << row.degrees;
    }
}

TEST(TurnedPicture, OfUnknownSizeIsLeftAsItIs) {
    EXPECT_THAT(turnedPicture("data:x", "", {}, 90), Not(HasSubstr("rotate")));
}

}  // namespace
