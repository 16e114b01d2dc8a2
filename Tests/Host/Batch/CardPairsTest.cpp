#include "Batch/CardPairs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using qvhost::BatchCard;
using testing::ElementsAre;

/// "front+back" or "front", with "!" where there is a remark.
std::vector<std::string> inWords(const std::vector<BatchCard>& cards) {
    std::vector<std::string> words;
    words.reserve(cards.size());
    for (const BatchCard& card : cards)
        words.push_back(card.front.string() + (card.back ? "+" + card.back->string() : "") +
                        (card.remark.empty() ? "" : "!"));
    return words;
}

TEST(CardPairs, ByName) {
    const struct {
        const char* name;
        std::vector<std::filesystem::path> pictures;
        std::vector<std::string> cards;
    } rows[] = {
        {"nothing", {}, {}},
        {"one side", {"a.jpg"}, {"a.jpg"}},
        {"words", {"x-back.jpg", "x-front.jpg"}, {"x-front.jpg+x-back.jpg"}},
        {"underscore, blank, point",
         {"a_front.jpg", "a_back.jpg", "b front.jpg", "b back.jpg", "c.front.jpg", "c.back.jpg"},
         {"a_front.jpg+a_back.jpg", "b front.jpg+b back.jpg", "c.front.jpg+c.back.jpg"}},
        {"case", {"X-FRONT.JPG", "x-Back.jpg"}, {"X-FRONT.JPG+x-Back.jpg"}},
        {"other endings", {"x-front.jpg", "x-back.png"}, {"x-front.jpg+x-back.png"}},
        {"numbers", {"x_1.jpg", "x_2.jpg"}, {"x_1.jpg+x_2.jpg"}},
        {"numbers backwards", {"x_2.jpg", "x_1.jpg"}, {"x_1.jpg+x_2.jpg"}},
        {"numbers with other endings", {"x_1.jpg", "x_2.webp"}, {"x_1.jpg+x_2.webp"}},
        {"a series", {"x_1.jpg", "x_2.jpg", "x_3.jpg"}, {"x_1.jpg", "x_2.jpg", "x_3.jpg"}},
        {"a series from elsewhere", {"x_2.jpg", "x_3.jpg"}, {"x_2.jpg", "x_3.jpg"}},
        {"a camera's series", {"IMG_0001.jpg", "IMG_0002.jpg"}, {"IMG_0001.jpg", "IMG_0002.jpg"}},
        {"a half alone", {"x_1.jpg"}, {"x_1.jpg"}},
        {"the other half alone", {"x_2.jpg"}, {"x_2.jpg"}},
        {"front alone", {"x-front.jpg"}, {"x-front.jpg"}},
        {"back alone", {"x-back.jpg"}, {"x-back.jpg!"}},
        {"plain front", {"x.jpg", "x-back.jpg"}, {"x.jpg+x-back.jpg"}},
        {"front goes before plain", {"x.jpg", "x-front.jpg", "x-back.jpg"}, {"x.jpg", "x-front.jpg+x-back.jpg"}},
        {"three of one stem", {"x.jpg", "x.png", "x.webp"}, {"x.jpg", "x.png", "x.webp"}},
        {"two fronts, one back",
         {"x-front.jpg", "x-front.png", "x-back.png"},
         {"x-front.jpg!", "x-front.png+x-back.png"}},
        {"two fronts, one back of neither kind",
         {"x-front.jpg", "x-front.png", "x-back.webp"},
         {"x-front.jpg+x-back.webp", "x-front.png!"}},
        {"one front, two backs",
         {"x-front.jpg", "x-back.png", "x-back.jpg"},
         {"x-front.jpg+x-back.jpg", "x-back.png!"}},
        {"two pairs by ending",
         {"x-front.jpg", "x-front.png", "x-back.jpg", "x-back.png"},
         {"x-front.jpg+x-back.jpg", "x-front.png+x-back.png"}},
        {"other folders", {"a/x-front.jpg", "b/x-back.jpg"}, {"a/x-front.jpg", "b/x-back.jpg!"}},
        {"words alone are names", {"front.jpg", "back.jpg"}, {"front.jpg", "back.jpg"}},
        {"a word in the middle", {"x-front-2.jpg", "x-back-2.jpg"}, {"x-front-2.jpg", "x-back-2.jpg"}},
        {"a word in a word", {"xfront.jpg", "xback.jpg"}, {"xfront.jpg", "xback.jpg"}},
        {"umlauts", {"Grüße-front.jpg", "grüße-BACK.jpg"}, {"Grüße-front.jpg+grüße-BACK.jpg"}},
        {"both ways at once",
         {"x_1.jpg", "x_2.jpg", "x-front.jpg", "x-back.jpg"},
         {"x_1.jpg+x_2.jpg", "x-front.jpg+x-back.jpg"}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(inWords(qvhost::CardPairs::byName(row.pictures)), row.cards) << row.name;
}

TEST(CardPairs, ByOrder) {
    EXPECT_THAT(inWords(qvhost::CardPairs::byOrder({"a", "b", "c", "d"})), ElementsAre("a+b", "c+d"));
    EXPECT_THAT(inWords(qvhost::CardPairs::byOrder({"a", "b", "c"})), ElementsAre("a+b", "c!"));
    EXPECT_THAT(qvhost::CardPairs::byOrder({}), testing::IsEmpty());
}

}  // namespace
