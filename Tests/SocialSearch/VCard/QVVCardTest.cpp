#include "QVSocialSearch/QVVCard.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::string cardWithLines(const std::string& version, const std::string& lines, const std::string& end = "\r\n") {
    return "BEGIN:VCARD" + end + "VERSION:" + version + end + lines + "END:VCARD" + end;
}

/// Fails the running test, and gives an empty card, when there is none.
QVVCard readCard(const std::string& bytes) {
    std::string problem;
    auto card = QVVCard::cardWithBytes(bytes, &problem);
    EXPECT_TRUE(card) << problem << "\n" << bytes.substr(0, 500);
    return card ? *std::move(card) : QVVCard::emptyCard();
}

QVVCardProperty readProperty(const std::string& version, const std::string& lines, std::string_view name) {
    const QVVCard card = readCard(cardWithLines(version, lines));
    const QVVCardProperty* property = card.propertyNamed(name);
    EXPECT_NE(property, nullptr) << name;
    return property != nullptr ? *property : QVVCardProperty();
}

std::vector<std::string> physicalLines(const std::string& bytes, const std::string& end) {
    std::vector<std::string> lines;
    for (std::size_t begin = 0; begin < bytes.size();) {
        const std::size_t stop = bytes.find(end, begin);
        lines.push_back(bytes.substr(begin, stop - begin));
        begin = stop == std::string::npos ? bytes.size() : stop + end.size();
    }
    return lines;
}

struct TextRow {
    std::string name;
    std::string version;
    std::string lines;
    std::string text;
};

class VCardTexts : public testing::TestWithParam<TextRow> {};

