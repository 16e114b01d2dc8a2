#include "QVCardScan/QVVeltoNoteGenerator.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct Text {
    const char* name;
    std::string given;
    std::string expected;
};

std::string nameOf(const testing::TestParamInfo<Text>& info) {
    return info.param.name;
}

class MarkupTest : public testing::TestWithParam<Text> {};

TEST_P(MarkupTest, FiveCharactersBecomeEntities) {
    EXPECT_EQ(QVVeltoNoteGenerator().XHTMLEncodedStringFromString(GetParam().given), GetParam().expected);
}

const Text kMarkupTexts[] = {
    {"Empty", "", ""},
    {"Plain", "Jordan Example", "Jordan Example"},
    {"NameAndAddress", "Tom & Jerry <tj>", "Tom &amp; Jerry &lt;tj&gt;"},
    {"QuotationMark", "\"", "&quot;"},
    {"Apostrophe", "It's", "It&apos;s"},
    {"NotIdempotent", "&amp;", "&amp;amp;"},
    {"EntityOfEachCharacter", "&lt;&gt;&quot;&apos;", "&amp;lt;&amp;gt;&amp;quot;&amp;apos;"},
    {"AllInARow", "&<>\"'&", "&amp;&lt;&gt;&quot;&apos;&amp;"},
    {"WhiteSpaceStays", " a \n\t  b\r\n ", " a \n\t  b\r\n "},
    {"OtherScriptsStay", "Zoë 山田 محمد 👋", "Zoë 山田 محمد 👋"},
    {"NonBreakingSpaceStays", "a\u00a0b", "a\u00a0b"},
    {"Placeholder", "<!--x-quorvane:emails-->", "&lt;!--x-quorvane:emails--&gt;"},
    {"Nul", std::string("a\0&", 3), std::string("a\0&amp;", 7)},
};

INSTANTIATE_TEST_SUITE_P(Texts, MarkupTest, testing::ValuesIn(kMarkupTexts), nameOf);

class URLArgumentTest : public testing::TestWithParam<Text> {};

TEST_P(URLArgumentTest, OnlyUnreservedCharactersStay) {
    EXPECT_EQ(QVVeltoNoteGenerator().gtm_stringByEscapingForURLArgument(GetParam().given), GetParam().expected);
}

const Text kURLTexts[] = {
    {"Empty", "", ""},
    {"Unreserved", "AZaz09-._~", "AZaz09-._~"},
    {"Space", "a b", "a%20b"},
    {"EscapeSet", "!*'();:@&=+$,/?%#[]", "%21%2A%27%28%29%3B%3A%40%26%3D%2B%24%2C%2F%3F%25%23%5B%5D"},
    {"OtherPunctuation", "\"<>\\^`{|}", "%22%3C%3E%5C%5E%60%7B%7C%7D"},
    {"Controls", std::string("\0\x01\n\x7f", 4), "%00%01%0A%7F"},
    {"Umlaut", "Straße", "Stra%C3%9Fe"},
    {"CJK", "東京", "%E6%9D%B1%E4%BA%AC"},
    {"Emoji", "👋", "%F0%9F%91%8B"},
    {"AlreadyEscaped", "%20", "%2520"},
};

INSTANTIATE_TEST_SUITE_P(Texts, URLArgumentTest, testing::ValuesIn(kURLTexts), nameOf);

class MapLinkTest : public testing::TestWithParam<Text> {};

TEST_P(MapLinkTest, HoldsTheWordsJoinedBySingleSpaces) {
    EXPECT_EQ(QVVeltoNoteGenerator().encodedGoogleMapURLStringFromAddressString(GetParam().given),
              "http://maps.google.com/?q=" + GetParam().expected);
}

const Text kAddresses[] = {
    {"Empty", "", ""},
    {"OnlyWhiteSpace", " \n\t ", ""},
    {"LinesAndRuns", "  10 Main St\n\nSuite 5 ", "10%20Main%20St%20Suite%205"},
    {"NumberSignAndAmpersand", "Flat #3 & 4", "Flat%20%233%20%26%204"},
    {"MarkupCharacters", "<\"'>", "%3C%22%27%3E"},
    {"EverySpaceOfUnicode",
     "a\u00a0b\u1680c\u2000d\u2001e\u2002f\u2003g\u2004h\u2005i\u2006j\u2007k\u2008l\u2009m\u200an\u202fo\u205fp\u3000"
     "q",
     "a%20b%20c%20d%20e%20f%20g%20h%20i%20j%20k%20l%20m%20n%20o%20p%20q"},
    {"EveryLineEnd", "a\nb\vc\fd\re\u0085f\u2028g\u2029h\r\ni\tj", "a%20b%20c%20d%20e%20f%20g%20h%20i%20j"},
    {"ZeroWidthSpaceIsNoSpace", "a\u200bb", "a%E2%80%8Bb"},
    {"OtherPlane", "🏠 1", "%F0%9F%8F%A0%201"},
};

INSTANTIATE_TEST_SUITE_P(Addresses, MapLinkTest, testing::ValuesIn(kAddresses), nameOf);

/// The cell as it is published, around a context name and a text.
std::string cell(const std::string& contextName, const std::string& text) {
    return "<div style=\"float: left;margin: 0;padding: 0;width: 77px;text-align: left;\"><p "
           "style=\"margin:0;padding:0;"
           "\"><span style=\"-webkit-appearance: none;border: none;color: #aaaaaa;font-size: 14px;font-family: "
           "Helvetica;\"><span style=\"x-quorvane:context;-quorvane-context-name:" +
           contextName + "\">" + text + "</span></span></p></div>";
}

TEST(LabelCell, HoldsTheNameInLowerCaseAndAsGiven) {
    const QVVeltoNoteGenerator generator;
    EXPECT_EQ(generator.labelContentWithContextName("Work Email"), cell("work email", "Work Email"));
    EXPECT_EQ(generator.labelContentWithContextName(std::nullopt), cell("", ""));
    EXPECT_EQ(generator.labelContentWithContextName(""), cell("", ""));
    EXPECT_EQ(generator.labelContentWithContextName("ÄRZTE ΟΔΟΣ"), cell("ärzte οδος", "ÄRZTE ΟΔΟΣ"));
    EXPECT_EQ(generator.labelContentWithContextName("İ"), cell("i\u0307", "İ"));
}

TEST(LabelCell, TheNameIsMarkupAndNoFormat) {
    const QVVeltoNoteGenerator generator;
    EXPECT_EQ(generator.labelContentWithContextName("<B>&\"X\""), cell("<b>&\"x\"", "<B>&\"X\""));
    EXPECT_EQ(generator.labelContentWithContextName("%@ 100%% %d"), cell("%@ 100%% %d", "%@ 100%% %d"));
}

}  // namespace
