#include "QVPlatform/Text.h"
#include "Support/NaiveText.h"

#include <gtest/gtest.h>

#include <clocale>

namespace {

using qv::Text::capitalized;
using qv::Text::lowercased;

struct Row {
    const char* name;
    std::string text;
    std::string result;
};

const Row kCapitalized[] = {
    {"empty", "", ""},
    {"one word", "john", "John"},
    {"all upper", "JOHN SMITH", "John Smith"},
    {"hyphen", "jean-paul", "Jean-Paul"},
    {"apostrophe", "O'BRIEN", "O'Brien"},
    {"apostrophe at the start", "'john", "'John"},
    {"hyphens around", "-x-", "-X-"},
    {"apostrophe near the end", "john's", "John'S"},
    {"two marks", "a-'b", "A-'B"},
    {"digit", "3m", "3m"},
    {"digit after a hyphen", "x-3m", "X-3m"},
    {"ampersand", "a&b", "A&b"},
    {"full stop", "a.b", "A.b"},
    {"underscore", "a_b", "A_b"},
    {"typographic apostrophe", "o\u2019brien", "O\u2019brien"},
    {"other hyphen", "a\u2010b", "A\u2010b"},
    {"tab", "a\tb", "A\tB"},
    {"line feed", "a\nb", "A\nB"},
    {"vertical tab", "a\vb", "A\vB"},
    {"form feed", "a\fb", "A\fB"},
    {"carriage return", "a\rb", "A\rB"},
    {"next line", "a\u0085b", "A\u0085B"},
    {"line separator", "a\u2028b", "A\u2028B"},
    {"paragraph separator", "a\u2029b", "A\u2029B"},
    {"no-break space", "a\u00A0b", "A\u00A0B"},
    {"ideographic space", "a\u3000b", "A\u3000B"},
    {"zero width space is none", "a\u200Bb", "A\u200Bb"},
    {"unit separator is none",
     "a\x1F"
     "b",
     "A\x1F"
     "b"},
    {"sharp s", "\u00DFa", "Ssa"},
    {"sharp s inside", "stra\u00DFE", "Stra\u00DFe"},
    {"capital sharp s inside", "STRA\u1E9EE", "Stra\u00DFe"},
    {"ligature", "\uFB01x", "Fix"},
    {"digraph", "\u01C6\u01C4", "\u01C5\u01C6"},
    {"n with apostrophe", "\u0149a", "\u02BCNa"},
    {"dotted capital i", "\u0130\u0130", "\u0130i\u0307"},
    {"dotless i", "\u0131\u0131", "I\u0131"},
    {"no Turkish", "ISTANBUL istanbul", "Istanbul Istanbul"},
    {"final sigma", "\u039F\u0394\u039F\u03A3", "\u039F\u03B4\u03BF\u03C2"},
    {"final sigma before a hyphen", "\u039F\u03A3-\u039F", "\u039F\u03C2-\u039F"},
    {"sigma after a hyphen", "\u039F-\u03A3", "\u039F-\u03A3"},
    {"sigma before an apostrophe", "\u039F\u03A3'\u039F", "\u039F\u03C3'\u039F"},
    {"final sigma before an apostrophe", "\u039F\u03A3'", "\u039F\u03C2'"},
    {"sigma alone", "\u03A3", "\u03A3"},
    {"combining mark", "e\u0301E\u0301", "E\u0301e\u0301"},
    {"Deseret", "\U00010428\U00010400", "\U00010400\U00010428"},
    {"Deseret after a hyphen", "a-\U00010428", "A-\U00010400"},
    {"Cyrillic", "\u0438\u0412\u0410\u041D", "\u0418\u0432\u0430\u043D"},
    {"Chinese", "\u738B\u5C0F\u660E", "\u738B\u5C0F\u660E"},
    {"Georgian has no title case", "\u10D0\u10D1", "\u10D0\u10D1"},
};

TEST(TextCapitalized, Table) {
    for (const auto& row : kCapitalized)
        EXPECT_EQ(capitalized(std::string_view(row.text)), row.result) << row.name;
}

TEST(TextCapitalized, LeavesUnpairedSurrogates) {
    const std::u16string text{u'a', char16_t{0xD801}, u' ', char16_t{0xDC28}, u'b'};
    const std::u16string result{u'A', char16_t{0xD801}, u' ', char16_t{0xDC28}, u'b'};
    EXPECT_EQ(capitalized(std::u16string_view(text)), result);
}

const Row kLowercased[] = {
    {"empty", "", ""},
    {"ASCII", "AbZ[`@z{09", "abz[`@z{09"},
    {"Latin", "\u00C4\u00D6\u0178", "\u00E4\u00F6\u00FF"},
    {"dotted capital i", "\u0130", "i\u0307"},
    {"no Turkish", "TITLE", "title"},
    {"Kelvin", "\u212A", "k"},
    {"sharp s", "\u1E9E", "\u00DF"},
    {"final sigma", "\u0391\u03A3 \u0391\u03A3\u0391", "\u03B1\u03C2 \u03B1\u03C3\u03B1"},
    {"final sigma before dots", "\u0391\u03A3...", "\u03B1\u03C2..."},
    {"sigma over a soft hyphen", "\u0391\u03A3\u00AD\u0391", "\u03B1\u03C3\u00AD\u03B1"},
    {"sigma after a digit", "1\u03A3", "1\u03C3"},
    {"sigma after an accent", "\u0391\u0301\u03A3", "\u03B1\u0301\u03C2"},
    {"Deseret", "\U00010400", "\U00010428"},
    {"Georgian", "\u1C90", "\u10D0"},
};

TEST(TextLowercased, Table) {
    for (const auto& row : kLowercased)
        EXPECT_EQ(lowercased(std::string_view(row.text)), row.result) << row.name;
}

TEST(TextCase, AgreesWithTheNaiveRules) {
    std::mt19937 random(20240229);
    const auto pieces = testsupport::naivePieces();
    for (int round = 0; round < 30'000; ++round) {
        const std::u16string text = testsupport::randomText(random, pieces, 14);
        const auto naive = testsupport::naiveText(text);
        ASSERT_EQ(capitalized(std::u16string_view(text)), testsupport::naiveCapitalized(naive)) << qv::Text::utf8(text);
        ASSERT_EQ(lowercased(std::u16string_view(text)), testsupport::naiveLowercased(naive)) << qv::Text::utf8(text);
    }
}

// A search from each sigma for its neighbours must not make a long text slow.
TEST(TextCase, StaysLinear) {
    std::u16string text;
    for (int count = 0; count < 200'000; ++count)
        text += u"\u03A3'.'";
    EXPECT_EQ(lowercased(std::u16string_view(text)).substr(0, 4), u"\u03C3'.'");
    text.assign(1'000'000, u'\'');
    text += u'\u03A3';
    EXPECT_EQ(lowercased(std::u16string_view(text)).back(), u'\u03C3');
}

TEST(TextCase, DoesNotAskTheLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* locale : {"tr_TR.UTF-8", "C", "de_DE.ISO-8859-1"}) {
        std::setlocale(LC_ALL, locale);
        EXPECT_EQ(lowercased(std::string_view("TITLE \u0130")), "title i\u0307");
        EXPECT_EQ(capitalized(std::string_view("istanbul")), "Istanbul");
    }
    std::setlocale(LC_ALL, before.c_str());
}

}  // namespace
