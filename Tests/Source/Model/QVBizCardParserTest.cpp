#include "QVCardScan/QVBizCardParser.h"
#include "QVCardScan/QVCardProcessingError.h"
#include "QVPlatform/Log.h"
#include "QVPlatform/XMLParser.h"
#include "Support/CapturedLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Nothing is to be logged, and what the parser says about each event is not to be paid for.
class BizCardParser : public testing::Test {
  protected:
    BizCardParser() { qv::Log::setSink({}); }
    ~BizCardParser() override { qv::Log::useSystemLog(); }

    static std::shared_ptr<QVBusinessCard> parse(const QVString& result) {
        return QVBizCardParser().parse(result, nullptr);
    }

    static std::shared_ptr<QVBusinessCardField> field(const std::string& item) {
        const auto card = parse("<recoIndex>" + item + "</recoIndex>");
        return card && card->fields() && !card->fields()->empty() ? card->fields()->front() : nullptr;
    }

    static std::vector<QVString> texts(const std::string& result) {
        std::vector<QVString> collected;
        const auto card = parse(result);
        for (const auto& each : *card->fields())
            collected.push_back(each->text());
        return collected;
    }
};

TEST_F(BizCardParser, BuildsACard) {
    const auto card = parse(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
        "<recoIndex lang=\"en\" objWidth=\"1024\" objHeight=\"600\" orient=\"90\">"
        "<item fldType=\"name\" fldDom=\"x\" x=\"10.5\" y=\"20\" w=\"120\" h=\"18.25\" orient=\"270\">"
        "<t w=\"87\">JOHN SMITH</t></item>"
        "<item fldType=\"EMAIL\"><t w=\"9\">J@ZQCOM</t></item></recoIndex>");
    ASSERT_TRUE(card);
    EXPECT_EQ(card->language(), "en");
    EXPECT_EQ(card->cardWidth(), 1024);
    EXPECT_EQ(card->cardHeight(), 600);
    ASSERT_EQ(card->fields()->size(), 2U);
    const QVBusinessCardField& name = *card->fields()->front();
    EXPECT_EQ(name.type(), QVBusinessCardFieldTypeName);
    EXPECT_EQ(name.label(), 0);
    EXPECT_EQ(name.name(), "name");
    EXPECT_EQ(name.text(), "John Smith");
    EXPECT_EQ(name.frame(), (qv::Rect{{10.5, 20}, {120, 18.25}}));
    EXPECT_EQ(name.weight(), 87);
    EXPECT_EQ(name.orient(), 270);
    const QVBusinessCardField& email = *card->fields()->back();
    EXPECT_EQ(email.type(), QVBusinessCardFieldTypeEmail);
    EXPECT_EQ(email.name(), "EMAIL") << "as it was written";
    EXPECT_EQ(email.text(), "j@zq.com");
    EXPECT_EQ(card->fullName(), "John Smith");
    EXPECT_EQ(card->rotationByDegrees(), 0) << "the last field's";
}

struct TypeRow {
    QVString value;
    std::int32_t type;
};

const TypeRow kTypes[] = {
    {"name", 1},   {"email", 2}, {"phone", 3},   {"url", 7},        {"address", 8},     {"title", 4},
    {"web", 7},    {"fax", 9},   {"mobile", 10}, {"company", 5},    {"twitter", 11},    {"department", 6},
    {"skype", 12}, {"EMAIL", 2}, {"Web", 7},     {"Skype", 12},     {"S\u212AYPE", 12}, {"logo", 0},
    {"", 0},       {" name", 0}, {"names", 0},   {std::nullopt, 0}, {"T\u0130TLE", 0},  {"\uFF4E\uFF41me", 0},
};

TEST_F(BizCardParser, KnowsTheFieldTypes) {
    for (const auto& row : kTypes) {
        EXPECT_EQ(QVBizCardParser().cardFieldTypeFromFieldName(row.value), row.type) << row.value.value_or("(absent)");
        if (!row.value) continue;
        const auto made = field("<item fldType='" + *row.value + "'/>");
        EXPECT_EQ(made->type(), row.type) << *row.value;
        EXPECT_EQ(made->name(), row.value);
    }
    const auto untyped = field("<item/>");
    EXPECT_EQ(untyped->type(), 0);
    EXPECT_EQ(untyped->name(), std::nullopt);
}

