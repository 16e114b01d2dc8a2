#include "SocialSearchFixtures.h"

#include <gmock/gmock.h>

#include <chrono>
#include <cmath>
#include <iterator>
#include <limits>
#include <stdexcept>

using namespace std::chrono_literals;

namespace {

using socialsearch::profileWithLinks;
using socialsearch::scannedCard;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kTimedOut = "<INFO> sending out social search timed out notification";

class SocialSearchTimeOutTest : public socialsearch::SocialSearchFixture {};

TEST_F(SocialSearchTimeOutTest, TimesOutAfterFourSecondsByDefault) {
    mManager->setupOperationQueue();
    EXPECT_EQ(mManager->searchTimeOut(), 4.0);
    mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard());
    mMain.pass(4s - 1ns);
    EXPECT_THAT(mHeard, IsEmpty());
    mMain.pass(1ns);
    ASSERT_EQ(mHeard.size(), 1U);
    EXPECT_EQ(heardType(), QVSocialSearchResultTimedOut);
}

struct TimeOutRow {
    const char* name;
    double seconds;
    std::chrono::nanoseconds due;
};

void PrintTo(const TimeOutRow& row, std::ostream* stream) {
    *stream << row.seconds;
}

class SearchTimeOut : public socialsearch::SocialSearchFixture, public testing::WithParamInterface<TimeOutRow> {};

TEST_P(SearchTimeOut, IsCutToWholeNanoseconds) {
    mManager->setSearchTimeOut(GetParam().seconds);
    mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard());
    EXPECT_THAT(mHeard, IsEmpty()) << "never inside the call";
    if (GetParam().due > 0ns) {
        mMain.pass(GetParam().due - 1ns);
        EXPECT_THAT(mHeard, IsEmpty());
        mMain.pass(1ns);
    } else {
        mMain.pump();
    }
    EXPECT_EQ(mHeard.size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(Rows, SearchTimeOut,
                         testing::Values(TimeOutRow{"Whole", 2.0, 2s}, TimeOutRow{"Half", 0.5, 500ms},
                                         TimeOutRow{"BelowTwo", 1.9e-9, 1ns}, TimeOutRow{"BelowOne", 0.9e-9, 0ns},
                                         TimeOutRow{"Zero", 0.0, 0ns}, TimeOutRow{"Negative", -1.0, 0ns},
                                         TimeOutRow{"NoNumber", std::numeric_limits<double>::quiet_NaN(), 0ns}),
                         [](const auto& row) { return std::string(row.param.name); });

/// A host's loop, which is asked for delays and never runs anything.
struct DelayExecutor : qv::MainExecutor {
    void dispatchAsync(std::function<void()>) override {}
    void dispatchAfter(std::chrono::nanoseconds delay, std::function<void()>) override { delays.push_back(delay); }
    bool isMainThread() const override { return true; }

    std::vector<std::chrono::nanoseconds> delays;
};

TEST_F(SocialSearchTimeOutTest, AsksTheHostsLoopForNoDelayInThePast) {
    const auto executor = std::make_shared<DelayExecutor>();
    qv::MainQueue::setExecutor(executor);
    for (const double seconds : {-1.0, -std::numeric_limits<double>::infinity(), std::nan(""), 1.0}) {
        mManager->setSearchTimeOut(seconds);
        mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard());
    }
    EXPECT_THAT(executor->delays, ElementsAre(0ns, 0ns, 0ns, 1s));
}

/// A host's loop that takes nothing.
struct ThrowingExecutor : qv::MainExecutor {
    void dispatchAsync(std::function<void()>) override { throw std::runtime_error("no loop for work"); }
    void dispatchAfter(std::chrono::nanoseconds, std::function<void()>) override {
        throw std::runtime_error("no loop for delays");
    }
    bool isMainThread() const override { return false; }
};

TEST_F(SocialSearchTimeOutTest, LogsWhatTheHostsLoopThrows) {
    const auto executor = std::make_shared<ThrowingExecutor>();
    qv::MainQueue::setExecutor(executor);
    mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard());
    EXPECT_EQ(mLog.count("<ERROR> Exception from the main executor: no loop for delays"), 1U);
    ASSERT_EQ(mSearch->requests.size(), 1U) << "the search goes on without a time-out";
    mSearch->answer(0, nullptr);
    EXPECT_EQ(mLog.count("<ERROR> Exception from the main executor: no loop for work"), 1U);
    EXPECT_THAT(mHeard, IsEmpty());
}

