#include "../../Source/QVCardScanTopLevelDomains.h"
#include "QVCardScan/QVCardScanResultFormatter.h"
#include "QVPlatform/Text.h"
#include "Support/CapturedLog.h"
#include "Support/NaiveText.h"

#include <gtest/gtest.h>

#include <iterator>
#include <limits>
#include <sstream>

namespace {

using Formatter = QVCardScanResultFormatter;

constexpr const char* kDomains =
    "ac ad ae aero af ag ai al am an ao aq ar arpa as asia at au aw ax az ba bb bd be bf bg bh bi biz bj "
    "bm bn bo br bs bt bv bw by bz ca cat cc cd cf cg ch ci ck cl cm cn co com coop cr cu cv cw cx cy cz "
    "de dj dk dm do dz ec edu ee eg er es et eu fi fj fk fm fo fr ga gb gd ge gf gg gh gi gl gm gn gov gp "
    "gq gr gs gt gu gw gy hk hm hn hr ht hu id ie il im in info int io iq ir is it je jm jo jobs jp ke kg "
    "kh ki km kn kp kr kw ky kz la lb lc li lk lr ls lt lu lv ly ma mc md me mg mh mil mk ml mm mn mo "
    "mobi mp mq mr ms mt mu museum mv mw mx my mz na name nc ne net nf ng ni nl no np nr nu nz om org pa "
    "pe pf pg ph pk pl pm pn post pr pro ps pt pw py qa re ro rs ru rw sa sb sc sd se sg sh si sj sk sl "
    "sm sn so sr st su sv sx sy sz tc td tel tf tg th tj tk tl tm tn to tp tr travel tt tv tw tz ua ug uk "
    "us uy uz va vc ve vg vi vn vu wf ws xn xxx ye yt za zm zw ";

std::vector<std::string> domains() {
    std::istringstream words(kDomains);
    return {std::istream_iterator<std::string>(words), std::istream_iterator<std::string>()};
}

TEST(TopLevelDomains, AreTheKnownOnesInOrder) {
    const auto expected = domains();
    ASSERT_EQ(expected.size(), 273U);
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), QVCardScanTopLevelDomains.begin(),
                           QVCardScanTopLevelDomains.end()));
    EXPECT_TRUE(std::is_sorted(expected.begin(), expected.end()));
    const auto ofLength = [&](auto fits) {
        return std::count_if(expected.begin(), expected.end(), [&](const auto& domain) { return fits(domain.size()); });
    };
    EXPECT_EQ(ofLength([](std::size_t length) { return length == 2; }), 250);
    EXPECT_EQ(ofLength([](std::size_t length) { return length == 3; }), 12);
    EXPECT_EQ(ofLength([](std::size_t length) { return length > 3; }), 11);
}

// The rules again, step by step as they are told.
namespace naive {

std::string repaired(const std::string& email) {
    const std::size_t at = email.rfind('@');
    if (at == std::string::npos) return email;
    const std::string domain = email.substr(at + 1);
    const std::size_t dot = domain.rfind('.');
    const std::string label = dot == std::string::npos ? domain : domain.substr(dot + 1);
    const auto known = domains();
    if (label.empty() || std::count(known.begin(), known.end(), label) > 0) return email;
    for (const std::string& entry : known) {
        if (!label.ends_with(entry)) continue;
        return email.substr(0, email.size() - entry.size()) + "." + entry;
    }
    return email;
}

std::string normalized(const std::string& email) {
    std::string result;
    for (char character : email) {
        const std::string allowed = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789.+-_@";
        if (allowed.find(character) == std::string::npos) continue;
        result += character >= 'A' && character <= 'Z' ? static_cast<char>(character + 32) : character;
    }
    return repaired(result);
}

}  // namespace naive

struct Row {
    const char* name;
    std::string text;
    std::string result;
};

