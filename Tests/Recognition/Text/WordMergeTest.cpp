#include "Text/WordMerge.h"

#include <gtest/gtest.h>

namespace qv::recognition {
namespace {

Word word(const std::string& text, float x, float width, float confidence) {
    return {text, {x, 100, width, 30}, confidence, {}};
}

TEST(WordMergeTest, KeepsTheSurerReadingAndRemembersTheOther) {
    const auto kept = merged({word("Jane", 0, 80, 95)}, {word("Jone", 0, 80, 60)});
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(kept[0].text, "Jane");
    EXPECT_EQ(kept[0].others, std::vector<std::string>{"Jone"});
    const auto replaced = merged({word("Jone", 0, 80, 60)}, {word("Jane", 0, 80, 95)});
    ASSERT_EQ(replaced.size(), 1U);
    EXPECT_EQ(replaced[0].text, "Jane");
    EXPECT_EQ(replaced[0].others, std::vector<std::string>{"Jone"});
}

TEST(WordMergeTest, AddsWhatOnlyTheSecondReadingHas) {
    EXPECT_EQ(merged({word("Jane", 0, 80, 95)}, {word("Doe", 100, 60, 90)}).size(), 2U);
    EXPECT_EQ(merged({word("Jane", 0, 80, 95)}, {word("Doe", 100, 60, 30)}).size(), 1U);
    EXPECT_EQ(merged({word("Jane", 0, 80, 95)}, {word("~", 100, 60, 90)}).size(), 1U);
}

TEST(WordMergeTest, PutsBrokenWordsTogether) {
    const auto whole =
        merged({word("your", 0, 80, 50), word("pany.com", 120, 160, 50)}, {word("yourcompany.com", 0, 280, 90)});
    ASSERT_EQ(whole.size(), 1U);
    EXPECT_EQ(whole[0].text, "yourcompany.com");
}

TEST(WordMergeTest, DoesNotTakeAPieceForTheWhole) {
    const auto whole = merged({word("yourcompany.com", 0, 280, 60)}, {word("your", 0, 80, 95)});
    ASSERT_EQ(whole.size(), 1U);
    EXPECT_EQ(whole[0].text, "yourcompany.com");
}

TEST(WordMergeTest, PrefersAnAddressToLettersInPlaceOfItsSign) {
    const auto kept = merged({word("janeGWacme.com", 0, 280, 92)}, {word("jane@acme.com", 0, 280, 80)}, 20);
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(kept[0].text, "jane@acme.com");
}

TEST(WordMergeTest, CountsPlainLetters) {
    EXPECT_EQ(plainLetters(
                  {word("Jane", 0, 80, 95), word("Do", 0, 80, 95), word("Smith", 0, 80, 30), word("|~.-", 0, 9, 99)}),
              4);
}

}  // namespace
}  // namespace qv::recognition
