#include "Faults/Aftermath.h"
#include "Faults/RecognitionRoad.h"
#include "Source/Operation/ScanFixtures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <string>
#include <string_view>

/// Answers that arrive well and are bad in themselves: each ends three cards as its row says, and the fourth is read.
namespace faults {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::Pointee;

/// What becomes of the answer.
enum class Becomes {
    Unreadable,  ///< error 3, no raw result, nothing read
    Nothing,     ///< no error and no card: the contact is one of nothing
    Card,        ///< no error, and a card with as much as could be read
};

struct AnswerFault {
    const char* name;
    std::function<std::string()> body;
    Becomes end;
    /// The name that the card has then; null: none.
    const char* contactName;
    /// What three of them at once may cost.
    std::size_t megabytes;
};

void PrintTo(const AnswerFault& fault, std::ostream* stream) {
    *stream << fault.name;
}

constexpr std::size_t kMillion = 1'000'000;
/// Just below what an answer may be.
constexpr std::size_t kLargest = 16'500'000;
constexpr std::size_t kSmall = 64;
/// For answers of a few megabytes, of which three are on their way.
constexpr std::size_t kMedium = 128;
/// Three answers of 16 MiB, as bytes, as text and as what is made of them.
constexpr std::size_t kLarge = 1500;

std::string times(std::size_t count, std::string_view text) {
    std::string all;
    all.reserve(count * text.size());
    for (std::size_t i = 0; i < count; ++i)
        all += text;
    return all;
}
std::string filling(std::string_view text) {
    return times(kLargest / text.size(), text);
}
std::string item(const std::string& type, const std::string& text) {
    return "<item fldType=\"" + type + "\"><t w=\"90\">" + text + "</t></item>";
}
std::string root(const std::string& content) {
    return "<recoIndex lang=\"en\">" + content + "</recoIndex>";
}
/// A good answer but for these bytes in its name.
std::function<std::string()> bytes(const std::string& bad) {
    return [bad] { return root(item("NAME", "Jordan " + bad + "Example")); };
}
std::function<std::string()> cut(const std::string& bad) {
    return [bad] { return root(item("NAME", "Jordan")) + bad; };
}
std::function<std::string()> field(const std::string& type, std::string_view text) {
    return [type, text] { return root(item(type, filling(text))); };
}
std::string declared(const std::string& declarations, const std::string& use) {
    return "<!DOCTYPE recoIndex [" + declarations + "]>" + root(item("NAME", use));
}
std::string billionLaughs() {
    std::string declarations = "<!ENTITY a0 \"ha\">";
    for (int level = 1; level < 40; ++level) {
        const std::string below = "&a" + std::to_string(level - 1) + ";";
        declarations += "<!ENTITY a" + std::to_string(level) + " \"" + times(10, below) + "\">";
    }
    return declared(declarations, "&a39;");
}
std::string attributes(std::size_t count) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i)
        all += " a" + std::to_string(i) + "=\"\"";
    return all;
}

/// A name inside an item that has more to say of itself.
std::string itemWith(const std::string& more) {
    return root("<item " + more + "><t w=\"90\">Jordan Example</t></item>");
}

std::string defaultAttributes() {
    return "<!DOCTYPE recoIndex [<!ATTLIST item a CDATA \"" + std::string(kMillion, 'x') + "\">]>" +
           root(times(kMillion, "<item/>"));
}
std::string numbersBeyondAll() {
    const std::string nines(kMillion, '9');
    return root("<item fldType=\"NAME\" x=\"1e999\" y=\"nan\" w=\"" + nines + "\" orient=\"-" + nines + "\"><t w=\"" +
                nines + "\">Jordan Example</t></item>");
}

