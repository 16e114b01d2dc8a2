#include "Fields/Address.h"
#include "Fields/Postcode.h"
#include "Recognition/Lines.h"

#include <gtest/gtest.h>

namespace qv::recognition {
namespace {

TEST(AddressTest, JoinsTheLinesOfABlock) {
    const std::vector<TextLine> lines = {lineAt("Jane Doe", 100, 100), lineAt("4718 San Fernando Rd.", 100, 300),
                                         lineAt("Glendale, CA 91204", 100, 345), lineAt("USA", 100, 390),
                                         lineAt("Acme Tools Inc.", 700, 300)};
    const auto blocks = findAddresses(lines);
    ASSERT_EQ(blocks.size(), 1U);
    EXPECT_EQ(blocks[0].lines, (std::vector<std::size_t>{1, 2, 3}));
    EXPECT_GT(blocks[0].likelihood, 0.8F);
}

TEST(AddressTest, FindsTwoBlocks) {
    const auto blocks = findAddresses({lineAt("12 High Street", 100, 100), lineAt("London SE1 9ZZ", 100, 145),
                                       lineAt("Hauptstraße 7", 700, 100), lineAt("80331 München", 700, 145)});
    EXPECT_EQ(blocks.size(), 2U);
}

TEST(AddressTest, TakesALineAfterAComma) {
    const auto blocks = findAddresses({lineAt("123 Anywhere St., Any City,", 100, 100), lineAt("ST 12345", 100, 145)});
    ASSERT_EQ(blocks.size(), 1U);
    EXPECT_EQ(blocks[0].lines.size(), 2U);
}

TEST(AddressTest, TakesOneLineAlone) {
    for (const char* line : {"GPO Box 2471, Adelaide, South Australia 5001", "123 main street, anytown, usa. 33609",
                             "Mühlengasse 17, 50667 Köln", "26, rue des Tonneliers, 44000 Nantes",
                             "2-3-4 Shibuya, Shibuya-ku, Tokyo 150-0002, Japan", "Keizersgracht 12, 1015 CJ Amsterdam",
                             "ul. Długa 5, 00-238 Warszawa", "Postfach 1204, 80331 München"}) {
        EXPECT_EQ(findAddresses({lineOf(line)}).size(), 1U) << line;
    }
}

TEST(AddressTest, TakesNothingElse) {
    for (const char* line : {"Jane Doe", "Sales Manager", "University of South Australia", "South Australia",
                             "Acme Tools Ltd", "Streetwear Company", "Since 1990", ""}) {
        EXPECT_TRUE(findAddresses({lineOf(line)}).empty()) << line;
    }
}

TEST(AddressTest, JoinsWithCommas) {
    EXPECT_EQ(joinedAddress({"12 High Street,", "London", "SE1 9ZZ"}), "12 High Street, London, SE1 9ZZ");
    EXPECT_EQ(joinedAddress({"London"}), "London");
    EXPECT_EQ(joinedAddress({}), "");
}

struct Row {
    const char* text;
    const char* country;
};

TEST(PostcodeTest, TellsCountriesWhereTheShapeDoes) {
    for (const auto& [text, country] :
         {Row{"Glendale, CA 91204", "US"}, Row{"London SE1 9ZZ", "GB"}, Row{"Toronto K1A 0B1", "CA"},
          Row{"Brisbane QLD 4000", "AU"}, Row{"1015 CJ Amsterdam", "NL"}, Row{"00-238 Warszawa", "PL"},
          Row{"1000-123 Lisboa", "PT"}, Row{"80331 München", ""}, Row{"Jane Doe", ""}}) {
        EXPECT_EQ(postcodeCountry(splitAtSpaces(text)), country) << text;
    }
}

}  // namespace
}  // namespace qv::recognition
