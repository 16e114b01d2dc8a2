#include "Text/Letters.h"

#include <gtest/gtest.h>

namespace qv::recognition {
namespace {

TEST(LettersTest, FoldsCaseAndAccents) {
    EXPECT_EQ(folded("Geschäftsführer"), "geschaftsfuhrer");
    EXPECT_EQ(folded("STRAßE"), "strasse");
    EXPECT_EQ(folded("Łódź Øre Æsir"), "lodz ore aesir");
    EXPECT_EQ(folded("İstanbul"), "istanbul");
    EXPECT_EQ(folded(""), "");
    EXPECT_EQ(folded("山田"), "山田");
}

TEST(LettersTest, KeepsLettersAndDigitsInKeys) {
    EXPECT_EQ(foldedKey("E-Mail:"), "email");
    EXPECT_EQ(foldedKey("(02) 7 – x"), "027x");
}

TEST(LettersTest, SplitsIntoFoldedWords) {
    EXPECT_EQ(foldedWords(" Head, of \"Sales\" & "), (std::vector<std::string>{"head", "of", "sales"}));
    EXPECT_TRUE(foldedWords(" ... ").empty());
}

TEST(LettersTest, SurvivesBytesThatAreNoUTF8) {
    const std::string broken = "a\xFF\xC3";
    EXPECT_EQ(length(broken), 3);
    EXPECT_FALSE(folded(broken).empty());
}

TEST(LettersTest, CountsEdits) {
    EXPECT_EQ(editDistance("acme", "acme", 2), 0);
    EXPECT_EQ(editDistance("acme", "acne", 2), 1);
    EXPECT_EQ(editDistance("acme", "ac", 2), 2);
    EXPECT_EQ(editDistance("acme", "zzzz", 2), 3);
    EXPECT_EQ(editDistance("a", "abcdef", 2), 3);
}

TEST(LettersTest, KnowsCapitals) {
    EXPECT_TRUE(isAllCapitals("ÄCME 12"));
    EXPECT_FALSE(isAllCapitals("Acme"));
    EXPECT_FALSE(isAllCapitals("123"));
}

}  // namespace
}  // namespace qv::recognition