TEST_P(VCardTexts, AreRead) {
    EXPECT_EQ(readProperty(GetParam().version, GetParam().lines, "NOTE").text(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, VCardTexts,
    testing::Values(
        TextRow{"Plain", "3.0", "NOTE:hello\r\n", "hello"}, TextRow{"LowerCaseName", "3.0", "note:hello\r\n", "hello"},
        TextRow{"Escapes", "3.0", "NOTE:a\\, b\\; c\\\\ d\\n e\\N f\\: g\r\n", "a, b; c\\ d\n e\n f: g"},
        TextRow{"UnknownEscapeStays", "3.0", "NOTE:a\\t b\\\r\n", "a\\t b\\"},
        TextRow{"EscapedBackslashBeforeN", "4.0", "NOTE:C:\\\\new\r\n", "C:\\new"},
        TextRow{"BackslashNIsNoEscapeIn21", "2.1", "NOTE:C:\\new\r\n", "C:\\new"},
        TextRow{"Folded", "3.0", "NOTE:hel\r\n lo\r\n\t you\r\n", "hello you"},
        TextRow{"FoldedInsideOfASequence", "3.0", "NOTE:\xC3\r\n \xA4\r\n", "\xC3\xA4"},
        TextRow{"FoldKeepsTheBlankIn21", "2.1", "NOTE:hello\r\n you\r\n", "hello you"},
        TextRow{"FoldedName", "3.0", "NO\r\n TE:x\r\n", "x"},
        TextRow{"QuotedPrintable", "2.1", "NOTE;ENCODING=QUOTED-PRINTABLE:a=3Db=0D=0Ac\r\n", "a=b\nc"},
        TextRow{"QuotedPrintableStandingAlone", "2.1", "NOTE;QUOTED-PRINTABLE:a=20b\r\n", "a b"},
        TextRow{"QuotedPrintableLowerCase", "2.1", "note;encoding=quoted-printable:a=c3=a4\r\n", "a\xC3\xA4"},
        TextRow{"QuotedPrintableSoftBreak", "2.1", "NOTE;ENCODING=QUOTED-PRINTABLE:abc=\r\ndef=\r\n ghi\r\n",
                "abcdef ghi"},
        TextRow{"QuotedPrintableBadEscapeStays", "2.1", "NOTE;ENCODING=QUOTED-PRINTABLE:a=XYb=4\r\n", "a=XYb=4"},
        TextRow{"QuotedPrintableIn30", "3.0", "NOTE;ENCODING=QUOTED-PRINTABLE:=C3=BC\r\n", "\xC3\xBC"},
        TextRow{"QuotedPrintableNUL", "2.1", "NOTE;ENCODING=QUOTED-PRINTABLE:a=00b\r\n", "ab"},
        TextRow{"Latin1", "2.1", "NOTE;CHARSET=ISO-8859-1:M\xFCller\r\n", "M\xC3\xBCller"},
        TextRow{"Latin1InQuotedPrintable", "2.1", "NOTE;CHARSET=ISO-8859-1;ENCODING=QUOTED-PRINTABLE:M=FCller\r\n",
                "M\xC3\xBCller"},
        TextRow{"ShiftJIS", "2.1", "NOTE;CHARSET=SHIFT_JIS;ENCODING=QUOTED-PRINTABLE:=8E=52=93=63\r\n", "山田"},
        TextRow{"NoCharacterSetIsWindows1252", "2.1", "NOTE:M\xFCller \x80\r\n", "M\xC3\xBCller \xE2\x82\xAC"},
        TextRow{"NoCharacterSetIsUTF8WhereItCanBe", "2.1", "NOTE:M\xC3\xBCller\r\n", "M\xC3\xBCller"},
        TextRow{"ColonInTheValue", "3.0", "NOTE:a:b;c\r\n", "a:b;c"},
        TextRow{"ColonInAQuotedParameter", "3.0", "NOTE;X-A=\"b:c;d,e\":f\r\n", "f"},
        TextRow{"Empty", "3.0", "NOTE:\r\n", ""}),
    [](const auto& row) { return row.param.name; });

TEST(QVVCardTest, ReadsGroupsAndParameters) {
    const QVVCardProperty property =
        readProperty("4.0", "item1.TEL;TYPE=\"work,voice\";type=cell;PREF=1;X-N=\"a^'b^^c^nd\":+1 2\r\n", "TEL");
    EXPECT_EQ(property.group, "item1");
    EXPECT_EQ(property.text(), "+1 2");
    EXPECT_THAT(property.types(), ElementsAre("WORK", "VOICE", "CELL"));
    EXPECT_EQ(property.parameter("PREF"), "1");
    EXPECT_EQ(property.parameter("X-N"), "a\"b^c\nd");
    EXPECT_FALSE(property.parameter("ABSENT"));
}

TEST(QVVCardTest, ReadsTypesThatStandAlone) {
    const QVVCardProperty property = readProperty("2.1", "TEL;HOME;FAX;X=a,b:1\r\n", "TEL");
    EXPECT_THAT(property.types(), ElementsAre("HOME", "FAX"));
    EXPECT_TRUE(property.hasType("FAX"));
    EXPECT_FALSE(property.hasType("WORK"));
}

TEST(QVVCardTest, ReadsComponents) {
    EXPECT_THAT(readProperty("3.0", "N:van\\; X;Ada\\, B;;\\\\;\r\n", "N").components(),
                ElementsAre("van; X", "Ada, B", "", "\\", ""));
    EXPECT_THAT(readProperty("2.1", "N:a\\;b;c,d\r\n", "N").components(), ElementsAre("a;b", "c,d"));
}

TEST(QVVCardTest, ReadsBase64) {
    const qv::Data expected{'a', 0, 0xFF, 'z'};
    EXPECT_EQ(readProperty("3.0", "PHOTO;ENCODING=b;TYPE=JPEG:YQD/\r\n  eg==\r\n", "PHOTO").bytes(), expected);
    EXPECT_EQ(readProperty("2.1", "PHOTO;BASE64:\r\n YQD/\r\n eg==\r\n\r\n", "PHOTO").bytes(), expected);
    EXPECT_EQ(readProperty("2.1", "PHOTO;ENCODING=BASE64:YQD/eg\r\n", "PHOTO").bytes(), expected);
    EXPECT_FALSE(readProperty("3.0", "PHOTO;ENCODING=b:YQ!D\r\n", "PHOTO").bytes());
    EXPECT_FALSE(readProperty("3.0", "PHOTO;ENCODING=b:YQ==YQ==\r\n", "PHOTO").bytes());
    EXPECT_FALSE(readProperty("3.0", "PHOTO;VALUE=uri:http://a.example/\r\n", "PHOTO").bytes());
}

TEST(QVVCardTest, KeepsPropertiesInUnknownCharacterSetsUnread) {
    const std::string bytes = cardWithLines("2.1", "NOTE;CHARSET=X-KLINGON:\xFF\xFE\r\nFN:a\r\n");
    const QVVCard card = readCard(bytes);
    EXPECT_EQ(card.propertyNamed("NOTE"), nullptr);
    EXPECT_NE(card.propertyNamed("FN"), nullptr);
    EXPECT_EQ(card.bytes(), bytes);
}

TEST(QVVCardTest, KeepsEveryByte) {
    const std::vector<std::string> cards{
        cardWithLines("3.0", "FN:a\r\nX-ODD;;A=:  \r\n\r\nitem1.X-B:c\r\n  d\r\n"),
        cardWithLines("4.0", "FN:a\nNOTE:b\n", "\n"),
        "\xEF\xBB\xBF" + cardWithLines("3.0", "FN:a\r\n"),
        "\r\n\r\n" + cardWithLines("3.0", "FN:a\nN:b\r\n") + "\r\n  \n",
        cardWithLines("2.1", "AGENT:\r\nBEGIN:VCARD\r\nFN:inner\r\nEND:VCARD\r\nFN:outer\r\n"),
        cardWithLines("2.1", "PHOTO;BASE64:\r\n  YQ==\r\n\r\nFN:x\r\n"),
        "begin:vcard\nversion:3.0\nfn:a\nend:vcard",
    };
    for (const std::string& bytes : cards)
        EXPECT_EQ(readCard(bytes).bytes(), bytes);
    EXPECT_EQ(readCard(cards[4]).propertyNamed("FN")->text(), "outer");
    EXPECT_EQ(readCard(cards[4]).propertiesNamed("FN").size(), 1U);
}

struct BrokenRow {
    std::string name;
    std::string bytes;
    std::string problem;
};

class VCardBroken : public testing::TestWithParam<BrokenRow> {};

TEST_P(VCardBroken, AreRefused) {
    std::string problem;
    EXPECT_FALSE(QVVCard::cardWithBytes(GetParam().bytes, &problem));
    EXPECT_THAT(problem, HasSubstr(GetParam().problem));
    EXPECT_FALSE(QVVCard::cardWithBytes(GetParam().bytes, nullptr));
}

std::string repeated(const std::string& text, std::size_t count) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i)
        result += text;
    return result;
}

