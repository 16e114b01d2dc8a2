#include "QVSocialSearch/QVPostalAddress.h"

#include <gtest/gtest.h>

namespace {

TEST(QVPostalAddress, KeepsBothTextsAsTheyAre) {
    const auto address = QVPostalAddress::addressWithLabel("Work", "1 Main St\nSpringfield");
    ASSERT_TRUE(address);
    EXPECT_EQ(address->label(), "Work");
    EXPECT_EQ(address->formattedAddress(), "1 Main St\nSpringfield");
}

TEST(QVPostalAddress, RefusesOnlyWhatSaysNothing) {
    EXPECT_EQ(QVPostalAddress::addressWithLabel("Work", std::nullopt), nullptr);
    EXPECT_EQ(QVPostalAddress::addressWithLabel("Work", "\n \n"), nullptr);
}

TEST(QVPostalAddress, IsEqualByBothTexts) {
    const auto address = QVPostalAddress::addressWithLabel("Work", "1 Main St");
    EXPECT_TRUE(address->isEqual(QVPostalAddress::addressWithLabel("Work", "1 Main St")));
    EXPECT_EQ(address->hash(), QVPostalAddress::addressWithLabel("Work", "1 Main St")->hash());
    EXPECT_FALSE(address->isEqual(QVPostalAddress::addressWithLabel("Home", "1 Main St")));
    EXPECT_FALSE(address->isEqual(QVPostalAddress::addressWithLabel("Work", "2 Main St")));
}

}  // namespace
