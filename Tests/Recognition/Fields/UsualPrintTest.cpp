#include "Fields/FieldDecision.h"
#include "Recognition/Lines.h"

#include <gtest/gtest.h>

#include <map>
#include <ostream>

namespace qv::recognition {
namespace {

using enum FieldType;
using Fields = std::multimap<FieldType, std::string>;

/// What cards print: lines one below the other, each a paragraph apart where a line is empty; a line that begins with
/// "#" is set larger.
struct Row {
    const char* name;
    std::vector<std::string> lines;
    Fields fields;
    const char* language = "en";
};

std::vector<TextLine> printed(const std::vector<std::string>& texts) {
    std::vector<TextLine> lines;
    float y = 100;
    for (const auto& text : texts) {
        const bool large = startsWith(text, "#");
        const float size = large ? 45.F : 28.F;
        if (!text.empty()) lines.push_back(lineAt(large ? text.substr(1) : text, 100, y, size));
        y += text.empty() ? 60 : size * 1.4F;
    }
    return lines;
}

class UsualPrintTest : public testing::TestWithParam<Row> {};

TEST_P(UsualPrintTest, Decides) {
    Fields fields;
    for (const auto& field : decideFields(printed(GetParam().lines), GetParam().language))
        fields.emplace(field.type, field.text);
    EXPECT_EQ(fields, GetParam().fields);
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, UsualPrintTest,
    testing::Values(Row{"BracketedTrunk", {"Tel. +49 (0)30 / 231 25-123"}, {{Phone, "+49 (0)30 / 231 25-123"}}, "de"},
                    Row{"Dotted", {"T +33.1.99.00.12.34"}, {{Phone, "+33.1.99.00.12.34"}}, "fr"},
                    Row{"Extension", {"Phone: (312) 555-0142 x123"}, {{Phone, "(312) 555-0142 x123"}}},
                    Row{"ExtensionWord", {"Office 312.555.0142 ext 12"}, {{Phone, "312.555.0142 ext 12"}}},
                    Row{"ExtensionComma", {"Tel: 312-555-0142, ext. 12"}, {{Phone, "312-555-0142, ext. 12"}}},
                    Row{"DirectAndMain",
                        {"Direct: 312-555-0142", "Main: 312-555-0100"},
                        {{Phone, "312-555-0142"}, {Phone, "312-555-0100"}}},
                    Row{"LettersInOneLine",
                        {"T +44 20 7946 0318  M +44 7700 900462  F +44 20 7946 0319"},
                        {{Phone, "+44 20 7946 0318"}, {Mobile, "+44 7700 900462"}, {Fax, "+44 20 7946 0319"}}},
                    Row{"LetterWithDot",
                        {"m. 0171 3920046", "f. 030 23125001"},
                        {{Mobile, "0171 3920046"}, {Fax, "030 23125001"}},
                        "de"},
                    Row{"IconRead", {"© +49 30 23125000"}, {{Phone, "+49 30 23125000"}}, "de"},
                    Row{"IconReadAsDigit", {"0 +49 171 3920046"}, {{Mobile, "+49 171 3920046"}}, "de"},
                    Row{"IconLetterRead", {"& +49 171 3920046"}, {{Mobile, "+49 171 3920046"}}, "de"},
                    Row{"TelAndFax", {"Tel./Fax: 030 23125000"}, {{Phone, "030 23125000"}}, "de"},
                    Row{"Dashes", {"Tel: +1–312–555–0142"}, {{Phone, "+1–312–555–0142"}}},
                    Row{"TollFree", {"1-800-555-0199"}, {{Phone, "1-800-555-0199"}}},
                    Row{"Italian",
                        {"Cell. 333 1234567", "Tel. 02 12345678"},
                        {{Mobile, "333 1234567"}, {Phone, "02 12345678"}},
                        "it"},
                    Row{"Portuguese",
                        {"Telemóvel: 912 345 678", "Telefone: 213 456 789"},
                        {{Mobile, "912 345 678"}, {Phone, "213 456 789"}},
                        "pt"},
                    Row{"Dutch",
                        {"Mobiel: 06-12345678", "Telefoon: 020-1234567"},
                        {{Mobile, "06-12345678"}, {Phone, "020-1234567"}},
                        "nl"},
                    Row{"Polish",
                        {"tel. kom. 601 234 567", "tel. 22 123 45 67"},
                        {{Mobile, "601 234 567"}, {Phone, "22 123 45 67"}},
                        "pl"},
                    Row{"Czech", {"Mobil: +420 601 234 567"}, {{Mobile, "+420 601 234 567"}}, "cs"},
                    Row{"Turkish",
                        {"Cep: 0532 123 45 67", "Faks: 0212 123 45 67"},
                        {{Mobile, "0532 123 45 67"}, {Fax, "0212 123 45 67"}},
                        "tr"},
                    Row{"WhatsApp", {"WhatsApp +34 600 123 456"}, {{Mobile, "+34 600 123 456"}}, "es"}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    NoNumbers, UsualPrintTest,
    testing::Values(Row{"VATGerman", {"USt-IdNr.: DE 123 456 789"}, {}, "de"},
                    Row{"VATBritish", {"VAT No. GB 123 4567 89"}, {}},
                    Row{"VATItalian", {"P.IVA 01234567890"}, {}, "it"},
                    Row{"SIRET", {"SIRET 123 456 789 00012"}, {}, "fr"}, Row{"CIF", {"CIF: B12345678"}, {}, "es"},
                    Row{"NIP", {"NIP: 123-456-78-90"}, {}, "pl"}, Row{"KvK", {"KvK 12345678"}, {}, "nl"},
                    Row{"ABN", {"ABN 12 345 678 901"}, {}}, Row{"IBAN", {"IBAN DE12 3456 7890 1234 5678 90"}, {}, "de"},
                    Row{"Bank", {"Sparkasse Köln  BLZ 370 501 98  Konto 1234567"}, {}, "de"},
                    Row{"Tax", {"Steuernummer 12/345/67890"}, {}, "de"}, Row{"Hours", {"Mo–Fr 09:00–18:00"}, {}, "de"},
                    Row{"HoursEnglish", {"Mon-Fri 9:00 - 17:30"}, {}}, Row{"Founded", {"Since 1974"}, {}},
                    Row{"ISO", {"ISO 9001:2015"}, {}}, Row{"License", {"DRE #01234567"}, {}}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Internet, UsualPrintTest,
    testing::Values(
        Row{"IconBeforeLink", {"& www.acme.com"}, {{URL, "www.acme.com"}}},
        Row{"IconBeforeEmail", {"= jane@acme.com"}, {{Email, "jane@acme.com"}}},
        Row{"EmailAndLink", {"jane@acme.com | www.acme.com"}, {{Email, "jane@acme.com"}, {URL, "www.acme.com"}}},
        Row{"EmailOverSpaces", {"jane.doe @ acme.com"}, {{Email, "jane.doe@acme.com"}}},
        Row{"EmailCutAtDot", {"jane. doe@acme.com"}, {{Email, "jane.doe@acme.com"}}},
        Row{"EmailCutBeforeEnding", {"jane@acme .com"}, {{Email, "jane@acme.com"}}},
        Row{"NewEnding", {"www.acme.solutions"}, {{URL, "www.acme.solutions"}}},
        Row{"BarePath", {"acme.com/jane"}, {{URL, "acme.com/jane"}}},
        Row{"TwoDots", {"www..acme.com"}, {{URL, "www.acme.com"}}},
        Row{"FourW", {"wwww.acme.com"}, {{URL, "www.acme.com"}}},
        Row{"SchemeCut", {"https: //www.acme.com"}, {{URL, "https://www.acme.com"}}},
        Row{"SchemeOneSlash", {"http:/www.acme.com"}, {{URL, "http://www.acme.com"}}},
        Row{"LinkedIn", {"linkedin.com/in/janedoe"}, {{URL, "linkedin.com/in/janedoe"}}},
        Row{"LinkedInLabel", {"LinkedIn: linkedin.com/in/janedoe"}, {{URL, "linkedin.com/in/janedoe"}}},
        Row{"Twitter", {"Twitter @janedoe"}, {{Twitter, "@janedoe"}}},
        Row{"TwitterLink", {"twitter.com/janedoe"}, {{Twitter, "twitter.com/janedoe"}}},
        Row{"Skype", {"Skype: live:jane.doe_1"}, {{Skype, "live:jane.doe_1"}}},
        Row{"FrenchMail", {"Courriel : jane@acme.fr"}, {{Email, "jane@acme.fr"}}, "fr"}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Addresses, UsualPrintTest,
    testing::Values(
        Row{"British",
            {"Unit 4, Riverside Park", "12 Mill Lane", "Leeds LS2 7ZZ", "United Kingdom"},
            {{Address, "Unit 4, Riverside Park, 12 Mill Lane, Leeds LS2 7ZZ, United Kingdom"}}},
        Row{"Dutch",
            {"Prinsengracht 263-265", "1016 GV Amsterdam"},
            {{Address, "Prinsengracht 263-265, 1016 GV Amsterdam"}},
            "nl"},
        Row{"Polish",
            {"ul. Marszałkowska 12/34", "00-590 Warszawa"},
            {{Address, "ul. Marszałkowska 12/34, 00-590 Warszawa"}},
            "pl"},
        Row{"Portuguese",
            {"Rua Augusta, 27 - 2.º Esq.", "1100-048 Lisboa"},
            {{Address, "Rua Augusta, 27 - 2.º Esq., 1100-048 Lisboa"}},
            "pt"},
        Row{"Italian", {"Via Roma, 12", "20121 Milano (MI)"}, {{Address, "Via Roma, 12, 20121 Milano (MI)"}}, "it"},
        Row{"Spanish", {"C/ Mayor, 12, 3º B", "28013 Madrid"}, {{Address, "C/ Mayor, 12, 3º B, 28013 Madrid"}}, "es"},
        Row{"French",
            {"12, avenue de la République", "BP 123", "75011 Paris Cedex 11"},
            {{Address, "12, avenue de la République, BP 123, 75011 Paris Cedex 11"}},
            "fr"},
        Row{"Swiss", {"Bahnhofstrasse 12", "CH-8001 Zürich"}, {{Address, "Bahnhofstrasse 12, CH-8001 Zürich"}}, "de"},
        Row{"Austrian",
            {"Mariahilfer Straße 12/3", "A-1060 Wien", "Österreich"},
            {{Address, "Mariahilfer Straße 12/3, A-1060 Wien, Österreich"}},
            "de"},
        Row{"Canadian",
            {"123 King Street West, Suite 400", "Toronto, ON M5H 1A1"},
            {{Address, "123 King Street West, Suite 400, Toronto, ON M5H 1A1"}}},
        Row{"Japanese",
            {"1-2-3 Marunouchi, Chiyoda-ku", "Tokyo 100-0005, Japan"},
            {{Address, "1-2-3 Marunouchi, Chiyoda-ku, Tokyo 100-0005, Japan"}}},
        Row{"Swedish", {"Storgatan 12", "114 55 Stockholm"}, {{Address, "Storgatan 12, 114 55 Stockholm"}}, "en"},
        Row{"Turkish",
            {"Atatürk Cad. No: 12 Kat: 3", "34000 Beyoğlu / İstanbul"},
            {{Address, "Atatürk Cad. No: 12 Kat: 3, 34000 Beyoğlu / İstanbul"}},
            "tr"},
        Row{"Czech", {"Národní 12", "110 00 Praha 1"}, {{Address, "Národní 12, 110 00 Praha 1"}}, "cs"},
        Row{"Labelled",
            {"Address: 12 Oak Street, Glendale, CA 91204"},
            {{Address, "12 Oak Street, Glendale, CA 91204"}}},
        Row{"Indian",
            {"Plot No. 12, MG Road", "Bengaluru - 560 001, India"},
            {{Address, "Plot No. 12, MG Road, Bengaluru - 560 001, India"}}},
        Row{"Dubai", {"P.O. Box 12345, Dubai, UAE"}, {{Address, "P.O. Box 12345, Dubai, UAE"}}}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    People, UsualPrintTest,
    testing::Values(
        Row{"Degrees",
            {"#Jane Doe, MBA, PhD", "Chief Financial Officer"},
            {{Name, "Jane Doe, MBA, PhD"}, {Title, "Chief Financial Officer"}}},
        Row{"Honorific",
            {"#Prof. Dr. Jane Doe", "Lehrstuhlinhaberin"},
            {{Name, "Prof. Dr. Jane Doe"}, {Title, "Lehrstuhlinhaberin"}},
            "de"},
        Row{"Diploma",
            {"#Dipl.-Ing. Hans Weber", "Geschäftsführender Gesellschafter"},
            {{Name, "Dipl.-Ing. Hans Weber"}, {Title, "Geschäftsführender Gesellschafter"}},
            "de"},
        Row{"CapitalFamilyName",
            {"#Jean DUPONT", "Ingénieur commercial"},
            {{Name, "Jean DUPONT"}, {Title, "Ingénieur commercial"}},
            "fr"},
        Row{"UnknownName",
            {"#Xq Ylvantharou", "Regional Sales Manager"},
            {{Name, "Xq Ylvantharou"}, {Title, "Regional Sales Manager"}}},
        Row{"Lowercase", {"#jane doe", "photographer"}, {{Name, "jane doe"}, {Title, "photographer"}}},
        Row{"TwoTitles",
            {"#Jane Doe", "Founder & CEO", "Head of Product"},
            {{Name, "Jane Doe"}, {Title, "Founder & CEO"}, {Title, "Head of Product"}}},
        Row{"Compound",
            {"#Petra Kurz", "Vertriebsbeauftragte Innendienst"},
            {{Name, "Petra Kurz"}, {Title, "Vertriebsbeauftragte Innendienst"}},
            "de"},
        Row{"Italian",
            {"#Dott.ssa Giulia Bianchi", "Responsabile Commerciale"},
            {{Name, "Dott.ssa Giulia Bianchi"}, {Title, "Responsabile Commerciale"}},
            "it"},
        Row{"Polish",
            {"#Jan Kowalski", "Kierownik Sprzedaży"},
            {{Name, "Jan Kowalski"}, {Title, "Kierownik Sprzedaży"}},
            "pl"},
        Row{"Turkish", {"#Ayşe Yılmaz", "Satış Müdürü"}, {{Name, "Ayşe Yılmaz"}, {Title, "Satış Müdürü"}}, "tr"},
        Row{"Dutch",
            {"#drs. Pieter de Vries", "Financieel Directeur"},
            {{Name, "drs. Pieter de Vries"}, {Title, "Financieel Directeur"}},
            "nl"},
        Row{"Czech",
            {"#Ing. Petr Novák", "Obchodní ředitel"},
            {{Name, "Ing. Petr Novák"}, {Title, "Obchodní ředitel"}},
            "cs"},
        Row{"NobleName",
            {"#Friedrich von der Heide", "Rechtsanwalt"},
            {{Name, "Friedrich von der Heide"}, {Title, "Rechtsanwalt"}},
            "de"},
        Row{"Nickname", {"#Robert \"Bob\" Smith", "Owner"}, {{Name, "Robert \"Bob\" Smith"}, {Title, "Owner"}}},
        Row{"TitleAbove", {"Account Executive", "#Jane Doe"}, {{Name, "Jane Doe"}, {Title, "Account Executive"}}}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Firms, UsualPrintTest,
    testing::Values(
        Row{"CapitalsByHost",
            {"#NORTHWIND", "", "jane@northwind.com"},
            {{Company, "NORTHWIND"}, {Email, "jane@northwind.com"}}},
        Row{"Slogan",
            {"#NORTHWIND", "Making the world a better place", "", "www.northwind.com"},
            {{Company, "NORTHWIND"}, {URL, "www.northwind.com"}}},
        Row{"German",
            {"#Kurz & Söhne Bedachungen GmbH & Co. KG"},
            {{Company, "Kurz & Söhne Bedachungen GmbH & Co. KG"}},
            "de"},
        Row{"Polish", {"#Kowalski i Syn Sp. z o.o."}, {{Company, "Kowalski i Syn Sp. z o.o."}}, "pl"},
        Row{"Czech", {"#Stavby Novák, s.r.o."}, {{Company, "Stavby Novák, s.r.o."}}, "cs"},
        Row{"Turkish",
            {"#Yılmaz İnşaat San. ve Tic. Ltd. Şti."},
            {{Company, "Yılmaz İnşaat San. ve Tic. Ltd. Şti."}},
            "tr"},
        Row{"Italian", {"#Officine Bianchi S.p.A."}, {{Company, "Officine Bianchi S.p.A."}}, "it"},
        Row{"University",
            {"#Technische Universität Dresden", "Fakultät Informatik"},
            {{Company, "Technische Universität Dresden"}, {Department, "Fakultät Informatik"}},
            "de"},
        Row{"Department",
            {"#Jane Doe", "Sales Manager", "Marketing Department"},
            {{Name, "Jane Doe"}, {Title, "Sales Manager"}, {Department, "Marketing Department"}}},
        Row{"LastWord",
            {"Tarn & Vale Instruments Partners", "", "#Jane Doe", "Sales Manager"},
            {{Company, "Tarn & Vale Instruments Partners"}, {Name, "Jane Doe"}, {Title, "Sales Manager"}}},
        Row{"TwoFirmWords",
            {"Blue Heron Studio Group", "", "#Jane Doe"},
            {{Company, "Blue Heron Studio Group"}, {Name, "Jane Doe"}}},
        Row{"AndCompany",
            {"Tarn & Vale Pots & Co.", "", "#Jane Doe"},
            {{Company, "Tarn & Vale Pots & Co."}, {Name, "Jane Doe"}}},
        Row{"Fils",
            {"PERICOURT & FILS", "", "#Jean Dupont"},
            {{Company, "PERICOURT & FILS"}, {Name, "Jean Dupont"}},
            "fr"},
        Row{"Zonen",
            {"Grachtenhuis & Zonen", "", "#Pieter de Vries"},
            {{Company, "Grachtenhuis & Zonen"}, {Name, "Pieter de Vries"}},
            "nl"},
        Row{"Hijos", {"Saldaña e Hijos", "", "#Ana Ruiz"}, {{Company, "Saldaña e Hijos"}, {Name, "Ana Ruiz"}}, "es"},
        Row{"HeadingOnly",
            {"Quillmark Pots", "", "#Jane Doe", "Sales Manager", "", "+1 312 555 0142"},
            {{Company, "Quillmark Pots"}, {Name, "Jane Doe"}, {Title, "Sales Manager"}, {Phone, "+1 312 555 0142"}}},
        Row{"NoHeadingOfSmallWords",
            {"we care about pots", "", "#Jane Doe", "Sales Manager"},
            {{Name, "Jane Doe"}, {Title, "Sales Manager"}}},
        Row{"LawFirm", {"#Doe, Roe & Partners LLP"}, {{Company, "Doe, Roe & Partners LLP"}}}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Departments, UsualPrintTest,
    testing::Values(
        Row{"English",
            {"#Jane Doe", "", "International Sales"},
            {{Name, "Jane Doe"}, {Department, "International Sales"}},
            "en"},
        Row{"EnglishSupport",
            {"#Jane Doe", "", "Technical Support"},
            {{Name, "Jane Doe"}, {Department, "Technical Support"}},
            "en"},
        Row{"DutchService",
            {"#Jane Doe", "", "Klantenservice"},
            {{Name, "Jane Doe"}, {Department, "Klantenservice"}},
            "nl"},
        Row{"SwedishService", {"#Jane Doe", "", "Kundtjänst"}, {{Name, "Jane Doe"}, {Department, "Kundtjänst"}}, "sv"},
        Row{"TurkishPurchasing",
            {"#Jane Doe", "", "Satın Alma"},
            {{Name, "Jane Doe"}, {Department, "Satın Alma"}},
            "tr"},
        Row{"TurkishService",
            {"#Jane Doe", "", "Müşteri Hizmetleri"},
            {{Name, "Jane Doe"}, {Department, "Müşteri Hizmetleri"}},
            "tr"},
        Row{"TurkishExport",
            {"#Jane Doe", "", "İhracat Departmanı"},
            {{Name, "Jane Doe"}, {Department, "İhracat Departmanı"}},
            "tr"},
        Row{"PortugueseSupport",
            {"#Jane Doe", "", "Apoio ao Cliente"},
            {{Name, "Jane Doe"}, {Department, "Apoio ao Cliente"}},
            "pt"},
        Row{"GermanExport",
            {"#Jane Doe", "", "Versand & Export"},
            {{Name, "Jane Doe"}, {Department, "Versand & Export"}},
            "de"},
        Row{"FrenchService",
            {"#Jane Doe", "", "Service après-vente"},
            {{Name, "Jane Doe"}, {Department, "Service après-vente"}},
            "fr"},
        Row{"SpanishQuality",
            {"#Jane Doe", "", "Investigación y Desarrollo"},
            {{Name, "Jane Doe"}, {Department, "Investigación y Desarrollo"}},
            "es"},
        Row{"ItalianOffice",
            {"#Jane Doe", "", "Ufficio Acquisti"},
            {{Name, "Jane Doe"}, {Department, "Ufficio Acquisti"}},
            "it"},
        Row{"PolishService",
            {"#Jane Doe", "", "Dział Obsługi Klienta"},
            {{Name, "Jane Doe"}, {Department, "Dział Obsługi Klienta"}},
            "pl"},
        Row{"PolishHR", {"#Jane Doe", "", "Kadry"}, {{Name, "Jane Doe"}, {Department, "Kadry"}}, "pl"},
        Row{"CzechService",
            {"#Jane Doe", "", "Zákaznický servis"},
            {{Name, "Jane Doe"}, {Department, "Zákaznický servis"}},
            "cs"},
        Row{"CzechHR", {"#Jane Doe", "", "Lidské zdroje"}, {{Name, "Jane Doe"}, {Department, "Lidské zdroje"}}, "cs"}),
    [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace qv::recognition
