#include "QVPlatform/AssertionHandler.h"
#include "SocialSearchFixtures.h"

#include <gmock/gmock.h>

#include <chrono>

using namespace std::chrono_literals;

namespace {

using socialsearch::profileWithLinks;
using socialsearch::scanned;
using socialsearch::scannedCard;
using testing::ElementsAre;
using testing::IsEmpty;

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
