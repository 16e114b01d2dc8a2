#include "QVSocialSearch/QVEmail.h"
#include "QVSocialSearch/QVPhoneNumber.h"

#include <gtest/gtest.h>

namespace {

TEST(QVPhoneNumber, KeepsBothTextsAsTheyAre) {
    const auto phone = QVPhoneNumber::phoneNumberWithNumber(" 555-0100 ", "Mobile");
    ASSERT_TRUE(phone);
    EXPECT_EQ(phone->number(), " 555-0100 ");
    EXPECT_EQ(phone->type(), "Mobile");
    EXPECT_EQ(QVPhoneNumber::phoneNumberWithNumber("1", std::nullopt)->type(), std::nullopt);
}

TEST(QVPhoneNumber, RefusesOnlyWhatSaysNothing) {
    EXPECT_EQ(QVPhoneNumber::phoneNumberWithNumber(std::nullopt, "Mobile"), nullptr);
    EXPECT_EQ(QVPhoneNumber::phoneNumberWithNumber("", "Mobile"), nullptr);
    EXPECT_EQ(QVPhoneNumber::phoneNumberWithNumber(" \n", "Mobile"), nullptr);
    EXPECT_TRUE(QVPhoneNumber::phoneNumberWithNumber("O2O ...", "Mobile"));
}

TEST(QVPhoneNumber, IsEqualByBothTexts) {
    const auto phone = QVPhoneNumber::phoneNumberWithNumber("555-0100", "Work");
    EXPECT_TRUE(phone->isEqual(QVPhoneNumber::phoneNumberWithNumber("555-0100", "Work")));
    EXPECT_EQ(phone->hash(), QVPhoneNumber::phoneNumberWithNumber("555-0100", "Work")->hash());
    EXPECT_FALSE(phone->isEqual(QVPhoneNumber::phoneNumberWithNumber("5550100", "Work")));
    EXPECT_FALSE(phone->isEqual(QVPhoneNumber::phoneNumberWithNumber("555-0100", "Home")));
    EXPECT_FALSE(phone->isEqual(QVEmail::emailWithLabel("Work", "555-0100")));
}

}  // namespace
