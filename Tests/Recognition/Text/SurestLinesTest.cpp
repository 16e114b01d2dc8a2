#include "Text/SurestLines.h"

#include <gtest/gtest.h>

namespace qv::recognition {
namespace {

TextLine lineOf(std::size_t words, float confidence, float y = 0) {
    const Word word{"word", {0, y, 40, 20}, confidence, {}};
    return makeLine(std::vector<Word>(words, word));
}

TEST(SurestLinesTest, LeavesACardAsItIs) {
    std::vector<TextLine> lines;
    for (int i = 0; i < 40; ++i)
        lines.push_back(lineOf(5, static_cast<float>(i * 37 % 100), static_cast<float>(i)));
    const auto kept = surestLines(lines);
    ASSERT_EQ(kept.size(), lines.size());
    for (std::size_t i = 0; i < kept.size(); ++i)
        EXPECT_EQ(kept[i].box, lines[i].box) << i;
}

TEST(SurestLinesTest, KeepsTheSurestInReadingOrder) {
    std::vector<TextLine> lines;
    for (int i = 0; i < 90; ++i)
        lines.push_back(lineOf(1, i % 3 == 0 ? 20.F : 90.F, static_cast<float>(i)));
    const auto kept = surestLines(lines);
    ASSERT_EQ(kept.size(), 60U);
    EXPECT_EQ(kept.front().box.y, 1);
    EXPECT_EQ(kept.back().box.y, 89);
    for (std::size_t i = 1; i < kept.size(); ++i) {
        EXPECT_FLOAT_EQ(kept[i].confidence(), 90);
        EXPECT_GT(kept[i].box.y, kept[i - 1].box.y);
    }
}

TEST(SurestLinesTest, PrefersWhatIsReadFirstAmongEquals) {
    std::vector<TextLine> lines;
    for (int i = 0; i < 90; ++i)
        lines.push_back(lineOf(1, 90, static_cast<float>(i)));
    EXPECT_EQ(surestLines(lines).back().box.y, 59);
}

TEST(SurestLinesTest, BoundsTheWords) {
    std::vector<TextLine> lines(30, lineOf(15, 80));
    std::size_t words = 0;
    for (const auto& line : surestLines(lines))
        words += line.words.size();
    EXPECT_EQ(words, 195U);
}

TEST(SurestLinesTest, LeavesOutALineThatIsTooLong) {
    const auto kept = surestLines({lineOf(41, 95), lineOf(40, 50, 30)});
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(kept[0].words.size(), 40U);
    EXPECT_TRUE(surestLines({lineOf(1500, 95)}).empty());
    EXPECT_TRUE(surestLines({}).empty());
}

}  // namespace
}  // namespace qv::recognition
