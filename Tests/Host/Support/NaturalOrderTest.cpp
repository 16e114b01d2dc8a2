#include "Support/NaturalOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

using qvhost::comesBefore;

TEST(NaturalOrder, IsHowPeopleCount) {
    const struct {
        const char* name;
        const char* first;
        const char* second;
    } rows[] = {
        {"two before ten", "card2", "card10"},
        {"number before longer word", "card2", "card2-back"},
        {"case does not count", "Card2", "card10"},
        {"case counts when nothing else does", "Card", "card"},
        {"zeros do not count", "card007", "card8"},
        {"zeros count when nothing else does", "card007", "card7"},
        {"several numbers", "a1b10", "a2b1"},
        {"the second number", "a1b2", "a1b10"},
        {"larger than any integer", "99999999999999999999998", "99999999999999999999999"},
        {"umlauts fold their case",
         "\xC3\xA4"
         "2",
         "\xC3\x84"
         "10"},
        {"nothing before something", "", "a"},
        {"folders", "a/card10.jpg", "b/card2.jpg"},
        {"no text", "a\xFF", "b\xFF"},
    };
    for (const auto& row : rows) {
        EXPECT_TRUE(comesBefore(row.first, row.second)) << row.name;
        EXPECT_FALSE(comesBefore(row.second, row.first)) << row.name;
        EXPECT_FALSE(comesBefore(row.first, row.first)) << row.name;
    }
}

TEST(NaturalOrder, IsTheSameFromEveryBeginning) {
    std::vector<std::string> names;
    for (const char* letter : {"a", "A", "b", "\xFF", ""}) {
        for (const char* number : {"1", "01", "2", "10", "", "0"})
            names.push_back(std::string(letter) + number + "x");
    }
    std::sort(names.begin(), names.end(), [](const auto& one, const auto& other) { return comesBefore(one, other); });
    std::mt19937 random(7);
    for (int i = 0; i < 20; ++i) {
        std::vector<std::string> shuffled = names;
        std::shuffle(shuffled.begin(), shuffled.end(), random);
        std::sort(shuffled.begin(), shuffled.end(),
                  [](const auto& one, const auto& other) { return comesBefore(one, other); });
        EXPECT_EQ(shuffled, names);
    }
}

}  // namespace
