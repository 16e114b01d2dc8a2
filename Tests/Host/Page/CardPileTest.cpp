#include "Page/CardNote.h"
#include "Page/CardPile.h"
#include "Page/PileArchive.h"
#include "Page/ReadFields.h"
#include "Support/HostProgram.h"
#include "Support/ReadFile.h"

#include <gtest/gtest.h>

#include <thread>

namespace qvhost {
namespace {

using State = PileCard::State;

class CardPileTest : public testing::Test {
  protected:
    static ShelvedPicture picture(const std::string& name) { return {name, name, "hash of " + name, {120, 70}, 1}; }
    std::string add(const std::string& name) { return mPile.add({picture(name)}); }
    /// As the one that reads would.
    void finish(const CardPile::Card& taken, State state = State::Done) {
        mPile.change(taken->identifier, [&](PileCard& card) {
            card.state = state;
            return card.attempt == taken->attempt;
        });
    }
    std::string order() const {
        std::string names;
        for (const CardPile::Card& card : mPile.view().cards) {
            for (const ShelvedPicture& each : card->pictures)
                names += each.name;
            names += ' ';
        }
        return names;
    }

    std::unique_ptr<PictureShelf> mShelf = std::move(*PictureShelf::make());
    CardPile mPile{*mShelf};
};

TEST_F(CardPileTest, CountsWhatIsReadSinceNothingWaited) {
    add("a");
    add("b");
    EXPECT_EQ(mPile.view().total, 2U);
    finish(mPile.takeWaiting());
    EXPECT_EQ(mPile.view().done, 1U);
    finish(mPile.takeWaiting(), State::Failed);
    EXPECT_EQ(mPile.view().done, 2U);
    add("c");
    EXPECT_EQ(mPile.view().total, 1U);
    EXPECT_EQ(mPile.view().done, 0U);
}

TEST_F(CardPileTest, ACardThatWaitsCanBeRemovedAndIsCountedNoLonger) {
    const std::string first = add("a");
    add("b");
    EXPECT_TRUE(mPile.remove(first));
    EXPECT_FALSE(mPile.remove(first));
    EXPECT_EQ(mPile.view().total, 1U);
    EXPECT_EQ(mPile.takeWaiting()->pictures.front().name, "b");
}

TEST_F(CardPileTest, ARemovedCardComesBackToItsPlace) {
    add("a");
    const std::string second = add("b");
    add("c");
    mPile.remove(second);
    EXPECT_EQ(order(), "a c ");
    EXPECT_TRUE(mPile.restore(second));
    EXPECT_EQ(order(), "a b c ");
    EXPECT_FALSE(mPile.restore(second));
}

TEST_F(CardPileTest, OfTwentyOneRemovedTheOldestIsGone) {
    const std::string first = add("a");
    mPile.remove(first);
    for (int i = 0; i < 20; ++i)
        mPile.remove(add("x"));
    EXPECT_FALSE(mPile.restore(first));
}

TEST_F(CardPileTest, TwoCardsBecomeOneAndTwoAgain) {
    const std::string front = add("a");
    const std::string back = add("b");
    add("c");
    finish(mPile.takeWaiting());
    finish(mPile.takeWaiting());
    ASSERT_NE(mPile.join(front, back), nullptr);
    EXPECT_EQ(order(), "ab c ");
    EXPECT_EQ(mPile.find(front)->state, State::Waiting) << "read again, with both sides";
    EXPECT_EQ(mPile.join(front, front), nullptr);
    EXPECT_EQ(mPile.join(front, "99"), nullptr);
    ASSERT_NE(mPile.split(front), nullptr);
    EXPECT_EQ(order(), "a b c ");
    EXPECT_EQ(mPile.split(front), nullptr);
}

TEST_F(CardPileTest, AResultOfOtherPicturesIsThrownAway) {
    const std::string front = add("a");
    const std::string back = add("b");
    const CardPile::Card taken = mPile.takeWaiting();
    mPile.join(front, back);
    finish(taken);
    EXPECT_EQ(mPile.find(front)->state, State::Waiting);
}

TEST_F(CardPileTest, HoldsFiveHundred) {
    for (std::size_t i = 0; i < CardPile::kMaximumCards; ++i)
        EXPECT_FALSE(add("a").empty());
    EXPECT_TRUE(add("a").empty());
}

TEST_F(CardPileTest, WhoWaitsForACardIsWokenByOneAndByTheEnd) {
    std::vector<std::string> taken;
    std::thread reader([&] {
        while (const CardPile::Card card = mPile.takeWaiting())
            taken.push_back(card->pictures.front().name);
    });
    add("a");
    while (mPile.view().cards.front()->state == State::Waiting)
        std::this_thread::yield();
    mPile.stop();
    reader.join();
    EXPECT_EQ(taken, std::vector<std::string>{"a"});
}

class ReadCard : public testing::Test {
  protected:
    ReadCard() { mCard.pictures.resize(2); }
    static std::string answer(const char* name) { return testsupport::readFile(testsupport::hostData(name)); }

    PileCard mCard;
};

TEST_F(ReadCard, EachFieldKnowsItsSide) {
    takeReadFields(mCard, answer("front-poor.xml"), answer("back-turned.xml"));
    ASSERT_FALSE(mCard.fields.empty());
    bool hasFront = false;
    bool hasBack = false;
    for (const PileField& field : mCard.fields)
        (*field.side == 0 ? hasFront : hasBack) = true;
    EXPECT_TRUE(hasFront);
    EXPECT_TRUE(hasBack);
    EXPECT_EQ(mCard.fields.front().side, mCard.winner) << "the winner's fields come first";
    EXPECT_EQ(mCard.sides[0].orientation, 0);
    EXPECT_NE(mCard.sides[1].orientation, 0);
}

TEST_F(ReadCard, WithoutAnAnswerHasNothing) {
    takeReadFields(mCard, std::nullopt, std::nullopt);
    EXPECT_TRUE(mCard.fields.empty());
    EXPECT_FALSE(mCard.sides[0].isRead);
    EXPECT_TRUE(CardNote::markup(mCard).has_value());
}

struct Name {
    const char* name;
    const char* folder;
};

class FolderName : public testing::TestWithParam<Name> {};

TEST_P(FolderName, IsFitForEveryFileSystem) {
    PileCard card;
    card.pictures.resize(1);
    const auto field =
        QVBusinessCardField::initWithType(QVBusinessCardFieldTypeName, 0, "name", GetParam().name, {}, 90, 0);
    card.fields.push_back({1, field, 0, false});
    EXPECT_EQ(PileArchive::folderName(7, card), GetParam().folder);
}

INSTANTIATE_TEST_SUITE_P(All, FolderName,
                         testing::Values(Name{"Ada Example", "007 Ada Example"}, Name{"", "007"}, Name{"...", "007"},
                                         Name{"../../etc/passwd", "007 etc passwd"}, Name{"Zo\u00EB", "007 Zo\u00EB"},
                                         Name{"a\\b:c*d?e\"f<g>h|i", "007 a b c d e f g h i"},
                                         Name{"  x \n y  ", "007 x y"}, Name{"CON.", "007 CON"}));

}  // namespace
}  // namespace qvhost
