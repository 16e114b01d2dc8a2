#include "Support/TerminalText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>

namespace {

namespace TerminalText = qvhost::TerminalText;
using testing::ElementsAre;

TEST(TerminalText, ControlsBecomeVisible) {
    const struct {
        const char* name;
        std::string text;
        const char* shown;
    } rows[] = {
        {"plain", "Ada", "Ada"},
        {"empty", "", ""},
        {"escape sequence", "\x1b[31mred", "\\x1b[31mred"},
        {"title sequence", "\x1b]0;x\x07", "\\x1b]0;x\\x07"},
        {"NUL", std::string("a\0b", 3), "a\\x00b"},
        {"delete", "a\x7f", "a\\x7f"},
        {"eight-bit control", "\xC2\x9B", "\\x9b"},
        {"line break", "a\nb", "a\\nb"},
        {"carriage return", "a\rb", "a\\rb"},
        {"tab", "a\tb", "a\\tb"},
        {"right-to-left override",
         "\xE2\x80\xAE"
         "x",
         "\\u202ex"},
        {"isolate",
         "\xE2\x81\xA6"
         "x",
         "\\u2066x"},
        {"line separator", "\xE2\x80\xA8", "\\u2028"},
        {"tag character", "\xF3\xA0\x81\x81", "\\ue0041"},
        {"backslash stays", "\\n", "\\n"},
        {"umlaut", "ä", "ä"},
        {"emoji", "😀", "😀"},
        {"cut UTF-8", "a\xC3", "a\xEF\xBF\xBD"},
        {"stray byte", "\xFF", "\xEF\xBF\xBD"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(TerminalText::printable(row.text), row.shown) << row.name;
    EXPECT_EQ(TerminalText::printableLines("a\nb\tc"), "a\nb\\tc");
}

TEST(TerminalText, MeasuresColumns) {
    const struct {
        const char* text;
        std::size_t columns;
    } rows[] = {{"", 0},
                {"Ada", 3},
                {"ä", 1},
                {"東京", 4},
                {"ｱ", 1},
                {"Ａ", 2},
                {"e\xCC\x81", 1},
                {"한국", 4},
                {"😀", 2},
                {"שלום", 4},
                {"a\xE2\x80\x8D"
                 "b",
                 2}};
    for (const auto& row : rows)
        EXPECT_EQ(TerminalText::displayWidth(row.text), row.columns) << row.text;
}

TEST(TerminalText, WrapsAtSpacesWhereItCan) {
    EXPECT_THAT(TerminalText::wrapped("", 10), ElementsAre(""));
    EXPECT_THAT(TerminalText::wrapped(" \n ", 10), ElementsAre(""));
    EXPECT_THAT(TerminalText::wrapped("short", 10), ElementsAre("short"));
    EXPECT_THAT(TerminalText::wrapped("exactly 10", 10), ElementsAre("exactly 10"));
    EXPECT_THAT(TerminalText::wrapped("one two three", 8), ElementsAre("one two", "three"));
    EXPECT_THAT(TerminalText::wrapped("one two three", 7), ElementsAre("one two", "three"));
    EXPECT_THAT(TerminalText::wrapped("unbreakable", 4), ElementsAre("unbr", "eaka", "ble"));
    EXPECT_THAT(TerminalText::wrapped("東京都", 4), ElementsAre("東京", "都"));
    EXPECT_THAT(TerminalText::wrapped("1 Main St\n12345 Town\n", 40), ElementsAre("1 Main St", "12345 Town"));
    EXPECT_THAT(TerminalText::wrapped("a\n\nb", 40), ElementsAre("a", "", "b"));
}

TEST(TerminalText, WrapsVeryLongTextWithoutLosingAny) {
    const std::string text(2'000'000, 'x');
    const auto lines = TerminalText::wrapped(text, 60);
    EXPECT_EQ(std::accumulate(lines.begin(), lines.end(), std::string()), text);
    EXPECT_EQ(lines.front().size(), 60U);
}

TEST(TerminalText, WrapsMarksWithoutCuttingCharacters) {
    std::string marks = "a";
    for (int i = 0; i < 5000; ++i)
        marks += "\xCC\x81";
    const auto lines = TerminalText::wrapped(marks, 10);
    EXPECT_EQ(std::accumulate(lines.begin(), lines.end(), std::string()), marks);
}

}  // namespace