const Row kRepairs[] = {
    {"com before om", "j.d@zqcom", "j.d@zq.com"},
    {"a label before", "j@zq.couk", "j@zq.co.uk"},
    {"et before net", "j@zqnet", "j@zqn.et"},
    {"fo before info", "j@zqinfo", "j@zqin.fo"},
    {"a letter too many", "j@zq.comm", "j@zq.co.mm"},
    {"localhost", "j@localhost", "j@localho.st"},
    {"known", "j@zq.com", "j@zq.com"},
    {"long known", "j@zq.museum", "j@zq.museum"},
    {"known alone", "j@com", "j@com"},
    {"unknown", "j@zq.c0m", "j@zq.c0m"},
    {"one letter", "j@zq.y", "j@zq.y"},
    {"dot at the end", "j@zqcom.", "j@zqcom."},
    {"dot only", "j@.", "j@."},
    {"dots only", "j@...", "j@..."},
    {"dot at the start", "j@.zqcom", "j@.zq.com"},
    {"no domain", "zqcom@", "zqcom@"},
    {"no sign", "zqcom", "zqcom"},
    {"empty", "", ""},
    {"sign only", "@", "@"},
    {"no local part", "@zqcom", "@zq.com"},
    {"two signs", "a@zqcom@zqcom", "a@zqcom@zq.com"},
    {"two signs in a row", "a@@zqcom", "a@@zq.com"},
    {"upper case", "J@ZQCOM", "J@ZQCOM"},
    {"one capital is not matched, what follows it is", "j@zq.Com", "j@zq.C.om"},
    {"entry twice in the label", "j@comzqcom", "j@comzq.com"},
    {"international prefix", "j@zqxn", "j@zq.xn"},
    {"punycode label", "j@zq.xn--p1ai", "j@zq.xn--p1.ai"},
    {"only one dot is put in", "j@zqcomcom", "j@zqcom.com"},
    {"hyphen before the entry", "j@zq-com", "j@zq-.com"},
    {"non-ASCII before the sign", "J\u00FCrgen \U0001F600@zqcom", "J\u00FCrgen \U0001F600@zq.com"},
    {"non-ASCII in the domain", "j@\u00E4zqcom", "j@\u00E4zq.com"},
    {"malformed before the sign", "\xFF\xC3@zqcom", "\xFF\xC3@zq.com"},
    {"NUL before the sign", std::string("a\0b@zqcom", 9), std::string("a\0b@zq.com", 10)},
    {"white space", " j @ zqcom ", " j @ zqcom "},
};

TEST(FixWrongTLD, Table) {
    for (const auto& row : kRepairs)
        EXPECT_EQ(Formatter::fixWrongTLDIfAny(row.text), row.result) << row.name;
}

TEST(FixWrongTLD, KeepsEveryKnownDomain) {
    for (const std::string& domain : domains()) {
        EXPECT_EQ(Formatter::fixWrongTLDIfAny("j@zq." + domain), "j@zq." + domain);
        EXPECT_EQ(Formatter::fixWrongTLDIfAny("j@" + domain), "j@" + domain);
    }
}

// A digit before them keeps longer domains out of play.
TEST(FixWrongTLD, FindsEveryEndOfTwoAndThreeLetters) {
    for (char a = 'a'; a <= 'z'; ++a) {
        for (char b = 'a'; b <= 'z'; ++b) {
            const std::string two = std::string("j@0") + a + b;
            ASSERT_EQ(Formatter::fixWrongTLDIfAny(two), naive::repaired(two));
        }
    }
    std::mt19937 random(11);
    for (int round = 0; round < 3'000; ++round) {
        std::string three = "j@0";
        for (int count = 0; count < 3; ++count)
            three += static_cast<char>('a' + random() % 26);
        ASSERT_EQ(Formatter::fixWrongTLDIfAny(three), naive::repaired(three));
    }
    for (const std::string& domain : domains()) {
        ASSERT_EQ(Formatter::fixWrongTLDIfAny("j@0" + domain), naive::repaired("j@0" + domain));
    }
}

const Row kSanitized[] = {
    {"empty", "", ""},
    {"allowed", "AZaz09.+-_@", "azaz09.+-_@"},
    {"spaces, commas, colons, brackets", " <john, smith: @ x.com> ", "johnsmith@x.com"},
    {"non-ASCII letters", "j\u00FCrgen@m\u00FCller.de", "jrgen@mller.de"},
    {"full-width", "\uFF21\uFF20a", "a"},
    {"Kelvin is no K", "\u212A", ""},
    {"caption", "E-mail: J@x.com", "e-mailj@x.com"},
    {"line ends", "j@\nx.\r\ncom\t", "j@x.com"},
    {"NUL", std::string("j\0@x", 4), "j@x"},
    {"malformed", "j\xFF@\xC3x", "j@x"},
    {"other ASCII", "!\"#$%&'()*/;<=>?[\\]^`{|}~\x7F", ""},
};

TEST(SanitizeEmail, Table) {
    for (const auto& row : kSanitized)
        EXPECT_EQ(Formatter::sanitizeEmailString(row.text), row.result) << row.name;
}

TEST(SanitizeEmail, KeepsExactly67Characters) {
    int kept = 0;
    for (int byte = 0; byte < 256; ++byte) {
        kept += static_cast<int>(Formatter::sanitizeEmailString(std::string(1, static_cast<char>(byte)))->size());
    }
    EXPECT_EQ(kept, 67);
}

