#include "QVCardScan/QVBusinessCard.h"
#include "QVPlatform/Image.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;

std::shared_ptr<QVBusinessCardField> field(std::int32_t type, QVString text, std::int64_t weight = 0,
                                           std::int64_t orient = 0) {
    return QVBusinessCardField::initWithType(type, 0, std::nullopt, std::move(text), {}, weight, orient);
}

std::shared_ptr<QVBusinessCard> card(std::vector<std::shared_ptr<QVBusinessCardField>> fields) {
    auto result = std::make_shared<QVBusinessCard>();
    result->setFields(std::make_shared<std::vector<std::shared_ptr<QVBusinessCardField>>>(std::move(fields)));
    return result;
}

std::vector<std::string> texts(const QVBusinessCard& card) {
    std::vector<std::string> result;
    for (const auto& each : *card.fields())
        result.push_back(each->text().value_or("(absent)"));
    return result;
}

TEST(BusinessCard, IsEmptyAtFirst) {
    const QVBusinessCard empty;
    EXPECT_EQ(empty.language(), std::nullopt);
    EXPECT_EQ(empty.cardWidth(), 0);
    EXPECT_EQ(empty.cardHeight(), 0);
    EXPECT_EQ(empty.fields(), nullptr);
    EXPECT_EQ(empty.frontImage(), nullptr);
    EXPECT_EQ(empty.backImage(), nullptr);
    EXPECT_EQ(empty.rotationByDegrees(), 0);
    EXPECT_EQ(empty.score(), 0);
    EXPECT_FALSE(empty.hasTitleField());
    EXPECT_EQ(empty.fullName(), std::nullopt);
    EXPECT_EQ(empty.emails(), nullptr);
    EXPECT_EQ(empty.phoneNumbers(), nullptr);
    EXPECT_FALSE(empty.hasField(field(1, "x")));
    EXPECT_EQ(empty.description(), "Business Card\n");
}

TEST(BusinessCard, StoresWhatItIsMadeOf) {
    const auto fields = std::make_shared<std::vector<std::shared_ptr<QVBusinessCardField>>>();
    const auto front = qv::Image::initWithData({'f'});
    const auto back = qv::Image::initWithData({'b'});
    const auto made = QVBusinessCard::initWithLanguage("de", fields, front, back);
    EXPECT_EQ(made->frontImage(), front);
    EXPECT_EQ(made->backImage(), back);
    EXPECT_EQ(made->language(), "de");
    EXPECT_EQ(made->fields(), fields) << "a shared reference";
    made->setCardWidth(1024);
    made->setCardHeight(600);
    EXPECT_EQ(made->cardWidth(), 1024);
    EXPECT_EQ(made->cardHeight(), 600);
}

TEST(BusinessCard, NameIsTheFirstOfTheHighestWeight) {
    EXPECT_EQ(card({field(1, "a", 40), field(1, "b", 90), field(1, "c", 90)})->fullName(), "b");
    EXPECT_EQ(card({field(1, "a", 90), field(1, "b", 40)})->fullName(), "a");
    EXPECT_EQ(card({field(4, "t", 99), field(1, "a", 1)})->fullName(), "a") << "other types do not count";
}

TEST(BusinessCard, NameNeedsAWeight) {
    const auto unweighted = card({field(1, "a", 0), field(1, "b", -5)});
    EXPECT_EQ(unweighted->fullName(), std::nullopt);
    EXPECT_EQ(unweighted->score(), 0);
    EXPECT_EQ(card({field(1, "a", 50), field(1, std::nullopt, 90)})->fullName(), std::nullopt)
        << "the best one has no text";
}

TEST(BusinessCard, ScoreCountsNameAndTitle) {
    const auto name = field(1, "a", 1);
    const auto title = field(4, "t");
    EXPECT_EQ(card({title})->score(), 1);
    EXPECT_TRUE(card({title})->hasTitleField());
    EXPECT_EQ(card({name, title})->score(), 2);
    EXPECT_TRUE(card({name, title})->hasTitleField());
    EXPECT_EQ(card({name, name, title, title})->score(), 2);
    EXPECT_EQ(card({name})->score(), 1);
    EXPECT_FALSE(card({name})->hasTitleField());
    EXPECT_EQ(card({field(1, "", 9)})->score(), 0) << "an empty name";
    EXPECT_EQ(card({field(4, std::nullopt)})->score(), 1) << "a title without text";
}

