#include "Fields/Phone.h"
#include "Recognition/Lines.h"

#include <gtest/gtest.h>

#include <ostream>

namespace qv::recognition {
namespace {

using Number = std::pair<FieldType, std::string>;

std::vector<Number> numbers(const std::string& line, const PhoneContext& context = {"US", {}}) {
    std::vector<Number> found;
    for (const auto& claim : findPhones(lineOf(line), context))
        found.emplace_back(claim.type, claim.text);
    return found;
}

struct Row {
    const char* name;
    const char* line;
    std::vector<Number> numbers;
};

class PhoneTest : public testing::TestWithParam<Row> {};

TEST_P(PhoneTest, Finds) {
    EXPECT_EQ(numbers(GetParam().line), GetParam().numbers);
}

constexpr auto P = FieldType::Phone;
constexpr auto M = FieldType::Mobile;
constexpr auto F = FieldType::Fax;

INSTANTIATE_TEST_SUITE_P(
    Lines, PhoneTest,
    testing::Values(
        Row{"Unlabelled", "312-555-0142", {{P, "312-555-0142"}}}, Row{"Short", "123 123 123", {{P, "123 123 123"}}},
        Row{"Bracketed", "Tel. (818) 547-4220", {{P, "(818) 547-4220"}}},
        Row{"International", "+1.510.555.1234", {{P, "+1.510.555.1234"}}},
        Row{"Letters",
            "T: 617-552-0123 F: 617-552-0124 C: 617-552-0125",
            {{P, "617-552-0123"}, {F, "617-552-0124"}, {M, "617-552-0125"}}},
        Row{"GluedLabel", "T:617-552-0123", {{P, "617-552-0123"}}},
        Row{"LabelAfter", "312-555-0142 (mobile)", {{M, "312-555-0142"}}},
        Row{"German", "Mobil 0171 3920046", {{M, "0171 3920046"}}},
        Row{"GermanFax", "Telefax: 0221/4710239", {{F, "0221/4710239"}}},
        Row{"French", "Portable : 06 39 98 16 13", {{M, "06 39 98 16 13"}}},
        Row{"Spanish", "Móvil: 600 123 456", {{M, "600 123 456"}}},
        Row{"TwoWords", "Toll Free 800-555-0199", {{P, "800-555-0199"}}},
        Row{"Extension", "312-555-0142 ext. 12", {{P, "312-555-0142 ext. 12"}}},
        Row{"MisreadDot", "+1.510,555.1236", {{P, "+1.510.555.1236"}}},
        Row{"StraySpace", "+81 -3-1234-5678", {{P, "+81-3-1234-5678"}}},
        Row{"TwoNumbers", "+1 312 555 0142 +1 312 555 0143", {{P, "+1 312 555 0142"}, {P, "+1 312 555 0143"}}},
        Row{"MobileByPlan", "+49 171 3920046", {{M, "+49 171 3920046"}}}, Row{"NoDate", "24.12.2024", {}},
        Row{"NoYears", "1990-2020", {}}, Row{"NoPostcode", "02467-0000", {}},
        Row{"NoStatePostcode", "Seattle, WA 98109", {}}, Row{"NoHouseNumber", "1102/108 Albert Street", {}},
        Row{"NoJapanesePostcode", "Shibuya-ku, Tokyo 150-0002", {}}, Row{"NoTaxNumber", "USt-IdNr. DE 123456789", {}},
        Row{"NoRegister", "HRB 123456", {}}, Row{"NoLicence", "License 01234567", {}},
        Row{"TooLong", "12345678901234567890", {}}, Row{"Empty", "", {}}),
    [](const auto& row) { return row.param.name; });

TEST(PhoneContextTest, TakesALabelFromBeside) {
    EXPECT_EQ(numbers("312-555-0142", {"US", NumberKind::Fax}), (std::vector<Number>{{F, "312-555-0142"}}));
    EXPECT_TRUE(numbers("312-555-0142", {"US", NumberKind::Other}).empty());
}

TEST(PhoneContextTest, TakesTheRegionIntoAccount) {
    EXPECT_EQ(numbers("07400 123456", {"GB", {}}), (std::vector<Number>{{M, "07400 123456"}}));
}

TEST(PhoneLabelTest, KnowsLabels) {
    EXPECT_EQ(numberLabel("Tel.:", false), NumberKind::Phone);
    EXPECT_EQ(numberLabel("Télécopie", false), NumberKind::Fax);
    EXPECT_EQ(numberLabel("手机", false), NumberKind::Mobile);
    EXPECT_EQ(numberLabel("VAT", false), NumberKind::Other);
    EXPECT_EQ(numberLabel("m", true), NumberKind::Mobile);
    EXPECT_EQ(numberLabel("m", false), std::nullopt);
    EXPECT_EQ(numberLabel("Jane", true), std::nullopt);
    EXPECT_EQ(numberLabel("", true), std::nullopt);
}

TEST(PhoneCountryTest, ReadsTheCountryCode) {
    EXPECT_EQ(countryOfNumber("Tel +49 221 4710238"), "DE");
    EXPECT_EQ(countryOfNumber("0221 4710238"), "");
}

}  // namespace
}  // namespace qv::recognition
