#include "QVPlatform/AssertionHandler.h"
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
using socialsearch::scanned;
using socialsearch::scannedCard;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

constexpr const char* kTimedOut = "<INFO> sending out social search timed out notification";
constexpr const char* kNothingFound = "<INFO> Social Search Response: request note-1: nothing found";

class SocialSearchTest : public socialsearch::SocialSearchFixture {};

TEST_F(SocialSearchTest, RecordsWhatItLooksFor) {
    const auto response = scannedCard();
    const auto before = std::chrono::system_clock::now();
    mManager->addSocialSearchRequestFromCardProcessingResponse(response);
    const auto record = mManager->socialSearchRequestInfoWithID("note-1");
    ASSERT_TRUE(record);
    EXPECT_EQ(record->size(), 3U);
    EXPECT_EQ(std::any_cast<std::string>(record->at("QVSocialSearchRequestIDKey")), "note-1");
    EXPECT_EQ(std::any_cast<std::shared_ptr<QVVeltoContact>>(record->at("QVSocialSearchBaseVeltoContactKey")),
              response->contact());
    const auto started =
        std::any_cast<std::chrono::system_clock::time_point>(record->at("QVSocialSearchStartedDateKey"));
    EXPECT_GE(started, before);
    EXPECT_LE(started, std::chrono::system_clock::now());
    EXPECT_EQ(mManager->socialSearchRequestMap()->size(), 1U);
    EXPECT_EQ(mManager->socialSearchRequestInfoWithID("note-2"), nullptr);
    EXPECT_EQ(mManager->socialSearchRequestInfoWithID(std::nullopt), nullptr);
}

TEST_F(SocialSearchTest, AsksForTheFirstAddress) {
    const auto response = scannedCard();
    EXPECT_FALSE(response->willStartLinkedInSearch());
    mManager->addSocialSearchRequestFromCardProcessingResponse(response);
    EXPECT_TRUE(response->willStartLinkedInSearch());
    ASSERT_EQ(mSearch->requests.size(), 1U);
    EXPECT_EQ(mSearch->requests.front()->emailAddress(), "jordan@example.com");
    EXPECT_EQ(mSearch->requests.front()->requestID(), "note-1");
}

TEST_F(SocialSearchTest, MakesNoRequestWithoutAnAddress) {
    EXPECT_EQ(mManager->searchRequestFromCardProcessingResponse(nullptr), nullptr);
    EXPECT_EQ(mManager->searchRequestFromCardProcessingResponse(scanned({scans::kName})), nullptr);
    const auto response = scannedCard();
    response->contactEmails()->insert(response->contactEmails()->begin(), "");
    EXPECT_EQ(mManager->searchRequestFromCardProcessingResponse(response), nullptr) << "only the first one counts";
    response->contactEmails()->clear();
    EXPECT_EQ(mManager->searchRequestFromCardProcessingResponse(response), nullptr);
}

TEST_F(SocialSearchTest, PassesAnAbsentRequestOn) {
    const auto response = scanned({scans::kName});
    mManager->addSocialSearchRequestFromCardProcessingResponse(response);
    EXPECT_TRUE(response->willStartLinkedInSearch());
    ASSERT_THAT(mSearch->requests, ElementsAre(nullptr));
    mSearch->answer(0, nullptr);
    EXPECT_TRUE(mLog.contains("<INFO> Social Search Response: request (null): nothing found"));
    EXPECT_THAT(mHeard, IsEmpty()) << "an answer without a tag belongs to nobody";
    mMain.pass(4s);
    ASSERT_EQ(mHeard.size(), 1U);
    EXPECT_EQ(heardType(), QVSocialSearchResultTimedOut);
}

TEST_F(SocialSearchTest, DoesNothingWithoutAResponse) {
    mManager->addSocialSearchRequestFromCardProcessingResponse(nullptr);
    mManager->startLinkedInSearchFromCardProcessingResponse(nullptr);
    mMain.pass(1h);
    EXPECT_THAT(mHeard, IsEmpty());
    EXPECT_THAT(mSearch->requests, IsEmpty());
    EXPECT_THAT(mLog.messages(), IsEmpty());
}

TEST_F(SocialSearchTest, AssertsThatThereIsANoteAndAContact) {
    std::vector<std::string> failures;
    qv::AssertionHandler::setHandler([&](const qv::AssertionFailure& failure) {
        failures.emplace_back(failure.function);
        EXPECT_EQ(failure.file, "QVBizCardManager");
        EXPECT_GT(failure.line, 0);
    });
    const auto withoutContact = scannedCard();
    withoutContact->setContact(nullptr);
    mManager->addSocialSearchRequestFromCardProcessingResponse(withoutContact);
    mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard(/*noteUUID=*/std::nullopt));
    qv::AssertionHandler::setHandler({});
    EXPECT_THAT(failures, ElementsAre("addSocialSearchRequestFromCardProcessingResponse:",
                                      "addSocialSearchRequestFromCardProcessingResponse:"));
    EXPECT_THAT(*mManager->socialSearchRequestMap(), IsEmpty());
    EXPECT_THAT(mSearch->requests, IsEmpty());
    EXPECT_FALSE(withoutContact->willStartLinkedInSearch());
    mMain.pass(1h);
    EXPECT_THAT(mHeard, IsEmpty());
}

