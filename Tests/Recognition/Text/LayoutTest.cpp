#include "Recognition/Lines.h"
#include "Text/Layout.h"

#include <gtest/gtest.h>

namespace qv::recognition {
namespace {

std::vector<std::string> texts(const std::vector<TextLine>& lines) {
    std::vector<std::string> result;
    for (const auto& line : lines)
        result.push_back(line.text());
    return result;
}

using Texts = std::vector<std::string>;

TEST(LayoutTest, MakesLinesFromWordsInAnyOrder) {
    auto words = wordsOf({lineAt("Jane Doe", 100, 100), lineAt("Sales Manager", 100, 160)});
    std::reverse(words.begin(), words.end());
    EXPECT_EQ(texts(arrange(words)), (Texts{"Jane Doe", "Sales Manager"}));
}

TEST(LayoutTest, PartsColumnsAtAWideGap) {
    EXPECT_EQ(texts(arrange(wordsOf({lineAt("Jane Doe", 100, 100), lineAt("12 High Street", 700, 100)}))),
              (Texts{"Jane Doe", "12 High Street"}));
}

TEST(LayoutTest, PartsAtBulletsAndBars) {
    EXPECT_EQ(texts(arrange(wordsOf({lineOf("T: 555 0100 | F: 555 0101 • acme.example")}))),
              (Texts{"T: 555 0100", "F: 555 0101", "acme.example"}));
}

TEST(LayoutTest, PartsAtAJumpInTypeSize) {
    auto words = wordsOf({lineAt("Jonathan Smith", 100, 100, 50)});
    const auto small = lineAt("PhD MBA", words.back().box.right() + 15, 125, 25);
    words.insert(words.end(), small.words.begin(), small.words.end());
    EXPECT_EQ(texts(arrange(words)), (Texts{"Jonathan Smith", "PhD MBA"}));
}

TEST(LayoutTest, ClosesUpLetterSpacedWords) {
    std::vector<Word> words;
    float x = 100;
    for (const char c : std::string("JANE DOE")) {
        if (c != ' ') words.push_back({std::string(1, c), {x, 100, 20, 30}, 90, {}});
        x += c == ' ' ? 45 : 35;
    }
    EXPECT_EQ(texts(arrange(words)), (Texts{"JANE DOE"}));
}

TEST(LayoutTest, KeepsAnUnderlinedWordInItsLine) {
    auto words = wordsOf({lineAt("DATA MANAGER", 100, 100, 34)});
    words[0].box.h = 52;
    EXPECT_EQ(texts(arrange(words)), (Texts{"DATA MANAGER"}));
}

TEST(LayoutTest, KnowsWhatStandsBelowInAColumn) {
    const TextLine upper = lineAt("Jane Doe", 100, 100);
    EXPECT_TRUE(followsInColumn(upper, lineAt("Manager of Sales", 100, 145)));
    EXPECT_FALSE(followsInColumn(upper, lineAt("Manager of Sales", 100, 300)));
    EXPECT_FALSE(followsInColumn(upper, lineAt("Manager of Sales", 700, 145)));
    EXPECT_FALSE(followsInColumn(upper, lineAt("Jane Doe", 100, 100)));
}

TEST(LayoutTest, ClosesUpWhatTheEngineParted) {
    const auto word = [](const char* text, float x, float width) { return Word{text, {x, 100, width, 30}, 90, {}}; };
    EXPECT_EQ(texts(arrange({word("東京", 0, 60), word("都", 64, 28), word("渋谷", 110, 60), word("2-3", 180, 40)})),
              (Texts{"東京都 渋谷 2-3"}));
    EXPECT_EQ(texts(arrange({word("서", 0, 28), word("울", 31, 28), word("강남구", 70, 90)})), (Texts{"서울 강남구"}));
}

TEST(LayoutTest, TakesNothing) {
    EXPECT_TRUE(arrange({}).empty());
}

TEST(TextLineTest, JudgesTypeSizeByCapitals) {
    EXPECT_NEAR(typeSize({"Hand", {0, 0, 50, 30}, 90, {}}), 30, 0.1);
    EXPECT_NEAR(typeSize({"same", {0, 0, 50, 21}, 90, {}}), 30, 0.1);
    EXPECT_NEAR(typeSize({"Hagy", {0, 0, 50, 38.4F}, 90, {}}), 30, 0.1);
}

}  // namespace
}  // namespace qv::recognition