TEST(BusinessCard, ComputesWhatWasSet) {
    const auto empty = card({});
    empty->setScore(2);
    empty->setHasTitleField(true);
    EXPECT_EQ(empty->score(), 0);
    EXPECT_FALSE(empty->hasTitleField());
}

TEST(BusinessCard, ListsEmailsAndPhoneNumbers) {
    const auto full = card({field(2, "b@x"), field(3, "2"), field(9, "fax"), field(10, "mobile"), field(2, "a@x"),
                            field(2, std::nullopt), field(3, "1"), field(2, ""), field(2, "b@x")});
    EXPECT_THAT(*full->emails(), ElementsAre("b@x", "a@x", "", "b@x"));
    EXPECT_THAT(*full->phoneNumbers(), ElementsAre("2", "1"));
}

TEST(BusinessCard, HasNoListRatherThanAnEmptyOne) {
    const auto none = card({field(1, "a"), field(2, std::nullopt), field(10, "mobile")});
    EXPECT_EQ(none->emails(), nullptr);
    EXPECT_EQ(none->phoneNumbers(), nullptr);
}

TEST(BusinessCard, HasAFieldOfSameTypeAndText) {
    const auto some = card({field(2, "a@x", 50), field(3, std::nullopt), field(2, "\u00C4")});
    EXPECT_TRUE(some->hasField(field(2, "a@x", 1, 90))) << "weight and place do not count";
    EXPECT_FALSE(some->hasField(field(3, "a@x")));
    EXPECT_FALSE(some->hasField(field(2, "A@x")));
    EXPECT_FALSE(some->hasField(field(2, "A\u0308"))) << "the same letter written otherwise";
    EXPECT_FALSE(some->hasField(field(3, std::nullopt))) << "an absent text never matches";
    EXPECT_FALSE(some->hasField(field(3, ""))) << "absent is not empty";
    EXPECT_FALSE(some->hasField(nullptr));
}

TEST(BusinessCardMerge, AddsWhatIsNew) {
    const auto front = card({field(1, "n"), field(2, "T")});
    const auto back = card({field(2, "T"), field(3, "T"), field(2, "t"), field(1, "n")});
    const auto before = front->fields();
    front->mergeWithCard(back);
    EXPECT_THAT(texts(*front), ElementsAre("n", "T", "T", "t"));
    EXPECT_EQ((*front->fields())[2]->type(), 3);
    EXPECT_THAT(texts(*back), ElementsAre("T", "T", "t", "n")) << "the other card is left alone";
    EXPECT_EQ(before->size(), 2U) << "and so is the list that others may hold";
    EXPECT_NE(front->fields(), before);
}

TEST(BusinessCardMerge, JudgesAgainstTheFieldsBefore) {
    const auto front = card({field(1, "n")});
    front->mergeWithCard(card({field(3, "1"), field(3, "1"), field(3, std::nullopt), field(3, std::nullopt)}));
    EXPECT_THAT(texts(*front), ElementsAre("n", "1", "1", "(absent)", "(absent)"));
}

TEST(BusinessCardMerge, SharesTheFields) {
    const auto phone = field(3, "1");
    const auto front = card({});
    front->mergeWithCard(card({phone}));
    EXPECT_EQ(front->fields()->front(), phone);
}

TEST(BusinessCardMerge, KeepsTheRest) {
    const auto front = card({});
    front->setLanguage("en");
    front->setCardWidth(10);
    const auto back = card({field(1, "n")});
    back->setLanguage("de");
    back->setCardWidth(20);
    front->mergeWithCard(back);
    EXPECT_EQ(front->language(), "en");
    EXPECT_EQ(front->cardWidth(), 10);
}