TEST_F(SocialSearchTest, LogsTheAssertionByDefault) {
    const auto response = scannedCard();
    response->setContact(nullptr);
    mLog.clear();
    mManager->addSocialSearchRequestFromCardProcessingResponse(response);
    EXPECT_TRUE(
        mLog.mentions("<ERROR> Assertion failed: A social search needs a note UUID and a contact! in "
                      "addSocialSearchRequestFromCardProcessingResponse:"));
}

TEST_F(SocialSearchTest, TimesOutAfterFourSecondsByDefault) {
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

TEST_F(SocialSearchTest, AsksTheHostsLoopForNoDelayInThePast) {
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

TEST_F(SocialSearchTest, LogsWhatTheHostsLoopThrows) {
    const auto executor = std::make_shared<ThrowingExecutor>();
    qv::MainQueue::setExecutor(executor);
    mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard());
    EXPECT_EQ(mLog.count("<ERROR> Exception from the main executor: no loop for delays"), 1U);
    ASSERT_EQ(mSearch->requests.size(), 1U) << "the search goes on without a time-out";
    mSearch->answer(0, nullptr);
    EXPECT_EQ(mLog.count("<ERROR> Exception from the main executor: no loop for work"), 1U);
    EXPECT_THAT(mHeard, IsEmpty());
}

TEST_F(SocialSearchTest, NeverTimesOutAfterForEver) {
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

TEST_F(SocialSearchTest, TimesOutWhenTheSearchCannotStart) {
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

TEST_F(SocialSearchTest, AnnouncesAnAnswerBeforeTheTimeOutOnly) {
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

TEST_F(SocialSearchTest, LogsAndDropsALateAnswer) {
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

TEST_F(SocialSearchTest, DropsASecondAnswer) {
    mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard());
    mSearch->answer(0, nullptr);
    mSearch->answer(0, profileWithLinks("https://example.com/in", std::nullopt));
    EXPECT_EQ(mHeard.size(), 1U);
}

TEST_F(SocialSearchTest, CarriesAnAnswerFromAnotherThreadOver) {
    mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard());
    mLog.clear();
    std::thread([this] { mSearch->answer(0, nullptr); }).join();
    EXPECT_THAT(mHeard, IsEmpty());
    EXPECT_TRUE(mManager->socialSearchRequestInfoWithID("note-1")) << "nothing is touched on that thread";
    EXPECT_THAT(mLog.messages(), IsEmpty());
    mMain.pump();
    EXPECT_EQ(mHeard.size(), 1U) << "on the main thread, as the fixture checks";
    EXPECT_EQ(mLog.messages().front(), kNothingFound);
}

TEST_F(SocialSearchTest, LetsWhatFellDueFirstWinOnABusyMainThread) {
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

TEST_F(SocialSearchTest, TakesAnAnswerInsideTheCall) {
    // A host's own search may know the answer at once; the record is there by then.
    struct KnowingSearch : QVSocialSearchManager {
        void addSearchByRequest(std::shared_ptr<QVSocialSearchRequest> request, Completion completion) override {
            completion(QVSocialSearchResponse::initWithRequestID(request->requestID(), nullptr));
        }
    };
    QVSocialSearchManager::setSharedManager(std::make_shared<KnowingSearch>());
    const auto response = scannedCard();
    mManager->addSocialSearchRequestFromCardProcessingResponse(response);
    ASSERT_EQ(mHeard.size(), 1U);
    EXPECT_EQ(heardType(), QVSocialSearchResultNotFound);
    EXPECT_TRUE(response->willStartLinkedInSearch());
    mMain.pass(1h);
    EXPECT_EQ(mHeard.size(), 1U);
}

TEST_F(SocialSearchTest, DropsAnAnswerWhenTheMainExecutorIsGone) {
    auto own = std::make_shared<qv::PumpedExecutor>();
    const auto before = qv::MainQueue::executor();
    qv::MainQueue::setExecutor(own);
    mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard());
    qv::MainQueue::setExecutor(before);
    const std::weak_ptr<qv::PumpedExecutor> gone = own;
    own.reset();
    EXPECT_TRUE(gone.expired()) << "a search that waits does not hold it";
    mSearch->answer(0, nullptr);
    EXPECT_THAT(mHeard, IsEmpty()) << "its time-out went with it";
}

TEST_F(SocialSearchTest, MayBeAskedAgainByAnObserver) {
    const auto again = qv::NotificationCenter::defaultCenter().addObserverForName(
        "QVSocialSearchFinishedNotification", [this](const auto&) {
            if (mHeard.size() == 1) mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard());
        });
    mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard());
    mSearch->answer(0, nullptr);
    ASSERT_EQ(mHeard.size(), 1U);
    EXPECT_TRUE(mManager->socialSearchRequestInfoWithID("note-1")) << "of the second search";
    mSearch->answer(1, nullptr);
    EXPECT_EQ(mHeard.size(), 2U);
}

TEST_F(SocialSearchTest, ReplacesAPendingRecord) {
    const auto first = scannedCard();
    const auto second = scannedCard();
    mManager->addSocialSearchRequestFromCardProcessingResponse(first);
    mMain.pass(1s);
    mManager->addSocialSearchRequestFromCardProcessingResponse(second);
    EXPECT_EQ(mManager->socialSearchRequestMap()->size(), 1U);
    EXPECT_EQ(mSearch->requests.size(), 2U);
    mMain.pass(3s);
    ASSERT_EQ(mHeard.size(), 1U) << "the first time-out is the first event";
    EXPECT_EQ(heard<std::shared_ptr<QVVeltoContact>>("QVSocialSearchBaseVeltoContactKey"), second->contact());
    mSearch->answer(0, nullptr);
    mSearch->answer(1, nullptr);
    mMain.pass(1h);
    EXPECT_EQ(mHeard.size(), 1U) << "every later one is silent";
}

TEST_F(SocialSearchTest, AnnouncesTheNewerRecordWithTheOlderAnswer) {
    const auto first = scannedCard();
    const auto second = scannedCard();
    mManager->addSocialSearchRequestFromCardProcessingResponse(first);
    mManager->addSocialSearchRequestFromCardProcessingResponse(second);
    mSearch->answer(0, nullptr);
    ASSERT_EQ(mHeard.size(), 1U);
    EXPECT_EQ(heard<std::shared_ptr<QVVeltoContact>>("QVSocialSearchBaseVeltoContactKey"), second->contact());
    mSearch->answer(1, nullptr);
    mMain.pass(1h);
    EXPECT_EQ(mHeard.size(), 1U);
}

TEST_F(SocialSearchTest, LetsAnEarlierTimeOutAnnounceALaterRequest) {
    mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard());
    mSearch->answer(0, nullptr);
    mMain.pass(1s);
    mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard());
    mMain.pass(3s);
    EXPECT_EQ(mHeard.size(), 2U) << "the first time-out was never cancelled and finds the second record";
    EXPECT_EQ(heardType(), QVSocialSearchResultTimedOut);
}

