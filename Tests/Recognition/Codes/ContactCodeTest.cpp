#include "Codes/ContactCode.h"

#include <gtest/gtest.h>

#include <ostream>

namespace qv::recognition {

void PrintTo(const CodeField& field, std::ostream* out) {
    *out << static_cast<int>(field.type) << " '" << field.text << "' " << field.isAnyNumber;
}

namespace {

using enum FieldType;

struct Row {
    const char* name;
    std::string code;
    std::vector<CodeField> fields;
};

class ContactCodeTest : public testing::TestWithParam<Row> {};

TEST_P(ContactCodeTest, Reads) {
    EXPECT_EQ(contactIn(GetParam().code), GetParam().fields);
}

std::string vCard(const std::string& lines) {
    return "BEGIN:VCARD\r\nVERSION:3.0\r\n" + lines + "\r\nEND:VCARD\r\n";
}

INSTANTIATE_TEST_SUITE_P(
    MECard, ContactCodeTest,
    testing::Values(
        Row{"Whole",
            "MECARD:N:Doe,Jane;SOUND:x;ORG:Acme;TITLE:Buyer;TEL:+1 312 555 0142;EMAIL:jane@acme.example;"
            "URL:www.acme.example;ADR:,,12 High Street,London,,SE1 9ZZ,UK;NOTE:no;;",
            {{Name, "Jane Doe"},
             {Company, "Acme"},
             {Title, "Buyer"},
             {Phone, "+1 312 555 0142", true},
             {Email, "jane@acme.example"},
             {URL, "www.acme.example"},
             {Address, "12 High Street, London, SE1 9ZZ, UK"}}},
        Row{"Escaped",
            "MECARD:N:Doe\\, Smith,Jane;ORG:A\\;B\\:C\\\\D;;",
            {{Name, "Jane Doe, Smith"}, {Company, "A;B:C\\D"}}},
        Row{"OneNamePart", "MECARD:N:Jane Doe;;", {{Name, "Jane Doe"}}},
        Row{"FamilyNameFirstInItsScript", "MECARD:N:山田,太郎;;", {{Name, "山田 太郎"}}},
        Row{"TwoNumbers", "mecard:TEL:5550100;TEL:5550101;;", {{Phone, "5550100", true}, {Phone, "5550101", true}}},
        Row{"FreeAddress", "MECARD:ADR:12 High Street London;;", {{Address, "12 High Street London"}}},
        Row{"Cut", "MECARD:N:Doe,Ja", {{Name, "Ja Doe"}}},
        Row{"EndsWithBackslash", "MECARD:N:Doe\\", {{Name, "Doe\\"}}}, Row{"Empty", "MECARD:;;", {}},
        Row{"OnlyStart", "MECARD:", {}}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    VCard, ContactCodeTest,
    testing::Values(
        Row{"Whole",
            vCard("N:Doe;Jane;Q.;Dr.;PhD\r\nFN:Dr. Jane Doe\r\nORG:Acme Ltd;Sales\r\nTITLE:Head of Sales\r\n"
                  "TEL;TYPE=WORK,VOICE:+1 312 555 0142\r\nTEL;TYPE=CELL:+1 312 555 0143\r\n"
                  "TEL;TYPE=WORK,FAX:+1 312 555 0144\r\nEMAIL;TYPE=INTERNET:jane@acme.example\r\n"
                  "URL:https://acme.example\r\nADR;TYPE=WORK:;;12 Oak Street;Glendale;CA;91204;USA"),
            {{Name, "Dr. Jane Doe"},
             {Company, "Acme Ltd"},
             {Department, "Sales"},
             {Title, "Head of Sales"},
             {Phone, "+1 312 555 0142"},
             {Mobile, "+1 312 555 0143"},
             {Fax, "+1 312 555 0144"},
             {Email, "jane@acme.example"},
             {URL, "https://acme.example"},
             {Address, "12 Oak Street, Glendale, CA 91204, USA"}}},
        Row{"NameFromParts", vCard("N:Doe;Jane;Q.;Dr.;PhD"), {{Name, "Dr. Jane Q. Doe, PhD"}}},
        Row{"EmptyFormattedName", vCard("FN:\r\nN:Doe;Jane"), {{Name, "Jane Doe"}}},
        Row{"TwoNames", vCard("FN:Jane Doe\r\nFN:John Doe"), {{Name, "Jane Doe"}}},
        Row{"FamilyNameFirstInItsScript", vCard("N:山田;太郎;;;"), {{Name, "山田 太郎"}}},
        Row{"German",
            vCard("ADR:;;Hauptstraße 7;München;;80331;Deutschland"),
            {{Address, "Hauptstraße 7, 80331 München, Deutschland"}}},
        Row{"British", vCard("ADR:;;12 High Street;London;;SE1 9ZZ;"), {{Address, "12 High Street, London SE1 9ZZ"}}},
        Row{"Version21",
            "BEGIN:VCARD\nVERSION:2.1\nN;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:M=C3=BCller;J=C3=B6rg\n"
            "TEL;CELL;VOICE:0171 3920046\nTEL;FAX:030 23125000\n"
            "ORG;ENCODING=QUOTED-PRINTABLE:Acme =\nTools\nEND:VCARD",
            {{Name, "Jörg Müller"}, {Mobile, "0171 3920046"}, {Fax, "030 23125000"}, {Company, "Acme Tools"}}},
        Row{"Latin1",
            "BEGIN:VCARD\nFN;CHARSET=ISO-8859-1;ENCODING=QUOTED-PRINTABLE:J=F6rg M=FCller\nEND:VCARD",
            {{Name, "Jörg Müller"}}},
        Row{"UnknownCharset",
            "BEGIN:VCARD\nFN;CHARSET=X-NONE;ENCODING=QUOTED-PRINTABLE:J=F6rg\nEND:VCARD",
            {{Name, "Jörg"}}},
        Row{"BrokenQuotedPrintable",
            "BEGIN:VCARD\nFN;ENCODING=QUOTED-PRINTABLE:Jane=4 Doe\nEND:VCARD",
            {{Name, "Jane=4 Doe"}}},
        Row{"Version4",
            "BEGIN:VCARD\nVERSION:4.0\nFN:Jane Doe\nTEL;VALUE=uri;TYPE=\"voice,cell\":tel:+49-171-3920046\n"
            "IMPP:skype:jane.doe\nEMAIL:mailto:jane@acme.example\nEND:VCARD",
            {{Name, "Jane Doe"}, {Mobile, "+49-171-3920046"}, {Skype, "jane.doe"}, {Email, "jane@acme.example"}}},
        Row{"Groups", vCard("item1.TEL;TYPE=CELL:5550100\r\nitem1.X-ABLabel:x"), {{Mobile, "5550100"}}},
        Row{"NumberOfNoKind", vCard("TEL:5550100"), {{Phone, "5550100", true}}},
        Row{"Pager", vCard("TEL;TYPE=PAGER:5550100"), {}},
        Row{"Folded", vCard("FN:Jane\r\n  Doe"), {{Name, "Jane Doe"}}},
        Row{"Escaped", vCard("ORG:Doe\\, Roe\\; Sons"), {{Company, "Doe, Roe; Sons"}}},
        Row{"RoleForTitle", vCard("ROLE:Buyer"), {{Title, "Buyer"}}},
        Row{"TitleBeforeRole", vCard("ROLE:Staff\r\nTITLE:Buyer"), {{Title, "Buyer"}}},
        Row{"Twitter",
            vCard("X-SOCIALPROFILE;TYPE=twitter:https://twitter.com/jane"),
            {{Twitter, "https://twitter.com/jane"}}},
        Row{"OnlyTheFirst", vCard("FN:Jane Doe") + vCard("FN:John Doe\r\nTEL:5550100"), {{Name, "Jane Doe"}}},
        Row{"Picture", vCard("PHOTO;ENCODING=b:AAAA\r\nFN:Jane Doe"), {{Name, "Jane Doe"}}},
        Row{"Cut", "BEGIN:VCARD\nFN:Jane D", {{Name, "Jane D"}}}, Row{"Start", "BEGIN:VCARD", {}}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    None, ContactCodeTest,
    testing::Values(Row{"Empty", "", {}}, Row{"Link", "https://acme.example/jane", {}},
                    Row{"Wifi", "WIFI:S:net;T:WPA;P:secret;;", {}}, Row{"EmailWithoutSign", "MECARD:EMAIL:jane;;", {}},
                    Row{"NumberWithoutDigits", "MECARD:TEL:call me;;", {}},
                    Row{"ControlCharacters", std::string("MECARD:ORG:A\0\x1b[2J\x7f;;", 20), {{Company, "A [2J"}}}),
    [](const auto& row) { return row.param.name; });

TEST(ContactCodeBoundsTest, HoldsBackWhatIsTooMuch) {
    EXPECT_TRUE(contactIn("MECARD:N:" + std::string(301, 'x') + ";;").empty());
    EXPECT_TRUE(contactIn("MECARD:N:Jane;NOTE:" + std::string(9000, 'x') + ";;").empty());
    std::string many = "BEGIN:VCARD\n";
    for (int i = 0; i < 500; ++i)
        many += "TEL:" + std::to_string(5550000 + i) + '\n';
    EXPECT_EQ(contactIn(many).size(), 6U);
    EXPECT_TRUE(contactIn("BEGIN:VCARD" + std::string(8000, ';')).empty());
    EXPECT_TRUE(contactIn("BEGIN:VCARD\n" + std::string(8000, '\n')).empty());
}

TEST(ContactCodeBoundsTest, SurvivesBytesThatAreNoUTF8) {
    const auto fields = contactIn("MECARD:N:J\xF6rg\xFF;;");
    ASSERT_EQ(fields.size(), 1U);
    EXPECT_EQ(fields[0].text, "J rg");
}

}  // namespace
}  // namespace qv::recognition