const Row kEmails[] = {
    {"upper case", "J.DOE@ZQCOM", "j.doe@zq.com"},
    {"known", "John.Doe@Example.COM", "john.doe@example.com"},
    {"spaces", "john @ example . com", "john@example.com"},
    {"caption", "E-mail: john@zqcom", "e-mailjohn@zq.com"},
    {"empty", "", ""},
    {"nothing allowed", "\u4E2D \u6587", ""},
    {"full stop recognised as a comma", "j@zq,com", "j@zq.com"},
};

TEST(NormalizedEmail, Table) {
    for (const auto& row : kEmails)
        EXPECT_EQ(Formatter::normalizedEmailForEmail(row.text), row.result) << row.name;
}

TEST(NormalizedEmail, AbsentStaysAbsent) {
    EXPECT_EQ(Formatter::normalizedEmailForEmail(std::nullopt), std::nullopt);
    EXPECT_EQ(Formatter::sanitizeEmailString(std::nullopt), std::nullopt);
    EXPECT_EQ(Formatter::fixWrongTLDIfAny(std::nullopt), std::nullopt);
}

TEST(NormalizedEmail, AgreesWithTheNaiveRules) {
    std::vector<std::string> pieces = {"@", "@", ".", ".", "a", "Q",  "z",    "0",      " ",    "-", "_",
                                       "+", ",", "<", ":", "m", "co", "\xC3", "\u00E4", "\xFF", "\n"};
    for (const char* end :
         {"com", "couk", "net", "info", "NET", "museum", "name", "me", "travel", "fo", "xn", "mobi"}) {
        pieces.emplace_back(end);
    }
    pieces.emplace_back(1, '\0');
    std::mt19937 random(4711);
    for (int round = 0; round < 25'000; ++round) {
        const std::string email = testsupport::randomText(random, pieces, 12);
        ASSERT_EQ(Formatter::normalizedEmailForEmail(email), naive::normalized(email)) << '"' << email << '"';
        ASSERT_EQ(Formatter::fixWrongTLDIfAny(email), naive::repaired(email)) << '"' << email << '"';
    }
}

TEST(NormalizedEmail, TakesLongText) {
    EXPECT_EQ(Formatter::normalizedEmailForEmail(std::string(1'000'000, '@'))->size(), 1'000'000U);
    EXPECT_EQ(Formatter::normalizedEmailForEmail("@" + std::string(1'000'000, 'Q') + "com"),
              "@" + std::string(1'000'000, 'q') + ".com");
}

TEST(ReplaceMutableString, ReplacesTheTail) {
    std::string text = "john@zqcom";
    Formatter::replaceMutableString(text, 5, "zq.com");
    EXPECT_EQ(text, "john@zq.com");
    Formatter::replaceMutableString(text, 11, "!");
    EXPECT_EQ(text, "john@zq.com!") << "at the end";
    Formatter::replaceMutableString(text, 0, "");
    EXPECT_EQ(text, "");
    Formatter::replaceMutableString(text, 0, "new");
    EXPECT_EQ(text, "new");
}

TEST(ReplaceMutableString, CountsUTF16Units) {
    std::string text = "\u00FC\U0001F600zqcom";
    Formatter::replaceMutableString(text, 3, "x");
    EXPECT_EQ(text, "\u00FC\U0001F600x");
    Formatter::replaceMutableString(text, 0, "\u4E2D");
    EXPECT_EQ(text, "\u4E2D");
}

TEST(ReplaceMutableString, LogsAnIndexPastTheEndAndChangesNothing) {
    testsupport::CapturedLog log;
    std::string text = "abc";
    Formatter::replaceMutableString(text, 3, "");
    EXPECT_TRUE(log.messages().empty());
    Formatter::replaceMutableString(text, 4, "x");
    Formatter::replaceMutableString(text, std::numeric_limits<std::size_t>::max(), "x");
    EXPECT_EQ(text, "abc");
    ASSERT_EQ(log.messages().size(), 2U);
    EXPECT_EQ(log.messages()[0].rfind("WARNING: Exception Range {4, ", 0), 0U) << log.messages()[0];
}

TEST(ReplaceMutableString, LeavesTextThatItCannotConvertWhenNothingIsReplaced) {
    testsupport::CapturedLog log;
    std::string text = "\xFF";
    Formatter::replaceMutableString(text, 2, "x");
    EXPECT_EQ(text, "\xFF");
}

TEST(FormatterSwitch, IsOn) {
    EXPECT_TRUE(QVCardScanResultFormatterEnabled);
    EXPECT_EQ(sizeof QVCardScanResultFormatterEnabled, 1U);
}

}  // namespace
