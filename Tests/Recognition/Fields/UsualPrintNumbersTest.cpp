#include "Recognition/Fields/UsualPrint.h"

namespace qv::recognition {
namespace {

using enum FieldType;
using Row = UsualPrint;

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
                    Row{"MisreadColon", {"Cell. +33 6 39 98 84:67"}, {{Mobile, "+33 6 39 98 84 67"}}, "it"},
                    Row{"OldStyleZeros", {"T +31 (0)30 ooo oo27"}, {{Phone, "+31 (0)30 000 0027"}}, "nl"},
                    Row{"PolishShort", {"kom. +44 7700 900886"}, {{Mobile, "+44 7700 900886"}}, "pl"},
                    Row{"RomeBesideAFrenchMobile",
                        {"06 6982 0593", "06 0000 0593", "+33 6 39 98 84 67"},
                        {{Phone, "06 6982 0593"}, {Phone, "06 0000 0593"}, {Mobile, "+33 6 39 98 84 67"}},
                        "it"},
                    Row{"FrenchFixed", {"+33 2 61 91 76 45"}, {{Phone, "+33 2 61 91 76 45"}}, "fr"},
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

}  // namespace
}  // namespace qv::recognition