INSTANTIATE_TEST_SUITE_P(
    Rows, VCardBroken,
    testing::Values(
        BrokenRow{"Empty", "", "not a card"}, BrokenRow{"Text", "hello\r\n", "not a card"},
        BrokenRow{"NoVersion", "BEGIN:VCARD\r\nFN:a\r\nEND:VCARD\r\n", "not a card"},
        BrokenRow{"OtherVersion", cardWithLines("5.0", "FN:a\r\n"), "version"},
        BrokenRow{"NoEnd", "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:a\r\n", "no end"},
        BrokenRow{"CutInALine", "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:a\r\nEND:VCA", "no end"},
        BrokenRow{"NoBeginning", "VERSION:3.0\r\nFN:a\r\nEND:VCARD\r\n", "precedes"},
        BrokenRow{"OnlyEnd", "END:VCARD\r\nVERSION:3.0\r\n", "before it begins"},
        BrokenRow{"TwoCards", cardWithLines("3.0", "FN:a\r\n") + cardWithLines("3.0", "FN:b\r\n"), "follows"},
        BrokenRow{"NoColon", cardWithLines("3.0", "FN:a\r\nnonsense\r\n"), "line 4"},
        BrokenRow{"NoName", cardWithLines("3.0", ":a\r\n"), "line 3"},
        BrokenRow{"NoNameBehindTheGroup", cardWithLines("3.0", "a.:b\r\n"), "line 3"},
        BrokenRow{"OddName", cardWithLines("3.0", "F N:a\r\n"), "line 3"},
        BrokenRow{"OpenQuote", cardWithLines("3.0", "TEL;X=\"a:b\r\n"), "line 3"},
        BrokenRow{"NUL", cardWithLines("3.0", std::string("FN:a\0b\r\n", 8)), "not a text"},
        BrokenRow{"NotUTF8", cardWithLines("3.0", "FN:\xFC\r\n"), "UTF-8"},
        BrokenRow{"ManyProperties", cardWithLines("3.0", repeated("A:b\n", 1000000)), "too many"},
        BrokenRow{"ManyParameters", cardWithLines("3.0", "A" + repeated(";b=c", 1000000) + ":d\r\n"), "line 3"},
        BrokenRow{"ManyValues", cardWithLines("3.0", "A;B=" + repeated("c,", 1000000) + ":d\r\n"), "line 3"},
        BrokenRow{"DeeplyNested", repeated("BEGIN:VCARD\nVERSION:3.0\n", 100000), "too many"},
        BrokenRow{"TooLarge", cardWithLines("3.0", "NOTE:" + std::string(std::size_t{16} << 20, 'a') + "\r\n"),
                  "too large"}),
    [](const auto& row) { return row.param.name; });

