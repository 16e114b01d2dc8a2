#include "QVPlatform/RangeError.h"
#include "QVPlatform/Text.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace qv::Text;

constexpr std::size_t kHuge = std::numeric_limits<std::size_t>::max();

struct ClassRow {
    const char* name;
    char16_t unit;
    char kind;  // P punctuation, W white space, N newline, U upper-case letter, '-' none of them
};

const ClassRow kClasses[] = {
    {"Pc low line", u'_', 'P'},
    {"Pd hyphen-minus", u'-', 'P'},
    {"Pd em dash", u'\u2014', 'P'},
    {"Ps parenthesis", u'(', 'P'},
    {"Pe bracket", u']', 'P'},
    {"Pi quotation", u'\u00AB', 'P'},
    {"Pf quotation", u'\u2019', 'P'},
    {"Po full stop", u'.', 'P'},
    {"Po ampersand", u'&', 'P'},
    {"Po at sign", u'@', 'P'},
    {"Po ideographic full stop", u'\u3002', 'P'},
    {"Sm plus", u'+', '-'},
    {"Sc dollar", u'$', '-'},
    {"Sk accent", u'`', '-'},
    {"So copyright", u'\u00A9', '-'},
    {"Nd digit", u'7', '-'},
    {"Zs space", u' ', 'W'},
    {"Cc tab", u'\t', 'W'},
    {"Zs no-break space", u'\u00A0', 'W'},
    {"Zs narrow no-break space", u'\u202F', 'W'},
    {"Zs ideographic space", u'\u3000', 'W'},
    {"Cf zero width space", u'\u200B', '-'},
    {"Cf byte order mark", u'\uFEFF', '-'},
    {"line feed", u'\n', 'N'},
    {"vertical tab", u'\v', 'N'},
    {"form feed", u'\f', 'N'},
    {"carriage return", u'\r', 'N'},
    {"next line", u'\u0085', 'N'},
    {"line separator", u'\u2028', 'N'},
    {"paragraph separator", u'\u2029', 'N'},
    {"shift out", u'\x0E', '-'},
    {"NUL", u'\0', '-'},
    {"Lu", u'A', 'U'},
    {"Lu umlaut", u'\u00C4', 'U'},
    {"Lt", u'\u01C5', 'U'},
    {"Ll", u'a', '-'},
    {"Lo", u'\u4E2D', '-'},
    {"Nl Roman", u'\u2160', '-'},
    {"high surrogate", char16_t{0xD801}, '-'},
    {"low surrogate", char16_t{0xDC00}, '-'},
};

TEST(TextClasses, Table) {
    for (const auto& row : kClasses) {
        EXPECT_EQ(isPunctuation(row.unit), row.kind == 'P') << row.name;
        EXPECT_EQ(isWhitespace(row.unit), row.kind == 'W') << row.name;
        EXPECT_EQ(isNewline(row.unit), row.kind == 'N') << row.name;
        EXPECT_EQ(isUppercaseLetter(row.unit), row.kind == 'U') << row.name;
    }
}

TEST(TextTrim, TakesSpacesButNoLineEnds) {
    EXPECT_EQ(trimWhitespace(u" \t\u00A0a b\u3000 "), u"a b");
    EXPECT_EQ(trimWhitespace(u" \n a \n "), u"\n a \n");
    EXPECT_EQ(trimWhitespace(u" \t "), u"");
    EXPECT_EQ(trimWhitespace(u""), u"");
}

TEST(TextFolding, IsOneToOne) {
    EXPECT_EQ(folded(u'\u017F'), u's') << "long s";
    EXPECT_EQ(folded(u'\u212A'), u'k') << "Kelvin";
    EXPECT_EQ(folded(u'\u00C4'), u'\u00E4');
    EXPECT_EQ(folded(u'\u03C2'), u'\u03C3') << "final sigma";
    EXPECT_EQ(folded(u'\u0130'), u'\u0130') << "has no mapping to one character";
    EXPECT_EQ(folded(u'\u00DF'), u'\u00DF');
    EXPECT_EQ(folded(char16_t{0xD801}), char16_t{0xD801});
    EXPECT_EQ(folded(std::u16string_view(u"MrS\u017F")), u"mrss");
}

