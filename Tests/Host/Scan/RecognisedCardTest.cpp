#include "QVCardScan/QVBusinessCardField.h"
#include "Scan/RecognisedCard.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

namespace RecognisedCard = qvhost::RecognisedCard;
using testing::ElementsAre;

/// A result with fields of these kinds; the text of each is `prefix` and the kind.
std::string result(const std::string& prefix, const std::vector<std::string>& kinds) {
    std::string text = "<recoIndex lang=\"" + prefix + "\">";
    for (const std::string& kind : kinds)
        text += "<item fldType=\"" + kind + "\"><t w=\"5\">" + prefix + kind + "</t></item>";
    return text + "</recoIndex>";
}

std::vector<std::string> textsOf(const std::shared_ptr<QVBusinessCard>& card) {
    std::vector<std::string> texts;
    for (const auto& field : *card->fields())
        texts.push_back(field->text().value_or("(absent)"));
    return texts;
}

TEST(RecognisedCard, OneResultIsItsCard) {
    const auto card = RecognisedCard::fromResults(result("F", {"title", "fax"}), std::nullopt);
    ASSERT_TRUE(card);
    EXPECT_THAT(textsOf(card), ElementsAre("Ftitle", "Ffax"));
}

TEST(RecognisedCard, ATieStaysWithTheFront) {
    const auto card = RecognisedCard::fromResults(result("F", {"title"}), result("B", {"title", "fax"}));
    EXPECT_EQ(card->language(), "F");
    EXPECT_THAT(textsOf(card), ElementsAre("Ftitle", "Btitle", "Bfax"));
}

TEST(RecognisedCard, TheHigherScoreTakesTheOther) {
    const auto front = RecognisedCard::fromResults(result("F", {"title"}), result("B", {"fax"}));
    EXPECT_THAT(textsOf(front), ElementsAre("Ftitle", "Bfax"));
    const auto back = RecognisedCard::fromResults(result("F", {"fax"}), result("B", {"title"}));
    EXPECT_EQ(back->language(), "B");
    EXPECT_THAT(textsOf(back), ElementsAre("Btitle", "Ffax"));
}

TEST(RecognisedCard, WhatBothHaveIsThereOnce) {
    EXPECT_THAT(textsOf(RecognisedCard::fromResults(result("X", {"fax"}), result("X", {"fax", "url"}))),
                ElementsAre("Xfax", "Xurl"));
}

TEST(RecognisedCard, AFrontWithoutACardLosesNothingOfTheBack) {
    for (const QVString& front : {QVString(), QVString(""), QVString("<other/>"), QVString("not XML")}) {
        const auto tie = RecognisedCard::fromResults(front, result("B", {"fax"}));
        EXPECT_THAT(textsOf(tie), ElementsAre("Bfax"));
        EXPECT_EQ(tie->language(), std::nullopt) << "an empty card stood in the front's place and won the tie";
        const auto better = RecognisedCard::fromResults(front, result("B", {"title"}));
        EXPECT_THAT(textsOf(better), ElementsAre("Btitle"));
        EXPECT_EQ(better->language(), "B");
    }
}

TEST(RecognisedCard, ABackWithoutACardChangesNothing) {
    EXPECT_THAT(textsOf(RecognisedCard::fromResults(result("F", {"fax"}), "not XML")), ElementsAre("Ffax"));
}

TEST(RecognisedCard, NeitherGivesNone) {
    EXPECT_EQ(RecognisedCard::fromResults(std::nullopt, std::nullopt), nullptr);
    EXPECT_EQ(RecognisedCard::fromResults("", "<other/>"), nullptr);
}

}  // namespace