TEST(QVVCardTest, ReadsACardThatIsAsLargeAsItMayBe) {
    const std::string frame = cardWithLines("3.0", "NOTE:\r\n");
    const std::string bytes =
        cardWithLines("3.0", "NOTE:" + std::string(QVVCard::kMaximumSize - frame.size(), 'a') + "\r\n");
    ASSERT_EQ(bytes.size(), QVVCard::kMaximumSize);
    EXPECT_EQ(readCard(bytes).bytes(), bytes);
}

TEST(QVVCardTest, WritesInTheCardsVersionAndLineEnds) {
    for (const std::string end : {"\r\n", "\n"}) {
        for (const std::string version : {"2.1", "3.0", "4.0"}) {
            std::string lines = "X-A:b" + end;
            QVVCard card = readCard(cardWithLines(version, lines, end));
            card.addProperty(QVVCardProperty::withTexts(card.version(), "NOTE", {"x"}));
            lines += "NOTE:x" + end;
            EXPECT_EQ(card.bytes(), cardWithLines(version, lines, end));
        }
    }
}

TEST(QVVCardTest, WritesBeforeAnEndWithoutLineEnd) {
    QVVCard card = readCard("BEGIN:VCARD\nVERSION:3.0\nEND:VCARD");
    card.addProperty(QVVCardProperty::withTexts(card.version(), "FN", {"a"}));
    EXPECT_EQ(card.bytes(), "BEGIN:VCARD\nVERSION:3.0\nFN:a\nEND:VCARD");
}

TEST(QVVCardTest, ReplacesOneLineOnly) {
    QVVCard card = readCard(cardWithLines("3.0", "TITLE;LANGUAGE=en:Old\r\n er\r\nitem2.TITLE:Other\r\nX-A:\\q\r\n"));
    QVVCardProperty changed = *card.propertyNamed("TITLE");
    changed.value = "New";
    card.replaceProperty(card.propertyNamed("TITLE"), changed);
    EXPECT_EQ(card.bytes(), cardWithLines("3.0", "TITLE;LANGUAGE=en:New\r\nitem2.TITLE:Other\r\nX-A:\\q\r\n"));
}

TEST(QVVCardTest, WritesParametersAsTheyWere) {
    QVVCard card = readCard(cardWithLines("4.0", "item1.TEL;TYPE=\"work,voice\";X-N=\"a^'b:c\":1\r\n"));
    QVVCardProperty changed = *card.propertyNamed("TEL");
    changed.value = "2";
    card.replaceProperty(card.propertyNamed("TEL"), changed);
    EXPECT_EQ(card.bytes(), cardWithLines("4.0", "item1.TEL;TYPE=\"work,voice\";X-N=\"a^'b:c\":2\r\n"));
}