TEST(TextFind, IgnoresCaseWithinTheRange) {
    EXPECT_EQ(findIgnoringCase(u"xxDRxx", u"dr", 0, 6), 2U);
    EXPECT_EQ(findIgnoringCase(u"dr dr", u"DR", 1, 4), 3U);
    EXPECT_EQ(findIgnoringCase(u"\u017FT", u"st", 0, 2), 0U);
    EXPECT_EQ(findIgnoringCase(u"dr", u"dr", 0, 1), std::nullopt) << "reaches out of the range";
    EXPECT_EQ(findIgnoringCase(u"dr", u"dr", 2, 0), std::nullopt) << "an empty range at the end";
    EXPECT_EQ(findIgnoringCase(u"\u00DF", u"ss", 0, 1), std::nullopt) << "lengths stay";
    EXPECT_EQ(findIgnoringCase(u"abc", u"", 0, 3), std::nullopt);
    EXPECT_EQ(findIgnoringCase(u"", u"a", 0, 0), std::nullopt);
}

TEST(TextFind, RaisesOutsideOfTheText) {
    EXPECT_THROW(findIgnoringCase(u"abc", u"a", 4, 0), qv::RangeError);
    EXPECT_THROW(findIgnoringCase(u"abc", u"a", 1, 3), qv::RangeError);
    EXPECT_THROW(findIgnoringCase(u"abc", u"a", 1, kHuge), qv::RangeError);
    EXPECT_THROW(findIgnoringCase(u"abc", u"a", kHuge, 2), qv::RangeError);
}

TEST(TextReplaceRange, ReplacesUnits) {
    std::u16string text = u"a\U00010400z";
    replaceRange(text, 1, 2, u"bc");
    EXPECT_EQ(text, u"abcz");
    replaceRange(text, 4, 0, u"!");
    EXPECT_EQ(text, u"abcz!");
    replaceRange(text, 0, 5, u"");
    EXPECT_EQ(text, u"");
}

TEST(TextReplaceRange, RaisesOutsideOfTheTextAndChangesNothing) {
    std::u16string text = u"abc";
    EXPECT_THROW(replaceRange(text, 4, 0, u"x"), qv::RangeError);
    EXPECT_THROW(replaceRange(text, 4, kHuge, u"x"), qv::RangeError);
    EXPECT_THROW(replaceRange(text, 0, 4, u"x"), qv::RangeError);
    EXPECT_THROW(replaceRange(text, kHuge, kHuge, u"x"), qv::RangeError);
    EXPECT_EQ(text, u"abc");
    try {
        replaceRange(text, 7, 1, u"x");
        FAIL() << "nothing raised";
    } catch (const qv::RangeError& error) {
        EXPECT_STREQ(error.what(), "Range {7, 1} out of bounds; string length 3");
    }
}

TEST(TextReplaceAll, GoesOnceFromLeftToRight) {
    EXPECT_EQ(replaceAll("a-b-c", "-", "+"), "a+b+c");
    EXPECT_EQ(replaceAll("aaaaa", "aa", "b"), "bba");
    EXPECT_EQ(replaceAll("aaa", "a", "aa"), "aaaaaa") << "what is put in is not looked at again";
    EXPECT_EQ(replaceAll("Abc", "a", "x"), "Abc") << "literal";
    EXPECT_EQ(replaceAll("abc", "", "x"), "abc");
    EXPECT_EQ(replaceAll("", "a", "x"), "");
    EXPECT_EQ(replaceAll("abc", "abc", ""), "");
    EXPECT_EQ(replaceAll(std::string_view("a\0b", 3), std::string_view("\0", 1), "0"), "a0b");
}

}  // namespace
