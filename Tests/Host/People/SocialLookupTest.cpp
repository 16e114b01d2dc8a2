#include "Host/People/ScannedCard.h"
#include "People/SocialLookup.h"
#include "QVCardScan/QVBizCardManager.h"
#include "QVCardScan/QVCardProcessingResponse.h"
#include "QVSocialSearch/QVSocialSearchManager.h"
#include "Support/TestImages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

namespace {

using namespace std::chrono_literals;
using qvhost::MainLoop;
using qvhost::SearchOutcome;
using testing::HasSubstr;

/// A search that answers as it is told.
class FakeSearch : public QVSocialSearchManager {
  public:
    std::function<void(std::shared_ptr<QVSocialSearchRequest> request, Completion completion)> answer;
    int asked = 0;

    void addSearchByRequest(std::shared_ptr<QVSocialSearchRequest> request, Completion completion) override {
        ++asked;
        answer(std::move(request), std::move(completion));
    }
};

class SocialLookup : public testing::Test {
  protected:
    SocialLookup() { QVSocialSearchManager::setSharedManager(mSearch); }
    ~SocialLookup() override {
        QVSocialSearchManager::setSharedManager(nullptr);
        QVBizCardManager::sharedManager()->setLinkedInKey(std::nullopt);
        QVBizCardManager::sharedManager()->setLinkedInSecret(std::nullopt);
    }
    void answerWith(std::shared_ptr<QVSocialProfile> profile) {
        mSearch->answer = [profile](const auto& request, const auto& completion) {
            mAddress = request->emailAddress();
            qv::MainQueue::executor()->dispatchAsync([=, requestID = request->requestID()] {
                completion(QVSocialSearchResponse::initWithRequestID(requestID, profile));
            });
        };
    }
    SearchOutcome run() { return qvhost::SocialLookup(mLoop, "key", "secret").run(mResponse); }

    static inline QVString mAddress;
    qv::ManualClock mClock;
    MainLoop mLoop{mClock.clock()};
    std::shared_ptr<FakeSearch> mSearch = std::make_shared<FakeSearch>();
    std::shared_ptr<QVCardProcessingResponse> mResponse = testsupport::scanOf(testsupport::recognitionOfAda()).response;
    const QVString mNoteBefore = mResponse->qvmlContent();
};

TEST_F(SocialLookup, GivesTheLibraryWhatItWantsBeforeItSearches) {
    const qvhost::SocialLookup lookup(mLoop, "my key", "my secret");
    EXPECT_EQ(QVBizCardManager::sharedManager()->linkedInKey(), "my key");
    EXPECT_EQ(QVBizCardManager::sharedManager()->linkedInSecret(), "my secret");
}

TEST_F(SocialLookup, TakesOverWhatWasFound) {
    auto profile = std::make_shared<QVSocialProfile>();
    profile->setCompany("Example Ltd");
    profile->setProfileURLLinkedInPublic("https://linkedin.example/ada");
    profile->setAddressBookAvatarData(testsupport::makePNG(testsupport::quarters(4, 4)));
    answerWith(profile);
    const SearchOutcome outcome = run();
    EXPECT_EQ(outcome.kind, SearchOutcome::Kind::Found);
    EXPECT_EQ(outcome.resultType, QVSocialSearchResultLinkedIn);
    EXPECT_EQ(outcome.profile, profile);
    EXPECT_EQ(mAddress, "ada@example.com");
    EXPECT_EQ(mResponse->contact()->company(), "Example Ltd");
    EXPECT_THAT(mResponse->qvmlContent().value_or(""), HasSubstr("Example Ltd"));
    ASSERT_TRUE(mResponse->avatars());
    EXPECT_EQ(mResponse->avatars()->front(), mResponse->contact()->avatar());
    EXPECT_TRUE(mResponse->willStartLinkedInSearch());
}

TEST_F(SocialLookup, LeavesEverythingWhenNobodyIsFound) {
    answerWith(nullptr);
    const SearchOutcome outcome = run();
    EXPECT_EQ(outcome.kind, SearchOutcome::Kind::NotFound);
    EXPECT_EQ(outcome.resultType, QVSocialSearchResultNotFound);
    EXPECT_EQ(outcome.profile, nullptr);
    EXPECT_EQ(mResponse->qvmlContent(), mNoteBefore);
    EXPECT_EQ(mResponse->avatars(), nullptr);
}

TEST_F(SocialLookup, WaitsForTheLibrarysTimeOut) {
    mSearch->answer = [this](const auto&, const auto&) { mClock.advance(4s); };
    const SearchOutcome outcome = run();
    EXPECT_EQ(outcome.kind, SearchOutcome::Kind::TimedOut);
    EXPECT_EQ(outcome.resultType, QVSocialSearchResultTimedOut);
    EXPECT_EQ(mResponse->qvmlContent(), mNoteBefore);
}

TEST_F(SocialLookup, DoesNotSearchForACardWithoutAddress) {
    answerWith(nullptr);
    mResponse = testsupport::scanOf(testsupport::recognitionOfAda("")).response;
    EXPECT_EQ(run().kind, SearchOutcome::Kind::NoAddress);
    mResponse = testsupport::scanOf(testsupport::recognitionOfAda()).response;
    mResponse->setContact(nullptr);
    EXPECT_EQ(run().kind, SearchOutcome::Kind::NoAddress);
    EXPECT_EQ(mSearch->asked, 0);
}

TEST_F(SocialLookup, IsNotMisledByOtherSearches) {
    mSearch->answer = [this](const auto& request, const auto& completion) {
        qv::MainQueue::executor()->dispatchAsync([this, request, completion] {
            auto other = std::make_shared<qv::Dictionary>(
                qv::Dictionary{{std::string(kQVSocialSearchRequestIDKey), std::string("note-2")}});
            QVBizCardManager::sendSocialSearchNotFoundNotificationForRequestInfo(other);
            auto profile = std::make_shared<QVSocialProfile>();
            completion(QVSocialSearchResponse::initWithRequestID(request->requestID(), profile));
        });
    };
    EXPECT_EQ(run().kind, SearchOutcome::Kind::Found);
}

}  // namespace