TEST(QVVCardTest, NumbersGroupsBeyondThoseInUse) {
    EXPECT_EQ(readCard(cardWithLines("3.0", "FN:a\r\n")).unusedGroup(), "item1");
    EXPECT_EQ(readCard(cardWithLines("3.0", "ITEM7.TEL:1\r\nitem3.TEL:2\r\nother9.TEL:3\r\n")).unusedGroup(), "item8");
    EXPECT_EQ(readCard(cardWithLines("3.0", "item99999999999999999999.TEL:1\r\n")).unusedGroup(), "item1");
}

TEST(QVVCardTest, FindsPropertiesInTheirGroup) {
    const QVVCard card = readCard(cardWithLines("3.0", "X-L:no\r\na.X-L:first\r\nB.X-L:second\r\n"));
    ASSERT_NE(card.propertyNamed("X-L", "b"), nullptr);
    EXPECT_EQ(card.propertyNamed("X-L", "b")->text(), "second");
    EXPECT_EQ(card.propertyNamed("X-L", "c"), nullptr);
    EXPECT_EQ(card.propertyNamed("X-L", ""), nullptr);
}

struct FoldRow {
    std::string name;
    std::string version;
    std::string text;
};

class VCardFolding : public testing::TestWithParam<FoldRow> {};

/// At every length around the limit: no piece is longer than 75 octets or begins inside a sequence, and the text comes
/// back.
TEST_P(VCardFolding, KeepsTextsWhole) {
    for (std::size_t length = 0; length < 240; ++length) {
        const std::string text = std::string(length, 'x') + GetParam().text;
        QVVCard card = readCard(cardWithLines(GetParam().version, ""));
        card.addProperty(QVVCardProperty::withTexts(card.version(), "NOTE", {text}));
        for (const std::string& line : physicalLines(card.bytes(), "\r\n")) {
            EXPECT_LE(line.size(), 75U);
            const bool isFolded = line.starts_with(' ') && line.size() > 1;
            EXPECT_NE(static_cast<unsigned char>(line[isFolded ? 1 : 0]) & 0xC0, 0x80) << line;
        }
        const QVVCard again = readCard(card.bytes());
        ASSERT_NE(again.propertyNamed("NOTE"), nullptr);
        ASSERT_EQ(again.propertyNamed("NOTE")->text(), text) << card.bytes();
    }
}

std::vector<FoldRow> foldRows() {
    std::vector<FoldRow> rows;
    for (const std::string version : {"2.1", "3.0", "4.0"}) {
        const std::string suffix = version == "2.1" ? "21" : version == "3.0" ? "30" : "40";
        rows.push_back({"Plain" + suffix, version, ""});
        rows.push_back({"Umlauts" + suffix, version, "äöüÄÖÜßäöüÄÖÜß"});
        rows.push_back({"Han" + suffix, version, "漢字漢字漢字漢字漢字漢字"});
        rows.push_back({"Emoji" + suffix, version, "😀😀😀😀😀😀😀😀"});
        rows.push_back({"Blanks" + suffix, version, " a  b   c     d      e"});
        rows.push_back({"Specials" + suffix, version, "a;b,c\\d\ne=f\\;g\\\\,h\n\ni:\"j\""});
        rows.push_back({"EndsInBlank" + suffix, version, "a "});
        rows.push_back({"EndsInBackslash" + suffix, version, "a\\"});
    }
    return rows;
}

INSTANTIATE_TEST_SUITE_P(Rows, VCardFolding, testing::ValuesIn(foldRows()),
                         [](const auto& row) { return row.param.name; });

