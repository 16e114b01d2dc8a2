#include "WholeHost.h"

#include <limits>

namespace misuse {
namespace {

/// Every place where the library calls its host, once for each misdeed: the process lives, whoever waits is told once
/// (or not at all, where it was the host's loop that failed), and the next card goes its way as if nothing had been.
class EveryCallback : public testing::TestWithParam<std::pair<Place, const char*>> {
  protected:
    static Place place() { return GetParam().first; }
    static constexpr int kAlways = std::numeric_limits<int>::max();
    static constexpr Told kEverything = {1, 1, 1};

    /// Whether a search's answer and a save's reach the main thread when that place fails.
    static bool answersReachTheLoop() {
        return place() != Place::DispatchAsync && place() != Place::DispatchAfter && place() != Place::IsMainThread;
    }
    /// What the host is told when its callback fails each time.
    static Told toldInSpiteOfFailures() {
        if (place() == Place::DispatchAsync) return {1, 1, 0};  // the search has its time-out, the save has none
        if (place() == Place::DispatchAfter) return {1, 0, 1};  // neither answer nor time-out find a loop
        return kEverything;
    }
    static void expectTheNextToGoItsWay(WholeHost& host) {
        host.desk->behave();
        EXPECT_EQ(host.runCard("next", /*answersComeByThemselves=*/true), kEverything);
    }
};

TEST_P(EveryCallback, MayThrowAnException) {
    WholeHost host;
    host.desk->misbehaveAt(
        place(), [] { throw std::runtime_error("the host's own fault"); }, kAlways);
    EXPECT_EQ(host.runCard("first", answersReachTheLoop()), toldInSpiteOfFailures());
    EXPECT_GT(host.desk->misdeeds(), 0);
    // A log that fails has nobody to tell it to, a save tells its handler, and a name is not worth a second line.
    if (place() != Place::LogSink && place() != Place::AddressBookSave && place() != Place::ProviderName) {
        EXPECT_TRUE(host.desk->wasTold("the host's own fault"));
    }
    expectTheNextToGoItsWay(host);
}

TEST_P(EveryCallback, MayThrowSomethingElse) {
    WholeHost host;
    host.desk->misbehaveAt(
        place(), [] { throw 7; }, kAlways);
    EXPECT_EQ(host.runCard("first", answersReachTheLoop()), toldInSpiteOfFailures());
    EXPECT_GT(host.desk->misdeeds(), 0);
    expectTheNextToGoItsWay(host);
}

TEST_P(EveryCallback, MayCallTheLibrary) {
    WholeHost host;
    host.desk->misbehaveAt(
        place(), [&] { host.useEverything(); }, 1);
    EXPECT_EQ(host.runCard("first", /*answersComeByThemselves=*/true), kEverything);
    EXPECT_EQ(host.desk->misdeeds(), 1);
    EXPECT_EQ(host.finishInner(), kEverything);
    expectTheNextToGoItsWay(host);
}

TEST_P(EveryCallback, MayLetEverythingGo) {
    const auto desk = [] {
        WholeHost host;
        host.desk->misbehaveAt(
            place(), [&] { host.letEverythingGo(); }, 1);
        const Told told = host.runCard("first", /*answersComeByThemselves=*/true);
        EXPECT_LE(told.cards, 1);
        EXPECT_LE(told.searches, 1);
        EXPECT_LE(told.saves, 1);
        EXPECT_EQ(host.desk->misdeeds(), 1);
        return host.desk;
    }();
    EXPECT_TRUE(desk->waitUntilNobodyIsPresent()) << "something of the host's is kept";
    WholeHost next;
    expectTheNextToGoItsWay(next);
}

INSTANTIATE_TEST_SUITE_P(At, EveryCallback, testing::ValuesIn(kPlaces),
                         [](const auto& row) { return std::string(row.param.second); });

}  // namespace
}  // namespace misuse