TEST(CardRecoVocabulary, HasItsExactTexts) {
    EXPECT_EQ(CardRecoElementRoot, "recoIndex");
    EXPECT_EQ(CardRecoElementItem, "item");
    EXPECT_EQ(CardRecoElementText, "t");
    EXPECT_EQ(CardRecoPropertyLanguage, "lang");
    EXPECT_EQ(CardRecoPropertyCardWidth, "objWidth");
    EXPECT_EQ(CardRecoPropertyCardHeight, "objHeight");
    EXPECT_EQ(CardRecoPropertyFieldType, "fldType");
    EXPECT_EQ(CardRecoPropertyPositionX, "x");
    EXPECT_EQ(CardRecoPropertyPositionY, "y");
    EXPECT_EQ(CardRecoPropertySizeWidth, "w");
    EXPECT_EQ(CardRecoPropertySizeHeight, "h");
    EXPECT_EQ(CardRecoPropertyOrientation, "orient");
    EXPECT_EQ(CardRecoPropertyWeight, "w");
    EXPECT_EQ(CardRecoPropertyFieldDomain, "fldDom");
    EXPECT_EQ(CardRecoPropertyFieldTypeValueName, "name");
    EXPECT_EQ(CardRecoPropertyFieldTypeValueEmail, "email");
    EXPECT_EQ(CardRecoPropertyFieldTypeValuePhone, "phone");
    EXPECT_EQ(CardRecoPropertyFieldTypeValueURL, "url");
    EXPECT_EQ(CardRecoPropertyFieldTypeValueAddress, "address");
    EXPECT_EQ(CardRecoPropertyFieldTypeValueTitle, "title");
    EXPECT_EQ(CardRecoPropertyFieldTypeValueWeb, "web");
    EXPECT_EQ(CardRecoPropertyFieldTypeValueFax, "fax");
    EXPECT_EQ(CardRecoPropertyFieldTypeValueMobile, "mobile");
    EXPECT_EQ(CardRecoPropertyFieldTypeValueCompany, "company");
    EXPECT_EQ(CardRecoPropertyFieldTypeValueDepartment, "department");
    EXPECT_EQ(CardRecoPropertyFieldTypeValueTwitter, "twitter");
    EXPECT_EQ(CardRecoPropertyFieldTypeValueSkype, "skype");
}

TEST_F(BizCardParser, TellsTheTwoWidthsApart) {
    const auto both = field("<item w='120'><t w='87'>x</t></item>");
    EXPECT_EQ(both->frame().size.width, 120.0);
    EXPECT_EQ(both->weight(), 87);
    EXPECT_EQ(field("<item><t w='0.9'>x</t></item>")->weight(), 0) << "a whole number, not a fraction";
    EXPECT_EQ(field("<item><t>x</t></item>")->weight(), 0);
    EXPECT_EQ(field("<item weight='5'/>")->weight(), 0);
}