// clang-format off
const AnswerFault kFaults[] = {
    // name, the answer, what becomes of it, the name read, MiB
    {"OverlongOfTwo", bytes("\xC0\xAF"), Becomes::Unreadable, nullptr, kSmall},
    {"OverlongOfTwoLast", bytes("\xC1\xBF"), Becomes::Unreadable, nullptr, kSmall},
    {"OverlongOfThree", bytes("\xE0\x9F\xBF"), Becomes::Unreadable, nullptr, kSmall},
    {"OverlongOfFour", bytes("\xF0\x8F\xBF\xBF"), Becomes::Unreadable, nullptr, kSmall},
    {"OverlongNull", bytes("\xC0\x80"), Becomes::Unreadable, nullptr, kSmall},
    {"SurrogateFirst", bytes("\xED\xA0\x80"), Becomes::Unreadable, nullptr, kSmall},
    {"SurrogateLast", bytes("\xED\xBF\xBF"), Becomes::Unreadable, nullptr, kSmall},
    {"SurrogatePair", bytes("\xED\xA0\xBD\xED\xB8\x80"), Becomes::Unreadable, nullptr, kSmall},
    {"BeyondTheLast", bytes("\xF4\x90\x80\x80"), Becomes::Unreadable, nullptr, kSmall},
    {"BeyondByLead", bytes("\xF5\x80\x80\x80"), Becomes::Unreadable, nullptr, kSmall},
    {"FiveBytes", bytes("\xF8\x88\x80\x80\x80"), Becomes::Unreadable, nullptr, kSmall},
    {"SixBytes", bytes("\xFC\x84\x80\x80\x80\x80"), Becomes::Unreadable, nullptr, kSmall},
    {"ByteFE", bytes("\xFE"), Becomes::Unreadable, nullptr, kSmall},
    {"ByteFF", bytes("\xFF"), Becomes::Unreadable, nullptr, kSmall},
    {"LoneContinuationFirst", bytes("\x80"), Becomes::Unreadable, nullptr, kSmall},
    {"LoneContinuationLast", bytes("\xBF"), Becomes::Unreadable, nullptr, kSmall},
    {"ContinuationTooMany", bytes("\xC3\xA4\xA4"), Becomes::Unreadable, nullptr, kSmall},
    {"LeadWithoutRest", bytes("\xC3"), Becomes::Unreadable, nullptr, kSmall},
    {"LeadOfThreeWithOne", bytes("\xE6\xBC"), Becomes::Unreadable, nullptr, kSmall},
    {"LeadOfFourWithTwo", bytes("\xF0\x9F\x98"), Becomes::Unreadable, nullptr, kSmall},
    {"CutInTwo", cut("\xC3"), Becomes::Unreadable, nullptr, kSmall},
    {"CutInThree", cut("\xE6\xBC"), Becomes::Unreadable, nullptr, kSmall},
    {"CutInFour", cut("\xF0\x9F\x98"), Becomes::Unreadable, nullptr, kSmall},
    {"LatinOne", bytes("\xF6"), Becomes::Unreadable, nullptr, kSmall},
    {"UTF16", [] { return std::string("\xFF\xFE<\0r\0", 6); }, Becomes::Unreadable, nullptr, kSmall},
    {"Null", bytes(std::string("\0", 1)), Becomes::Card, nullptr, kSmall},
    {"NoCharacterOfXML", bytes("\x01"), Becomes::Card, nullptr, kSmall},
    {"NoCharacterAtAll", bytes("\xEF\xBF\xBE"), Becomes::Card, nullptr, kSmall},

    {"Empty", [] { return std::string(); }, Becomes::Unreadable, nullptr, kSmall},
    {"Words", [] { return std::string("Internal error"); }, Becomes::Nothing, nullptr, kSmall},
    {"OtherDocument", [] { return std::string("<html><body/></html>"); }, Becomes::Nothing, nullptr, kSmall},
    {"CutInATag", [] { return root(item("NAME", "Jordan Example")).substr(0, 40); }, Becomes::Card, nullptr, kSmall},
    {"MoreBehindTheEnd", [] { return root(item("NAME", "Jordan Example")) + "<x>"; },
     Becomes::Card, "Jordan Example", kSmall},

    {"MillionDeep", [] { return root(times(kMillion, "<a>")); }, Becomes::Card, nullptr, kLarge},
    {"MillionDeepItems", [] { return root(times(kMillion, "<item>")); }, Becomes::Card, nullptr, kLarge},
    {"MillionRootsInside", [] { return times(kMillion, "<recoIndex>"); }, Becomes::Card, nullptr, kLarge},
    {"EntityExpansion", billionLaughs, Becomes::Card, nullptr, kSmall},
    {"EntityOfItself", [] { return declared("<!ENTITY a \"&b;\"><!ENTITY b \"&a;\">", "&a;"); },
     Becomes::Card, nullptr, kSmall},
    {"EntityUsedOften",
     [] { return declared("<!ENTITY a \"" + std::string(kMillion, 'x') + "\">", times(kMillion, "&a;")); },
     Becomes::Card, nullptr, kLarge},
    {"EntityDeclaredOften", [] { return "<!DOCTYPE recoIndex [" + filling("<!ENTITY a \"b\">") + "]>" + root(""); },
     Becomes::Nothing, nullptr, kLarge},
    {"ExternalEntity", [] { return declared("<!ENTITY a SYSTEM \"file:///etc/passwd\">", "Jordan &a;Example"); },
     Becomes::Card, "Jordan Example", kSmall},
    {"ExternalParameterEntity",
     [] { return declared("<!ENTITY % a SYSTEM \"file:///etc/passwd\"> %a;", "Jordan Example"); },
     Becomes::Card, "Jordan Example", kSmall},
    {"ExternalDocumentType",
     [] { return "<!DOCTYPE recoIndex SYSTEM \"file:///etc/passwd\">" + root(item("NAME", "Jordan Example")); },
     Becomes::Card, "Jordan Example", kSmall},

    {"MillionAttributesOfRoot", [] { return "<recoIndex" + attributes(kMillion) + "/>"; },
     Becomes::Card, nullptr, kLarge},
    {"MillionAttributesOfItem",
     [] { return itemWith("fldType=\"NAME\"" + attributes(kMillion)); },
     Becomes::Card, "Jordan Example", kLarge},
    {"AttributeOfMegabytes",
     [] { return itemWith("fldType=\"" + std::string(kLargest, 'x') + "\""); },
     Becomes::Card, nullptr, kLarge},
    {"AttributeTwice",
     [] { return itemWith("fldType=\"NAME\" fldType=\"NAME\""); },
     Becomes::Card, nullptr, kSmall},
    {"DefaultAttributesOfMillions", defaultAttributes, Becomes::Card, nullptr, kLarge},
    {"NumbersBeyondAll", numbersBeyondAll, Becomes::Card, "Jordan Example", kMedium},

    {"MillionItems", [] { return root(times(kMillion, "<item/>")); }, Becomes::Card, nullptr, kLarge},
    {"QuarterMillionPhones", [] { return root(times(kMillion / 4, "<item fldType=\"PHONE\">1<t/></item>")); },
     Becomes::Card, nullptr, kLarge},
    {"NameOfMegabytes", field("NAME", "x"), Becomes::Card, "", kLarge},
    {"NameOfMillionWords", field("NAME", "Jo "), Becomes::Card, "", kLarge},
    {"NameOfMillionDots", field("NAME", "."), Becomes::Card, "", kLarge},
    {"NameOfMillionPieces", field("NAME", "&amp;"), Becomes::Card, "", kLarge},
    {"NameOfMillionMarks", field("NAME", "\xCC\x81"), Becomes::Card, "", kLarge},
    {"EmailOfMegabytes", field("EMAIL", "x"), Becomes::Card, nullptr, kLarge},
    {"EmailOfMillionDots", field("EMAIL", "."), Becomes::Card, nullptr, kLarge},
    {"EmailOfMillionAts", field("EMAIL", "@"), Becomes::Card, nullptr, kLarge},
    {"PhoneOfMegabytes", field("PHONE", "1 "), Becomes::Card, nullptr, kLarge},
    {"AddressOfMegabytes", field("ADDRESS", "x\n"), Becomes::Card, nullptr, kLarge},
    {"CompanyOfMarkup", field("COMPANY", "&lt;"), Becomes::Card, nullptr, kLarge},
    {"CommentOfMegabytes", [] { return root("<!--" + filling("x") + "-->" + item("NAME", "Jordan Example")); },
     Becomes::Card, "Jordan Example", kLarge},
    {"MillionComments", [] { return root(filling("<!---->") + item("NAME", "Jordan Example")); },
     Becomes::Card, "Jordan Example", kLarge},
    {"MillionInstructions", [] { return root(filling("<?a?>") + item("NAME", "Jordan Example")); },
     Becomes::Card, "Jordan Example", kLarge},
    {"MillionSections", [] { return root(item("NAME", filling("<![CDATA[x]]>"))); }, Becomes::Card, "", kLarge},
    {"OpenBrackets", [] { return filling("<"); }, Becomes::Nothing, nullptr, kLarge},
};
// clang-format on

