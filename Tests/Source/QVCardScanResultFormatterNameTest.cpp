#include "QVCardScan/QVCardScanResultFormatter.h"
#include "QVPlatform/Text.h"
#include "Support/NaiveText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>

namespace {

using Formatter = QVCardScanResultFormatter;

struct Row {
    const char* name;
    std::string text;
    std::string result;
};

const Row kNames[] = {
    {"everything at once", "DR. JOHN F. SMITH, PH.D.", "Dr. John F. Smith Ph.D."},
    {"spaces", "  john   q   public  ", "John Q. Public"},
    {"a longer title before a shorter", "mrs jane  doe", "Mrs. Jane Doe"},
    {"degree", "John Smith MD", "John Smith M.D."},
    {"surname equal to a degree", "Ma Long", "M.A. Long"},
    {"first match inside a word", "Drew Dr", "Drew Dr"},
    {"first match at the end of a word", "Adams Ms", "Adams Ms"},
    {"twice at the end", "John Smith Jr Jr", "John Smith Jr. Jr"},
    {"twice at the start", "Jr Jr Smith", "Jr. Jr. Smith"},
    {"three times at the start", "jr jr jr", "Jr. Jr. Jr."},
    {"six times: the search meets the fourth again", "jr jr jr jr jr jr", "Jr. Jr. Jr. Jr. Jr Jr"},
    {"twice, apart", "Jr Smith Jr", "Jr. Smith Jr."},
    {"degree twice", "Smith Md Md", "Smith M.D. M.D."},
    {"doctorate twice, far behind", "John Smith Phd Phd", "John Smith Ph.D. Ph.D."},
    {"all initials", "A B", "A. B."},
    {"lone initial", "a", "A."},
    {"empty", "", ""},
    {"ampersand", "smith & sons", "Smith & Sons"},
    {"hyphen", "JEAN-PAUL SARTRE", "Jean-Paul Sartre"},
    {"apostrophe", "MICHAEL O'BRIEN", "Michael O'Brien"},
    {"typographic apostrophe is punctuation", "O\u2019BRIEN", "Obrien"},
    {"punctuation only", ".,;:!?()[]{}\u00AB\u00BB\u2026", ""},
    {"punctuation and spaces only", " . , ", ""},
    {"spaces only", " \t ", ""},
    {"symbols stay", "a+b $5 c=d", "A+b $5 C=d"},
    {"tab parts words but not titles", "Dr\tSmith", "Dr\tSmith"},
    {"line break parts words but not initials", "J\nSmith", "J\nSmith"},
    {"no-break space does not bound a title", "Dr\u00A0Smith", "Dr\u00A0Smith"},
    {"title in the middle", "smith dr john", "Smith Dr. John"},
    {"title inside a hyphenated word", "Dr-Ing Maier", "Dr-Ing Maier"},
    {"degrees with dots", "jane roe b.a., m.a., d.d.s.", "Jane Roe B.A. M.A. D.D.S."},
    {"spaced degree", "John Roe PH D", "John Roe Ph D."},
    {"long s in a title", "m\u017F jane", "Ms. Jane"},
    {"umlauts", "J\u00DCRGEN M\u00DCLLER", "J\u00FCrgen M\u00FCller"},
    {"umlaut initial", "\u00D6 Maier", "\u00D6. Maier"},
    {"title-case digraph initial", "\u01C6 x", "\u01C5. X."},
    {"Chinese single characters are no initials", "\u738B \u660E", "\u738B \u660E"},
    {"supplementary initial is two units", "\U00010428 Smith", "\U00010400 Smith"},
    {"digit word", "John 3 Smith", "John 3 Smith"},
    {"sharp s initial grows", "\u00DF Smith", "Ss Smith"},
    {"final sigma", "\u0391\u039D\u0394\u03A1\u0395\u0391\u03A3", "\u0391\u03BD\u03B4\u03C1\u03B5\u03B1\u03C2"},
    {"saint and senior", "st john sr", "St. John Sr."},
    {"punctuation inside a title joins it", "D.R. Smith", "Dr. Smith"},
    {"underscore goes", "john_smith", "Johnsmith"},
    {"spaces that punctuation parted", "john . smith", "John Smith"},
};

TEST(NormalizedName, Table) {
    for (const auto& row : kNames)
        EXPECT_EQ(Formatter::normalizedNameForName(row.text), row.result) << row.name;
}

const Row kHonorifics[] = {
    {"1", "Ms", "Ms."},    {"2", "Mrs", "Mrs."},    {"3", "Mr", "Mr."},      {"4", "Rev", "Rev."},
    {"5", "Fr", "Fr."},    {"6", "Dr", "Dr."},      {"7", "Atty", "Atty."},  {"8", "Prof", "Prof."},
    {"9", "Hon", "Hon."},  {"10", "Pres", "Pres."}, {"11", "Gov", "Gov."},   {"12", "Ofc", "Ofc."},
    {"13", "Gen", "Gen."}, {"14", "Rep", "Rep."},   {"15", "Sen", "Sen."},   {"16", "St", "St."},
    {"17", "Sr", "Sr."},   {"18", "Jr", "Jr."},     {"19", "PhD", "Ph.D."},  {"20", "MD", "M.D."},
    {"21", "BA", "B.A."},  {"22", "MA", "M.A."},    {"23", "DDS", "D.D.S."},
};

TEST(NormalizedName, RestoresTheDotsOfEveryHonorific) {
    ASSERT_EQ(std::size(kHonorifics), 23U);
    for (const auto& row : kHonorifics) {
        EXPECT_EQ(Formatter::normalizedNameForName(row.text), row.result) << row.name;
        EXPECT_EQ(Formatter::normalizedNameForName(row.text + " xyz"), row.result + " Xyz") << row.name;
        EXPECT_EQ(Formatter::normalizedNameForName("xyz " + qv::Text::lowercased(row.text)), "Xyz " + row.result)
            << row.name;
        EXPECT_EQ(Formatter::normalizedNameForName("xyz" + row.text).value().find('.'), std::string::npos) << row.name;
    }
}

TEST(NormalizedName, AbsentStaysAbsent) {
    EXPECT_EQ(Formatter::normalizedNameForName(std::nullopt), std::nullopt);
    EXPECT_EQ(Formatter::sanitizeNameString(std::nullopt), std::nullopt);
    EXPECT_EQ(Formatter::stripDoubleSpaceFrom(std::nullopt), std::nullopt);
    EXPECT_EQ(Formatter::recoverMiddleNameDotString(std::nullopt), std::nullopt);
}

TEST(NormalizedName, SurvivesAnyBytes) {
    EXPECT_EQ(Formatter::normalizedNameForName(std::string("jo\0hn", 5)), std::string("Jo\0hn", 5));
    EXPECT_EQ(Formatter::normalizedNameForName("jo\xFFhn \xE4\xB8"), "Jo\uFFFDhn \uFFFD");
    EXPECT_EQ(Formatter::stripDoubleSpaceFrom("a  \xFF  b"), "a \xFF b");
    std::mt19937 random(7);
    for (int round = 0; round < 2'000; ++round) {
        std::string bytes(random() % 20, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random() & 0xFF);
        const QVString name = Formatter::normalizedNameForName(bytes);
        ASSERT_TRUE(name && qv::Text::stringFromUTF8({name->begin(), name->end()}));
    }
}

const Row kSanitized[] = {
    {"empty", "", ""},
    {"kept punctuation", "a&b-c'd", "a&b-c'd"},
    {"case stays", "DR. JOHN", "DR JOHN"},
    {"every category", "a_b\u2014c(d)e\u00ABf\u00BBg.h@i#j%k*l/m\\n", "abcdefghijklmn"},
    {"symbols", "+$=<>^`|~\u00A9\u20AC", "+$=<>^`|~\u00A9\u20AC"},
    {"trimmed", " \t\u00A0\u3000 a \t", "a"},
    {"trimmed after removal", ". a .", "a"},
    {"line ends stay", "\n a \n", "\n a \n"},
    {"tabs inside stay", "a\t\tb", "a\t\tb"},
    {"spaces collapse after removal", "a . b", "a b"},
    {"digits", "1.2", "12"},
};

TEST(SanitizeName, Table) {
    for (const auto& row : kSanitized)
        EXPECT_EQ(Formatter::sanitizeNameString(row.text), row.result) << row.name;
}

TEST(StripDoubleSpace, CollapsesOrdinarySpacesOnly) {
    EXPECT_EQ(Formatter::stripDoubleSpaceFrom(""), "");
    EXPECT_EQ(Formatter::stripDoubleSpaceFrom("a b"), "a b");
    EXPECT_EQ(Formatter::stripDoubleSpaceFrom("   a    b  "), " a b ");
    EXPECT_EQ(Formatter::stripDoubleSpaceFrom("     "), " ");
    EXPECT_EQ(Formatter::stripDoubleSpaceFrom("a\t\tb\u00A0\u00A0c"), "a\t\tb\u00A0\u00A0c");
    EXPECT_EQ(Formatter::stripDoubleSpaceFrom(std::string(100'000, ' ')), " ");
}

const Row kInitials[] = {
    {"empty", "", ""},
    {"one", "A", "A."},
    {"lower case", "a b", "a b"},
    {"empty words stay", " A  B ", " A.  B. "},
    {"spaces only", "  ", "  "},
    {"two letters", "AB", "AB"},
    {"with a dot already", "A. B", "A. B."},
    {"digit", "3", "3"},
    {"tab is no separator", "A\tB", "A\tB"},
    {"umlaut", "\u00C4", "\u00C4."},
    {"title case", "\u01C5", "\u01C5."},
    {"supplementary", "\U00010400", "\U00010400"},
    {"combined", "E\u0301", "E\u0301"},
};

TEST(RecoverMiddleNameDot, Table) {
    for (const auto& row : kInitials)
        EXPECT_EQ(Formatter::recoverMiddleNameDotString(row.text), row.result) << row.name;
}

// The rules again, step by step as they are told, over the troublesome alphabet.
namespace naive {

bool isPunctuation(char16_t unit) {
    for (const auto& character : testsupport::kNaiveAlphabet) {
        if (character.text == std::u16string_view(&unit, 1)) {
            return character.kind == testsupport::NaiveCharacter::kPunctuation;
        }
    }
    return false;
}

bool isSpace(char16_t unit) {
    return unit == u' ' || unit == u'\t' || unit == u'\u00A0' || unit == u'\u3000';
}

std::u16string sanitized(const std::u16string& text) {
    std::u16string result;
    for (const char16_t unit : text) {
        if (!isPunctuation(unit) || unit == u'&' || unit == u'-' || unit == u'\'') result += unit;
    }
    while (!result.empty() && isSpace(result.front()))
        result.erase(0, 1);
    while (!result.empty() && isSpace(result.back()))
        result.pop_back();
    while (result.find(u"  ") != std::u16string::npos) {
        std::u16string collapsed;
        for (std::size_t index = 0; index < result.size(); ++index) {
            collapsed += result[index];
            if (result.compare(index, 2, u"  ") == 0) ++index;
        }
        result = collapsed;
    }
    return result;
}

char16_t folded(char16_t unit) {
    if (unit == u'\u017F') return u's';
    if (unit == u'\u212A') return u'k';
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
}

std::size_t search(const std::u16string& text, const std::u16string& key, std::size_t start, std::size_t length) {
    EXPECT_EQ(start + length, text.size()) << "the range ends with the text";
    for (std::size_t place = start; place + key.size() <= start + length; ++place) {
        std::size_t same = 0;
        while (same < key.size() && folded(text[place + same]) == folded(key[same]))
            ++same;
        if (same == key.size()) return place;
    }
    return std::u16string::npos;
}

void restore(std::u16string& text, const std::u16string& key, const std::u16string& value) {
    std::size_t shift = 0;
    std::size_t remaining = text.size();
    std::size_t place = search(text, key, 0, remaining);
    while (place != std::u16string::npos) {
        const bool left = place == 0 || text[place - 1] == u' ';
        const bool right = place + key.size() == text.size() || text[place + key.size()] == u' ';
        if (!left || !right) return;
        text.replace(place, key.size(), value);
        shift += value.size();
        remaining -= key.size();
        place = search(text, key, shift, remaining);
    }
}

bool isUpper(char16_t unit) {
    for (const auto& character : testsupport::kNaiveAlphabet) {
        if (character.text == std::u16string_view(&unit, 1)) {
            return character.kind == testsupport::NaiveCharacter::kUpperLetter;
        }
    }
    return unit >= u'A' && unit <= u'Z';
}

std::u16string withInitials(const std::u16string& text) {
    std::vector<std::u16string> words(1);
    for (const char16_t unit : text) {
        if (unit == u' ') {
            words.emplace_back();
        } else {
            words.back() += unit;
        }
    }
    std::u16string result;
    for (std::size_t index = 0; index < words.size(); ++index) {
        if (index > 0) result += u' ';
        result += words[index];
        if (words[index].size() == 1 && (isUpper(words[index][0]) || words[index] == u"\u00C9")) result += u'.';
    }
    return result;
}

std::u16string normalized(const std::u16string& name) {
    std::u16string text = testsupport::naiveCapitalized(testsupport::naiveText(sanitized(name)));
    for (const auto& row : kHonorifics)
        restore(text, qv::Text::utf16(row.text), qv::Text::utf16(row.result));
    return withInitials(text);
}

}  // namespace naive

TEST(NormalizedName, AgreesWithTheNaiveRules) {
    auto pieces = testsupport::naivePieces();
    for (int count = 0; count < 25; ++count)
        pieces.emplace_back(u" ");
    for (const char16_t* word : {u"Jr", u"jr ", u" JR ", u"ms", u"mrs ", u"mr", u"Dr. ", u"m.d. ", u"MD ", u"ba ",
                                 u" ma", u"dds", u"tat", u" s\u017F", u"\u017Ft ", u"J. ", u" D"}) {
        pieces.emplace_back(word);
    }
    std::mt19937 random(19700101);
    for (int round = 0; round < 30'000; ++round) {
        const std::u16string name = testsupport::randomText(random, pieces, 16);
        ASSERT_EQ(Formatter::normalizedNameForName(qv::Text::utf8(name)), qv::Text::utf8(naive::normalized(name)))
            << '"' << qv::Text::utf8(name) << '"';
    }
}

// Long texts are compared without being printed.
TEST(NormalizedName, StaysLinear) {
    std::string name;
    std::string result;
    for (int count = 0; count < 200'000; ++count) {
        name += "phd ";
        result += count == 0 ? "Ph.D." : " Ph.D.";
    }
    EXPECT_TRUE(Formatter::normalizedNameForName(name) == result);
    EXPECT_EQ(Formatter::normalizedNameForName(std::string(1'000'000, '.')), "");
}

TEST(NormalizedName, IsTheSameOnEveryThread) {
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (int count = 0; count < 4; ++count) {
        threads.emplace_back([&wrong] {
            for (const auto& row : kNames)
                wrong += Formatter::normalizedNameForName(row.text) == row.result ? 0 : 1;
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}

}  // namespace