TEST(BusinessCardMerge, TakesAbsentCardsAndLists) {
    const auto front = card({field(1, "n")});
    front->mergeWithCard(nullptr);
    EXPECT_THAT(texts(*front), ElementsAre("n"));
    front->mergeWithCard(std::make_shared<QVBusinessCard>());
    EXPECT_THAT(texts(*front), ElementsAre("n"));

    const auto empty = std::make_shared<QVBusinessCard>();
    empty->mergeWithCard(std::make_shared<QVBusinessCard>());
    ASSERT_NE(empty->fields(), nullptr) << "the merged list, with nothing in it";
    EXPECT_TRUE(empty->fields()->empty());
    empty->mergeWithCard(front);
    EXPECT_THAT(texts(*empty), ElementsAre("n"));
    EXPECT_NE(empty->fields(), front->fields()) << "a list of its own";
}

TEST(BusinessCardMerge, TakesTheCardItself) {
    const auto self = card({field(1, "n"), field(3, std::nullopt)});
    self->mergeWithCard(self);
    EXPECT_THAT(texts(*self), ElementsAre("n", "(absent)", "(absent)"));
}

TEST(BusinessCardMerge, AgreesWithHasField) {
    std::vector<std::shared_ptr<QVBusinessCardField>> own;
    std::vector<std::shared_ptr<QVBusinessCardField>> other;
    for (int index = 0; index < 600; ++index) {
        const auto type = static_cast<std::int32_t>(index % 5);
        own.push_back(field(type, index % 11 == 0 ? QVString() : std::to_string(index * 7 % 90)));
        other.push_back(field(type, index % 13 == 0 ? QVString() : std::to_string(index * 5 % 130)));
    }
    const auto front = card(own);
    std::vector<std::shared_ptr<QVBusinessCardField>> expected = own;
    for (const auto& each : other) {
        if (!front->hasField(each)) expected.push_back(each);
    }
    ASSERT_GT(expected.size(), own.size());
    ASSERT_LT(expected.size(), own.size() + other.size());
    front->mergeWithCard(card(other));
    EXPECT_EQ(*front->fields(), expected);
}

TEST(BusinessCardMerge, StaysLinear) {
    std::vector<std::shared_ptr<QVBusinessCardField>> own;
    std::vector<std::shared_ptr<QVBusinessCardField>> other;
    for (int index = 0; index < 200'000; ++index) {
        own.push_back(field(3, std::to_string(index)));
        other.push_back(field(3, std::to_string(-index)));
    }
    const auto front = card(own);
    front->mergeWithCard(card(other));
    EXPECT_EQ(front->fields()->size(), 399'999U) << "only 0 is in both";
}

TEST(BusinessCard, RotationIsTheLastFields) {
    EXPECT_EQ(card({field(1, "n", 1, 270), field(0, std::nullopt, 0, 90)})->rotationByDegrees(), 90);
    EXPECT_EQ(card({field(1, "n", 1, 90), field(1, "n", 1, 0)})->rotationByDegrees(), 0);
    EXPECT_EQ(card({field(1, "n", 1, -1234567890123)})->rotationByDegrees(), -1234567890123) << "passed through";
    EXPECT_EQ(card({})->rotationByDegrees(), 0);
}

TEST(BusinessCard, DescribesEachField) {
    EXPECT_EQ(card({field(1, "n"), field(2, std::nullopt)})->description(),
              "Business Card\nBusiness Card Field: 1 0 (null) n\nBusiness Card Field: 2 0 (null) (null)\n");
}

TEST(BusinessCard, PassesOverAbsentFields) {
    const auto holed = card({nullptr, field(2, "a@x", 1, 90), nullptr});
    EXPECT_EQ(holed->fullName(), std::nullopt);
    EXPECT_THAT(*holed->emails(), ElementsAre("a@x"));
    EXPECT_FALSE(holed->hasTitleField());
    EXPECT_EQ(holed->rotationByDegrees(), 90);
    EXPECT_EQ(holed->description(), "Business Card\nBusiness Card Field: 2 0 (null) a@x\n");
    const auto other = card({field(1, "n")});
    other->mergeWithCard(holed);
    EXPECT_THAT(texts(*other), ElementsAre("n", "a@x"));
}

}  // namespace