TEST_F(BizCardParser, ReadsNumbersLeniently) {
    const auto made = field("<item x=' 1.5px' y='abc' w='' h='-2e1' orient=' 90.7'><t w='+87%'/></item>");
    EXPECT_EQ(made->frame(), (qv::Rect{{1.5, 0}, {0, -20}}));
    EXPECT_EQ(made->orient(), 90);
    EXPECT_EQ(made->weight(), 87);
    EXPECT_EQ(field("<item x='0.1'/>")->frame().origin.x, static_cast<double>(0.1F)) << "single precision, widened";
    const auto card = parse("<recoIndex objWidth='99999999999999999999' objHeight='1e3'/>");
    EXPECT_EQ(card->cardWidth(), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(card->cardHeight(), 1);
    EXPECT_EQ(card->language(), std::nullopt);
}

TEST_F(BizCardParser, BuildsFieldsFromAttributes) {
    const auto made = QVBizCardParser().cardFieldFromAttributeDictionary(
        {{"fldType", "Fax"}, {"x", "1"}, {"y", "2"}, {"w", "3"}, {"h", "4"}, {"orient", "180"}, {"fldDom", "9"}});
    EXPECT_EQ(made->type(), QVBusinessCardFieldTypeFax);
    EXPECT_EQ(made->name(), "Fax");
    EXPECT_EQ(made->text(), std::nullopt);
    EXPECT_EQ(made->frame(), (qv::Rect{{1, 2}, {3, 4}}));
    EXPECT_EQ(made->weight(), 0);
    EXPECT_EQ(made->orient(), 180);
    EXPECT_EQ(QVBizCardParser().cardFieldFromAttributeDictionary({})->type(), 0);
}

TEST_F(BizCardParser, TakesEachAttributeForWhatItIsAlone) {
    const std::pair<const char*, qv::Rect> rows[] = {{"x", {{7, 0}, {0, 0}}},
                                                     {"y", {{0, 7}, {0, 0}}},
                                                     {"w", {{0, 0}, {7, 0}}},
                                                     {"h", {{0, 0}, {0, 7}}},
                                                     {"orient", {}},
                                                     {"fldType", {}},
                                                     {"zoom", {}},
                                                     {"a", {}}};
    for (const auto& [attribute, frame] : rows) {
        const auto made = QVBizCardParser().cardFieldFromAttributeDictionary({{attribute, "7"}});
        EXPECT_EQ(made->frame(), frame) << attribute;
        EXPECT_EQ(made->orient(), attribute == std::string("orient") ? 7 : 0) << attribute;
        EXPECT_EQ(made->name(), attribute == std::string("fldType") ? QVString("7") : std::nullopt) << attribute;
    }
}

TEST_F(BizCardParser, NamesAreExact) {
    EXPECT_EQ(parse("<recoindex><item/></recoindex>"), nullptr);
    EXPECT_EQ(parse("<x:recoIndex xmlns:x='u'/>"), nullptr);
    EXPECT_THAT(texts("<recoIndex><Item>a</Item></recoIndex>"), IsEmpty());
    EXPECT_EQ(field("<item X='1' FldType='name'/>")->frame().origin.x, 0.0);
    EXPECT_EQ(field("<item><T w='7'>x</T></item>")->weight(), 0);
}

struct TextRow {
    const char* name;
    std::string result;
    std::vector<QVString> texts;
};

const TextRow kTexts[] = {
    {"two pieces", "<recoIndex><item><t>a</t><t>b</t></item></recoIndex>", {"ab"}},
    {"white space between pieces",
     "<recoIndex><item><t>John</t>\n  <t>Smith</t></item></recoIndex>",
     {"John\n  Smith"}},
    {"a name keeps the line break",
     "<recoIndex><item fldType='name'><t>JOHN</t>\n  <t>SMITH</t></item></recoIndex>",
     {"John\n Smith"}},
    {"white space before the first piece", "<recoIndex><item> <t>a</t></item></recoIndex>", {" a"}},
    {"after the item", "<recoIndex><item><t>a</t></item>b<item><t>c</t></item></recoIndex>", {"ab", "c"}},
    {"line break after the last item", "<recoIndex><item><t>a</t></item>\n</recoIndex>", {"a\n"}},
    {"after the root's end", "<x><recoIndex><item>a</item></recoIndex>b</x>", {"ab"}},
    {"before the first item", "<recoIndex>lost<item><t>a</t></item></recoIndex>", {"a"}},
    {"without a piece", "<recoIndex><item>a</item></recoIndex>", {"a"}},
    {"no text", "<recoIndex><item/><item></item></recoIndex>", {std::nullopt, std::nullopt}},
    {"text between is the one before's", "<recoIndex><item/>x<item/></recoIndex>", {"x", std::nullopt}},
    {"other elements", "<recoIndex><item><b>a<c>b</c></b>c</item></recoIndex>", {"abc"}},
    {"entities", "<recoIndex><item>A&amp;B&#32;&lt;C</item></recoIndex>", {"A&B <C"}},
    {"CDATA", "<recoIndex><item><t><![CDATA[A & <b>]]></t></item></recoIndex>", {"A & <b>"}},
    {"declared encoding",
     "<?xml version='1.0' encoding='latin1'?><recoIndex><item>\u00E4</item></recoIndex>",
     {"\u00E4"}},
    {"byte order mark", "\xEF\xBB\xBF<recoIndex><item>\u00E4</item></recoIndex>", {"\u00E4"}},
    {"items inside items", "<recoIndex><item>a<item>b</item>c</item></recoIndex>", {"a", "bc"}},
    {"item before the root", "<x><item>lost</item><recoIndex><item>a</item></recoIndex></x>", {"a"}},
    {"item after the root", "<x><recoIndex><item>a</item></recoIndex><item>lost</item></x>", {"a"}},
    {"root inside the root", "<recoIndex><item>a</item><recoIndex><item>b</item></recoIndex></recoIndex>", {"b"}},
    {"item between two ends", "<recoIndex><recoIndex><item>a</item></recoIndex><item>b</item></recoIndex>", {"a", "b"}},
    {"text after a second root's start",
     "<recoIndex><item>a</item><recoIndex>b<item>c</item></recoIndex></recoIndex>",
     {"c"}},
    {"an email in pieces is repaired as a whole",
     "<recoIndex><item fldType='email'><t>J@</t><t>ZQ</t><t>COM</t></item>\n</recoIndex>",
     {"j@zq.com"}},
    {"an empty name", "<recoIndex><item fldType='name'>.</item></recoIndex>", {""}},
};

TEST_F(BizCardParser, CollectsText) {
    for (const auto& row : kTexts)
        EXPECT_EQ(texts(row.result), row.texts) << row.name;
}

TEST_F(BizCardParser, WeighsTheFieldBefore) {
    const auto card = parse("<recoIndex><t w='1'/><item><t w='5'/></item><t w='7'/><item/></recoIndex>");
    ASSERT_EQ(card->fields()->size(), 2U);
    EXPECT_EQ(card->fields()->front()->weight(), 7) << "the last piece, though it stands outside";
    EXPECT_EQ(card->fields()->back()->weight(), 0);
}

TEST_F(BizCardParser, ALaterRootReplacesTheCard) {
    const auto card = parse("<x><recoIndex lang='en'><item/></recoIndex><recoIndex objWidth='5'/></x>");
    EXPECT_EQ(card->language(), std::nullopt);
    EXPECT_EQ(card->cardWidth(), 5);
    EXPECT_THAT(*card->fields(), IsEmpty());
}

TEST_F(BizCardParser, NoRootNoCard) {
    for (const char* result : {"<x/>", "<item fldType='name'><t w='9'>John</t></item>", "<x><item>a</item></x>"}) {
        EXPECT_EQ(parse(result), nullptr) << result;
    }
    EXPECT_EQ(parse(std::nullopt), nullptr);
    EXPECT_EQ(parse(""), nullptr);
    EXPECT_EQ(parse(" \n"), nullptr);
    EXPECT_EQ(parse("no XML"), nullptr);
}

TEST_F(BizCardParser, KeepsTheCardOfAMalformedDocument) {
    const auto cut = parse("<recoIndex lang='en'><item fldType='name'>JOHN");
    ASSERT_TRUE(cut);
    EXPECT_EQ(cut->language(), "en");
    EXPECT_EQ(cut->fields(), nullptr) << "its end was not reached";
    const auto complete = parse("<recoIndex><item fldType='name'>JOHN</item></recoIndex>junk");
    ASSERT_TRUE(complete && complete->fields());
    EXPECT_EQ(complete->fields()->front()->text(), "John");
    const auto second = parse("<x><recoIndex><item/></recoIndex><recoIndex lang='de'>");
    EXPECT_EQ(second->language(), "de");
    EXPECT_EQ(second->fields(), nullptr);
    EXPECT_EQ(parse("<recoIndex a='1' a='2'/>"), nullptr);
}

TEST_F(BizCardParser, ReplacesAnErrorInTheSlot) {
    std::optional<qv::Error> slot = qv::Error{"before", 1, {}};
    EXPECT_TRUE(QVBizCardParser().parse("<recoIndex><item>", &slot));
    ASSERT_TRUE(slot);
    EXPECT_EQ(slot->domain, kQVCardProcessingErrorDomain);
    EXPECT_EQ(slot->code, 4);
    ASSERT_EQ(slot->userInfo.size(), 1U);
    const auto underlying =
        std::any_cast<qv::Error>(slot->userInfo.at(std::string(kQVCardProcessingUnderlyingErrorKey)));
    EXPECT_EQ(underlying.domain, qv::kXMLParserErrorDomain);
    EXPECT_EQ(underlying.code, 3) << "no element found";
}

TEST_F(BizCardParser, LeavesAnEmptySlotEmpty) {
    std::optional<qv::Error> slot;
    EXPECT_TRUE(QVBizCardParser().parse("<recoIndex><item>", &slot));
    EXPECT_FALSE(slot);
    EXPECT_TRUE(QVBizCardParser().parse("<recoIndex/>", &slot));
    EXPECT_FALSE(slot);
}

TEST_F(BizCardParser, EmptiesTheSlotWhenThereWasNoFailure) {
    for (const QVString& result : {QVString("<recoIndex/>"), QVString(""), QVString()}) {
        std::optional<qv::Error> slot = qv::Error{"before", 1, {}};
        QVBizCardParser().parse(result, &slot);
        EXPECT_FALSE(slot) << result.value_or("(absent)");
    }
}

TEST_F(BizCardParser, LogsEveryEvent) {
    testsupport::CapturedLog log;
    QVBizCardParser().parse("<recoIndex lang='en' a='%@'><item>50%@</item></recoIndex>", nullptr);
    EXPECT_THAT(log.messages(),
                ElementsAre("Parser started element: recoIndex attributes: {a = \"%@\"; lang = \"en\"}",
                            "Parser started element: item attributes: {}", "===> Parser found characters: 50%@",
                            "Parser ended element: item", "Parser ended element: recoIndex"));
}

TEST_F(BizCardParser, LogsNothingAboutAnError) {
    testsupport::CapturedLog log;
    QVBizCardParser().parse("no XML", nullptr);
    EXPECT_THAT(log.messages(), IsEmpty());
}

TEST_F(BizCardParser, ServesOneDocumentAfterTheOther) {
    QVBizCardParser parser;
    EXPECT_TRUE(parser.parse("<recoIndex><item>a</item></recoIndex>", nullptr));
    EXPECT_EQ(parser.parse("<x/>", nullptr), nullptr) << "nothing is left of the one before";
}

// Each line end is a piece of its own: joined and repaired each time, a million of them would never end.
TEST_F(BizCardParser, StaysLinearInPieces) {
    std::string result = "<recoIndex><item fldType='name'>";
    for (int count = 0; count < 500'000; ++count)
        result += "a\n";
    const auto card = parse(result + "</item></recoIndex>");
    EXPECT_EQ(card->fields()->front()->text()->substr(0, 6), "A\nA\nA\n");
    EXPECT_EQ(card->fields()->front()->text()->size(), 1'000'000U);
}

TEST_F(BizCardParser, StaysLinearInItems) {
    std::string result = "<recoIndex>";
    for (int count = 0; count < 300'000; ++count)
        result += "<item>x</item>";
    EXPECT_EQ(parse(result + "</recoIndex>")->fields()->size(), 300'000U);
}

TEST_F(BizCardParser, StaysLinearInRootsInsideEachOther) {
    std::string result;
    for (int count = 0; count < 9'000; ++count)
        result += "<recoIndex>";
    for (int count = 0; count < 100'000; ++count)
        result += "<item/>";
    for (int count = 0; count < 9'000; ++count)
        result += "<item/></recoIndex>";
    EXPECT_EQ(parse(result)->fields()->size(), 109'000U);
}

}  // namespace
