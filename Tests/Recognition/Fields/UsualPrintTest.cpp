#include "Fields/FieldDecision.h"
#include "Recognition/Fields/UsualPrint.h"
#include "Recognition/Lines.h"

namespace qv::recognition {
namespace {

using enum FieldType;
using Row = UsualPrint;

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

TEST_P(UsualPrintTest, Decides) {
    decltype(UsualPrint::fields) fields;
    for (const auto& field : decideFields(printed(GetParam().lines), GetParam().language))
        fields.emplace(field.type, field.text);
    EXPECT_EQ(fields, GetParam().fields);
}

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
        Row{"SloganOfFirmWords", {"#SALTMARSH ENERGY LTD", "#Ideas that travel"}, {{Company, "SALTMARSH ENERGY LTD"}}},
        Row{"LegalFormOnASecondLine",
            {"#Kurz & Söhne GmbH", "#& Co. KG"},
            {{Company, "Kurz & Söhne GmbH & Co. KG"}},
            "de"},
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