TEST_F(SocialSearchTimeOutTest, NeverTimesOutAfterForEver) {
    // The second is the first whole number of nanoseconds that does not fit any more.
    const double forEver[] = {std::numeric_limits<double>::infinity(), 9223372036.854775808};
    for (std::size_t search = 0; search < std::size(forEver); ++search) {
        mManager->setSearchTimeOut(forEver[search]);
        mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard());
        mMain.pass(100000h);
        EXPECT_EQ(mHeard.size(), search);
        mSearch->answer(search, nullptr);
        EXPECT_EQ(mHeard.size(), search + 1);
    }
}

TEST_F(SocialSearchTimeOutTest, TimesOutWhenTheSearchCannotStart) {
    for (const bool hasKey : {false, true}) {
        mHeard.clear();
        mManager->setLinkedInKey(hasKey ? QVString("key") : std::nullopt);
        mManager->setLinkedInSecret(hasKey ? std::nullopt : QVString("secret"));
        const auto response = scannedCard();
        mManager->addSocialSearchRequestFromCardProcessingResponse(response);
        EXPECT_FALSE(response->willStartLinkedInSearch());
        EXPECT_THAT(mSearch->requests, IsEmpty());
        mMain.pass(4s - 1ns);
        EXPECT_THAT(mHeard, IsEmpty());
        mMain.pass(1ns);
        ASSERT_EQ(mHeard.size(), 1U);
        EXPECT_EQ(heardType(), QVSocialSearchResultTimedOut);
        EXPECT_EQ(heard<std::shared_ptr<QVVeltoContact>>("QVSocialSearchBaseVeltoContactKey"), response->contact());
    }
}

TEST_F(SocialSearchTimeOutTest, AnnouncesAnAnswerBeforeTheTimeOutOnly) {
    mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard());
    mMain.pass(3999ms);
    mSearch->answer(0, nullptr);
    ASSERT_EQ(mHeard.size(), 1U);
    EXPECT_EQ(heardType(), QVSocialSearchResultNotFound);
    EXPECT_EQ(mManager->socialSearchRequestInfoWithID("note-1"), nullptr);
    mMain.pass(1h);
    EXPECT_EQ(mHeard.size(), 1U);
    EXPECT_FALSE(mLog.contains(kTimedOut));
}

TEST_F(SocialSearchTimeOutTest, LogsAndDropsALateAnswer) {
    const auto response = scannedCard();
    mManager->addSocialSearchRequestFromCardProcessingResponse(response);
    mMain.pass(4s);
    ASSERT_EQ(mHeard.size(), 1U);
    mLog.clear();
    const auto late = profileWithLinks("https://example.com/in", std::nullopt);
    late->setFormattedName("Somebody Else");
    mSearch->answer(0, late);
    EXPECT_EQ(mHeard.size(), 1U);
    EXPECT_THAT(mLog.messages(),
                ElementsAre("<INFO> Social Search Response: request note-1: found a profile of type 0"));
    EXPECT_EQ(response->contact()->fullName(), "Jordan Example");
}

TEST_F(SocialSearchTimeOutTest, LetsWhatFellDueFirstWinOnABusyMainThread) {
    const auto answerFromAnotherThread = [this](std::size_t number) {
        std::thread([&] { mSearch->answer(number, nullptr); }).join();
    };
    mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard());
    mMain.advance(4s - 1ns);
    answerFromAnotherThread(0);
    mMain.pass(1ns);
    ASSERT_EQ(mHeard.size(), 1U);
    EXPECT_EQ(heardType(), QVSocialSearchResultNotFound);
    mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard());
    mMain.advance(4s + 1ns);
    answerFromAnotherThread(1);
    mMain.pump();
    ASSERT_EQ(mHeard.size(), 2U);
    EXPECT_EQ(heardType(), QVSocialSearchResultTimedOut);
}

TEST_F(SocialSearchTimeOutTest, LetsAnEarlierTimeOutAnnounceALaterRequest) {
    mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard());
    mSearch->answer(0, nullptr);
    mMain.pass(1s);
    mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard());
    mMain.pass(3s);
    EXPECT_EQ(mHeard.size(), 2U) << "the first time-out was never cancelled and finds the second record";
    EXPECT_EQ(heardType(), QVSocialSearchResultTimedOut);
}

}  // namespace