std::string nameOf(const testing::TestParamInfo<AnswerFault>& row) {
    return row.param.name;
}

class AnAnswer : public testing::TestWithParam<AnswerFault> {
  protected:
    static void expectEnd(const QVCardProcessingResponse& response) {
        const AnswerFault& fault = GetParam();
        ASSERT_TRUE(response.errors());
        if (fault.end == Becomes::Unreadable) {
            EXPECT_THAT(scans::codesOf(response.errors()), ElementsAre(3));
            EXPECT_EQ(response.rawResultForFirstCard(), std::nullopt);
        } else {
            EXPECT_THAT(response.errors(), Pointee(IsEmpty()));
            EXPECT_TRUE(response.rawResultForFirstCard());
        }
        expectName(response.contactName());
        EXPECT_TRUE(response.contact());
        ASSERT_TRUE(response.qvmlContent());
        EXPECT_THAT(*response.qvmlContent(), Not(HasSubstr("root:"))) << "a file of this machine";
    }
    /// Null: none; empty: whatever is made of so much.
    static void expectName(const QVString& name) {
        if (GetParam().contactName == nullptr) {
            EXPECT_EQ(name, std::nullopt);
        } else if (*GetParam().contactName != '\0') {
            EXPECT_EQ(name, GetParam().contactName);
        }
    }
};

TEST_P(AnAnswer, EndsThreeCardsAndTheFourthIsRead) {
    const Aftermath before(RecognitionRoad::warmUp);
    {
        testsupport::ScriptedServer server;
        server.forgetBodies();
        server.respond(testsupport::ScriptedServer::answer(200, GetParam().body()));
        for (const auto& response : RecognitionRoad::send(server.url())) {
            ASSERT_TRUE(response);
            expectEnd(*response);
        }
        EXPECT_EQ(server.requests().size(), RecognitionRoad::kPlaces) << "nothing is sent again";
    }
    before.expectAsBefore(GetParam().megabytes);
}

INSTANTIATE_TEST_SUITE_P(Faults, AnAnswer, testing::ValuesIn(kFaults), nameOf);

}  // namespace
}  // namespace faults
