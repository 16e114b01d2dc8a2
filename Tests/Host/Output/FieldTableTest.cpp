#include "Output/FieldTable.h"
#include "QVCardScan/QVBusinessCardField.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using qvhost::fieldTable;
using testing::HasSubstr;

std::shared_ptr<QVBusinessCardField> field(std::int32_t type, QVString name, QVString text, std::int64_t weight) {
    return QVBusinessCardField::initWithType(type, 0, std::move(name), std::move(text), {}, weight, 0);
}

std::shared_ptr<QVBusinessCard> cardWith(std::vector<std::shared_ptr<QVBusinessCardField>> fields) {
    return QVBusinessCard::initWithLanguage(
        std::nullopt, std::make_shared<std::vector<std::shared_ptr<QVBusinessCardField>>>(std::move(fields)), nullptr,
        nullptr);
}

TEST(FieldTable, NamesEveryKindOfField) {
    const char* names[] = {"Name", "Email",   "Phone", "Title",  "Company", "Department",
                           "URL",  "Address", "Fax",   "Mobile", "Twitter", "Skype"};
    for (std::int32_t type = 1; type <= 12; ++type)
        EXPECT_THAT(fieldTable(cardWith({field(type, "x", "y", 1)})), HasSubstr(std::string("\n") + names[type - 1]));
}

TEST(FieldTable, ShowsOtherFieldsByTheirOwnName) {
    EXPECT_THAT(fieldTable(cardWith({field(0, "logo", "y", 1)})), HasSubstr("\n(logo)"));
    EXPECT_THAT(fieldTable(cardWith({field(0, std::nullopt, "y", 1)})), HasSubstr("\n(other)"));
    EXPECT_THAT(fieldTable(cardWith({field(0, std::string(1000, 'x'), "y", 1)})), HasSubstr("\n(other)"));
    EXPECT_THAT(fieldTable(cardWith({field(-5, "a\x1b", "y", 1)})), HasSubstr("\n(a\\x1b)"));
    EXPECT_THAT(fieldTable(cardWith({field(99, "z", "y", 1)})), HasSubstr("\n(z)"));
}

TEST(FieldTable, KeepsItsColumnsWithWideAndLongText) {
    const auto card =
        cardWith({field(1, "name", "山田 太郎", 95), field(8, "address", "1 Main Street\n12345 Town\n", 7),
                  field(5, "company", std::string(50, 'a') + " " + std::string(20, 'b'), 100)});
    EXPECT_EQ(fieldTable(card),
              "Field    Text                                                Confidence\n"
              "Name     山田 太郎                                                   95\n"
              "Company  " +
                  std::string(50, 'a') +
                  "         100\n"
                  "         " +
                  std::string(20, 'b') +
                  "\n"
                  "Address  1 Main Street                                                7\n"
                  "         12345 Town\n");
}

TEST(FieldTable, AnAbsentTextIsAnEmptyCell) {
    EXPECT_EQ(fieldTable(cardWith({field(1, "name", std::nullopt, -3)})),
              "Field  Text  Confidence\n"
              "Name                 -3\n");
}

TEST(FieldTable, StandsInTheOrderInWhichAContactIsRead) {
    std::vector<std::shared_ptr<QVBusinessCardField>> fields;
    for (const int type : {0, 12, 11, 8, 7, 9, 10, 3, 2, 5, 6, 4, 1})
        fields.push_back(field(type, "logo", std::to_string(type), 1));
    fields.push_back(field(3, "phone", "another", 1));
    EXPECT_EQ(fieldTable(cardWith(fields)),
              "Field       Text     Confidence\n"
              "Name        1                 1\n"
              "Title       4                 1\n"
              "Department  6                 1\n"
              "Company     5                 1\n"
              "Email       2                 1\n"
              "Phone       3                 1\n"
              "Phone       another           1\n"
              "Mobile      10                1\n"
              "Fax         9                 1\n"
              "URL         7                 1\n"
              "Address     8                 1\n"
              "Twitter     11                1\n"
              "Skype       12                1\n"
              "(logo)      0                 1\n");
}

TEST(FieldTable, SaysThatThereIsNothing) {
    EXPECT_EQ(fieldTable(nullptr), "No fields were recognised.\n");
    EXPECT_EQ(fieldTable(std::make_shared<QVBusinessCard>()), "No fields were recognised.\n");
    EXPECT_EQ(fieldTable(cardWith({})), "No fields were recognised.\n");
}

}  // namespace
