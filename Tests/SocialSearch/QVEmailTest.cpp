#include "QVSocialSearch/QVEmail.h"
#include "QVSocialSearch/QVPhoneNumber.h"

#include <gtest/gtest.h>

namespace {

TEST(QVEmail, KeepsBothTextsAsTheyAre) {
    const auto email = QVEmail::emailWithLabel(" Work ", " Jo@Example.com ");
    ASSERT_TRUE(email);
    EXPECT_EQ(email->label(), " Work ");
    EXPECT_EQ(email->address(), " Jo@Example.com ");
    EXPECT_EQ(QVEmail::emailWithLabel(std::nullopt, "a")->label(), std::nullopt);
    EXPECT_EQ(QVEmail::emailWithLabel("", "a")->label(), "");
}

TEST(QVEmail, RefusesOnlyWhatSaysNothing) {
    EXPECT_EQ(QVEmail::emailWithLabel("Work", std::nullopt), nullptr);
    EXPECT_EQ(QVEmail::emailWithLabel("Work", ""), nullptr);
    EXPECT_EQ(QVEmail::emailWithLabel("Work", " \t\r\n"), nullptr);
    EXPECT_EQ(QVEmail::emailWithLabel("Work", "\xC2\xA0\xE3\x80\x80"), nullptr) << "blanks of other kinds";
    EXPECT_TRUE(QVEmail::emailWithLabel("Work", "no address"));
    EXPECT_TRUE(QVEmail::emailWithLabel("Work", "@"));
}

TEST(QVEmail, IsEqualByBothTexts) {
    const auto email = QVEmail::emailWithLabel("Work", "a@example.com");
    EXPECT_TRUE(email->isEqual(QVEmail::emailWithLabel("Work", "a@example.com")));
    EXPECT_EQ(email->hash(), QVEmail::emailWithLabel("Work", "a@example.com")->hash());
    EXPECT_FALSE(email->isEqual(QVEmail::emailWithLabel("Work", "A@example.com")));
    EXPECT_FALSE(email->isEqual(QVEmail::emailWithLabel(std::nullopt, "a@example.com")));
    EXPECT_FALSE(QVEmail::emailWithLabel("", "a")->isEqual(QVEmail::emailWithLabel(std::nullopt, "a")));
    EXPECT_FALSE(email->isEqual(QVPhoneNumber::phoneNumberWithNumber("a@example.com", "Work")));
    EXPECT_FALSE(email->isEqual(nullptr));
}

}  // namespace