TEST(QVVCardTest, EscapesWhatTheVersionEscapes) {
    const std::vector<std::string> texts{"a;b,c\\d\ne", "f"};
    EXPECT_EQ(QVVCardProperty::withTexts(QVVCardVersion::V30, "X", texts).value, "a\\;b\\,c\\\\d\\ne;f");
    EXPECT_EQ(QVVCardProperty::withTexts(QVVCardVersion::V40, "X", texts).value, "a\\;b\\,c\\\\d\\ne;f");
    EXPECT_EQ(QVVCardProperty::withTexts(QVVCardVersion::V21, "X", texts).value, "a\\;b,c\\\\d\ne;f");
    EXPECT_EQ(QVVCardProperty::withTexts(QVVCardVersion::V30, "X", {std::string("a\0b\r\nc\rd", 8)}).value,
              "ab\\nc\\nd");
}

TEST(QVVCardTest, WritesOldCardsInQuotedPrintable) {
    QVVCard card = readCard(cardWithLines("2.1", ""));
    card.addProperty(QVVCardProperty::withTexts(card.version(), "FN", {"Müller"}));
    card.addProperty(QVVCardProperty::withTexts(card.version(), "NOTE", {"a\nb=c"}));
    EXPECT_EQ(card.bytes(), cardWithLines("2.1",
                                          "FN;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:M=C3=BCller\r\n"
                                          "NOTE;ENCODING=QUOTED-PRINTABLE:a=0D=0Ab=3Dc\r\n"));
}

TEST(QVVCardTest, ReplacesEncodedValuesWithoutTheOldEncoding) {
    QVVCard card = readCard(cardWithLines("2.1", "FN;CHARSET=ISO-8859-1;ENCODING=QUOTED-PRINTABLE:M=FCller\r\n"));
    QVVCardProperty changed = *card.propertyNamed("FN");
    changed.value = "Muller";
    card.replaceProperty(card.propertyNamed("FN"), changed);
    EXPECT_EQ(card.bytes(), cardWithLines("2.1", "FN:Muller\r\n"));
}

TEST(QVVCardTest, PlainValuesAreNotCalledBase64) {
    const std::vector<std::string> heads{"X;ENCODING=b;LANGUAGE=en", "X;encoding=BASE64;LANGUAGE=en",
                                         "X;LANGUAGE=en;TYPE=base64", "X;BASE64;LANGUAGE=en"};
    for (const std::string& head : heads) {
        const std::string version = head.find(";BASE64") == std::string::npos ? "3.0" : "2.1";
        QVVCard card = readCard(cardWithLines(version, head + ":aGVsbG8=\r\n"));
        const QVVCardProperty* old = card.propertyNamed("X");
        EXPECT_TRUE(old->isBase64()) << head;
        card.replaceProperty(old, old->withPlainValue("hello"));
        EXPECT_EQ(card.bytes(), cardWithLines(version, "X;LANGUAGE=en:hello\r\n")) << head;
    }
}

TEST(QVVCardTest, FindsTheVersionBehindAValueThatLooksLikeOne) {
    const std::string lines = "NOTE;ENCODING=QUOTED-PRINTABLE:a=\r\nVERSION:9.9=\r\nVERSION:9.8\r\n";
    const std::string bytes = "BEGIN:VCARD\r\n" + lines + "VERSION:2.1\r\nEND:VCARD\r\n";
    EXPECT_EQ(readCard(bytes).version(), QVVCardVersion::V21);
    EXPECT_EQ(readCard(bytes).propertyNamed("NOTE")->text(), "aVERSION:9.9VERSION:9.8");
    // A fold has no soft line break at its end, whatever it holds.
    const std::string fold = "BEGIN:VCARD\r\nX:a\r\n Y;QUOTED-PRINTABLE:b=\r\nVERSION:3.0\r\nEND:VCARD\r\n";
    EXPECT_EQ(readCard(fold).version(), QVVCardVersion::V30);
}

TEST(QVVCardTest, AnEmptyLineEndsASoftLineBreak) {
    const QVVCard card = readCard(cardWithLines("2.1", "FN;QUOTED-PRINTABLE:a==\r\n\r\nTITLE:b\r\n"));
    EXPECT_EQ(card.propertyNamed("FN")->value, "a=");
    ASSERT_NE(card.propertyNamed("TITLE"), nullptr);
}

}  // namespace
