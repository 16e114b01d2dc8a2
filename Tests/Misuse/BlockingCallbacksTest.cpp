#include "WholeHost.h"

namespace misuse {
namespace {

/// A callback that does not return holds up itself and nobody else.
class ABlockingCallback : public testing::TestWithParam<std::pair<Place, const char*>> {
  protected:
    ~ABlockingCallback() override { mGate->open(); }

    void blockAt(Place place) {
        mHost.desk->misbehaveAt(
            place,
            [gate = mGate, reached = mReached] {
                reached->open();
                gate->wait();
            },
            1);
    }
    void finishSearch(const std::string& note) {
        mHost.executor()->clock.advance(std::chrono::seconds(10));
        EXPECT_TRUE(mHost.executor()->pumped.pumpUntil([&] { return mHost.heard(note) > 0; }, std::chrono::minutes(1)));
    }

    const std::shared_ptr<testsupport::Gate> mGate = std::make_shared<testsupport::Gate>();
    const std::shared_ptr<testsupport::Gate> mReached = std::make_shared<testsupport::Gate>();
    WholeHost mHost;
};

TEST_P(ABlockingCallback, HoldsUpNoOtherCard) {
    blockAt(GetParam().first);
    const auto first = mHost.startCard("first");
    const auto saved = std::make_shared<WholeHost::Saved>();
    mHost.save(saved);
    // Whichever comes to that place waits there, and the searches and saves that were asked for later go on.
    if (GetParam().first == Place::Provider || GetParam().first == Place::AddressBookLookUp) {
        ASSERT_TRUE(first->released.waitFor());
        mHost.startSearch(first);
    }
    ASSERT_TRUE(mReached->waitFor());
    for (const char* note : {"second", "third", "fourth"}) {
        const auto card = mHost.startCard(note);
        ASSERT_TRUE(card->released.waitFor());
        EXPECT_EQ(card->calls, 1);
        mHost.startSearch(card);
        finishSearch(note);
        EXPECT_EQ(mHost.heard(note), 1);
    }
    EXPECT_FALSE(mGate->isOpen());
    mGate->open();
    ASSERT_TRUE(first->released.waitFor());
    EXPECT_EQ(first->calls, 1);
    const auto isSaved = [&] { return saved->released.isOpen(); };
    EXPECT_TRUE(mHost.executor()->pumped.pumpUntil(isSaved, std::chrono::minutes(1)));
    EXPECT_EQ(saved->calls, 1);
}

INSTANTIATE_TEST_SUITE_P(At, ABlockingCallback,
                         testing::Values(std::pair(Place::Completion, "Completion"),
                                         std::pair(Place::AskWhetherThereIsADataSource, "AskWhetherThereIsADataSource"),
                                         std::pair(Place::DataSource, "DataSource"),
                                         std::pair(Place::LogSink, "LogSink"), std::pair(Place::Localizer, "Localizer"),
                                         std::pair(Place::Provider, "Provider"),
                                         std::pair(Place::AddressBookLookUp, "AddressBookLookUp"),
                                         std::pair(Place::AddressBookSave, "AddressBookSave")),
                         [](const auto& row) { return std::string(row.param.second); });

/// Each holds one of the three places, and the fourth waits as it would for three cards that are read.
TEST(BlockingCallbacks, HoldTheThreePlacesUntilOneReturns) {
    const auto host = std::make_unique<WholeHost>();
    testsupport::Gate gates[3];
    testsupport::Gate reached[3];
    std::atomic<int> count{0};
    host->desk->misbehaveAt(
        Place::Completion,
        [&] {
            const int number = count++;
            reached[number].open();
            gates[number].wait();
        },
        3);
    std::vector<managers::OutcomePtr> cards;
    for (const char* note : {"a", "b", "c"})
        cards.push_back(host->startCard(note));
    for (const auto& gate : reached)
        ASSERT_TRUE(gate.waitFor());
    const auto fourth = host->startCard("d");
    EXPECT_FALSE(host->desk->wasTold("Performing operation with ID: d"));
    gates[1].open();
    EXPECT_TRUE(fourth->released.waitFor());
    EXPECT_EQ(fourth->calls, 1);
    for (auto& gate : gates)
        gate.open();
    for (const auto& card : cards) {
        EXPECT_TRUE(card->released.waitFor());
        EXPECT_EQ(card->calls, 1);
    }
}

}  // namespace
}  // namespace misuse