TEST_F(SocialSearchTest, KeepsSearchesOfDifferentNotesApart) {
    mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard("note-1"));
    mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard("note-2"));
    mSearch->answer(1, nullptr);
    ASSERT_EQ(mHeard.size(), 1U);
    EXPECT_EQ(heard<std::string>("QVSocialSearchRequestIDKey"), "note-2");
    mMain.pass(4s);
    ASSERT_EQ(mHeard.size(), 2U);
    EXPECT_EQ(heard<std::string>("QVSocialSearchRequestIDKey"), "note-1");
}

TEST_F(SocialSearchTest, AnnouncesWhenTheManagerIsGone) {
    mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard("note-1"));
    mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard("note-2"));
    mManager.reset();
    mSearch->answer(0, nullptr);
    EXPECT_EQ(mHeard.size(), 1U);
    mMain.pass(4s);
    ASSERT_EQ(mHeard.size(), 2U);
    EXPECT_EQ(heardType(), QVSocialSearchResultTimedOut);
}

TEST_F(SocialSearchTest, CopesWithAnAbsentAnswerAndAnAbsentMap) {
    mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard());
    mLog.clear();
    mSearch->completion(0)(nullptr);
    EXPECT_THAT(mLog.messages(), ElementsAre("<INFO> Social Search Response: (null)"));
    mManager->setSocialSearchRequestMap(nullptr);
    mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard());
    EXPECT_EQ(mManager->socialSearchRequestInfoWithID("note-1"), nullptr);
    mSearch->answer(1, nullptr);
    mMain.pass(4s);
    EXPECT_THAT(mHeard, IsEmpty());
}

TEST_F(SocialSearchTest, IgnoresWhatIsNoRecordInTheMap) {
    (*mManager->socialSearchRequestMap())["note-1"] = std::string("a host's own");
    EXPECT_EQ(mManager->socialSearchRequestInfoWithID("note-1"), nullptr);
}

TEST_F(SocialSearchTest, SearchesWithTheLibrarysOwnManagerToo) {
    QVSocialSearchManager::setSharedManager(nullptr);
    mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard());
    EXPECT_THAT(mHeard, IsEmpty());
    ASSERT_TRUE(mMain.pumpUntil([this] { return !mHeard.empty(); }));
    EXPECT_EQ(heardType(), QVSocialSearchResultNotFound);
}

}  // namespace
