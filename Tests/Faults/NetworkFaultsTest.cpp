#include "Faults/Aftermath.h"
#include "Faults/NetworkFault.h"
#include "Faults/RecognitionRoad.h"
#include "Faults/SwiftClock.h"
#include "QVCardScan/QVCardScanDefines.h"
#include "QVPlatform/NotificationCenter.h"
#include "QVSocialSearch/QVCardDAVAddressBook.h"
#include "QVSocialSearch/QVGravatarProvider.h"
#include "QVSocialSearch/QVLinkFetcher.h"
#include "SocialSearch/VCardFolderSupport.h"
#include "Source/Controller/SocialSearchFixtures.h"
#include "Support/CapturedLog.h"
#include "Support/FakeCardDAVServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <any>
#include <chrono>
#include <functional>
#include <string>
#include <thread>
#include <vector>

/// The rows of NetworkFaults.cpp on the roads inside a process. What the programs do with them is in
/// ProgramFaultsTest.cpp.
namespace faults {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pointee;

std::string nameOf(const testing::TestParamInfo<NetworkFault>& row) {
    return row.param.name;
}

std::string textOf(const qv::Error& error) {
    return std::any_cast<std::string>(error.userInfo.at(std::string(qv::kErrorDescriptionKey)));
}

/// On a thread of its own, as in a host: what the thread keeps open for its next call goes with it.
void onAnotherThread(const std::function<void()>& work) {
    std::thread(work).join();
}

/// One fault, begun when what is loaded once is loaded and what was there is counted; over when its server is gone.
class ARoad : public testing::TestWithParam<NetworkFault> {
  protected:
    /// Does what meets no fault, then what meets one with the clocks at that speed, whose time is taken, and then what
    /// meets none once more.
    void meet(long speed, const std::function<void()>& good, const std::function<void(const std::string& url)>& bad) {
        const Aftermath before([&] { onAnotherThread(good); }, mOwnThreads);
        {
            const FaultyServer faulty = GetParam().begin();
            onAnotherThread([&] {
                timed(speed, [&] { bad(faulty.url); });
                good();
            });
            faulty.expectAfterwards();
        }
        before.expectAsBefore(GetParam().megabytes);
    }
    /// Not before its time, and not long after it, on a machine that has other things to do. A clock may jump before a
    /// transfer has looked at it; then a whole minute without progress comes behind the jump.
    void expectEndBetween(long seconds, long mostSeconds, long speed) const {
        constexpr long kPatience = 120;
        EXPECT_GE(mTime, std::chrono::seconds(seconds));
        EXPECT_LE(mTime, std::chrono::seconds(mostSeconds + kPatience * speed));
    }

    /// Of the good server, where a road has one from the beginning.
    std::size_t mOwnThreads = 1;

  private:
    void timed(long speed, const std::function<void()>& work) {
        const SwiftClock swift(speed);
        const auto begin = std::chrono::steady_clock::now();
        work();
        mTime = std::chrono::steady_clock::now() - begin;
    }

    std::chrono::nanoseconds mTime{};
};

class OnTheRoadOfRecognition : public ARoad {
  protected:
    OnTheRoadOfRecognition() { mOwnThreads = 0; }

    static void expectEnd(const std::shared_ptr<QVCardProcessingResponse>& response) {
        ASSERT_TRUE(response);
        ASSERT_TRUE(response->errors());
        const NetworkFault& fault = GetParam();
        if (fault.end == End::Read) {
            EXPECT_THAT(response->errors(), Pointee(IsEmpty()));
            EXPECT_TRUE(response->rawResultForFirstCard());
            return;
        }
        EXPECT_EQ(response->rawResultForFirstCard(), std::nullopt);
        EXPECT_EQ(response->contactName(), std::nullopt);
        EXPECT_TRUE(response->contact()) << "a contact of nothing, as the host expects it";
        EXPECT_THAT(scans::codesOf(response->errors()), ElementsAre(fault.end == End::NotReached ? 2 : 3));
        if (fault.end == End::NotReached) expectTransportError(response->errors()->front());
    }
    static void expectTransportError(const qv::Error& error) {
        const qv::Error underlying = scans::underlyingErrorOf(error);
        EXPECT_EQ(underlying.domain, "QVURLErrorDomain");
        EXPECT_THAT(GetParam().codes, Contains(underlying.code)) << textOf(underlying);
        EXPECT_THAT(textOf(underlying), HasSubstr(GetParam().text));
        EXPECT_NE(textOf(underlying), "");
        EXPECT_EQ(textOf(underlying).find(kToken), std::string::npos);
    }
};

TEST_P(OnTheRoadOfRecognition, ThreeCardsEndAndTheFourthIsRead) {
    meet(GetParam().speed, RecognitionRoad::warmUp, [](const std::string& url) {
        for (const auto& response : RecognitionRoad::send(url, GetParam().speed))
            expectEnd(response);
    });
    expectEndBetween(GetParam().seconds, GetParam().seconds, GetParam().speed);
}

INSTANTIATE_TEST_SUITE_P(Faults, OnTheRoadOfRecognition, testing::ValuesIn(networkFaults()), nameOf);

/// Pictures and cards that profiles link to: whatever happens there, nothing is found, and in ten seconds all is over.
class OnTheRoadOfLinks : public ARoad {
  protected:
    OnTheRoadOfLinks() {
        QVLinkPolicy policy;
        policy.allowsPrivateAddresses = true;
        QVLinkFetcher::setPolicy(policy);
        mGood.respond(testsupport::ScriptedServer::answer(200, "picture"));
    }
    ~OnTheRoadOfLinks() override { QVLinkFetcher::setPolicy({}); }

    void expectGoodLink() const {
        const auto found = QVLinkFetcher::contentsOfLink(mGood.url());
        EXPECT_EQ(std::string(found->begin(), found->end()), "picture");
    }

    testsupport::ScriptedServer mGood;
};

TEST_P(OnTheRoadOfLinks, NothingIsFoundAndTheNextLinkIs) {
    const auto expectNothing = [](const std::string& url) {
        const auto found = QVLinkFetcher::contentsOfLink(url);
        // A packed answer is taken as it is, and is no picture then.
        if (GetParam().end == End::Unreadable && found) {
            EXPECT_EQ(found->front(), 0x1F);
        } else {
            EXPECT_EQ(found, std::nullopt);
        }
    };
    meet(
        GetParam().speed, [this] { expectGoodLink(); }, expectNothing);
    constexpr long kTenSeconds = 10;
    expectEndBetween(0, kTenSeconds, GetParam().speed);
}

INSTANTIATE_TEST_SUITE_P(Faults, OnTheRoadOfLinks, testing::ValuesIn(networkFaultsOf(Link)), nameOf);

/// An address book on a server: every operation ends with an error that a person understands, and a save that failed
/// can be done again.
class OnTheRoadOfCardDAV : public ARoad {
  protected:
    static constexpr const char* kPassword = "s3cret-pass";
    /// Here the limits are half a minute without progress, and two minutes in all for each operation.
    static constexpr long kTwoOperations = 2 * 120;

    static std::unique_ptr<QVCardDAVAddressBook> bookAt(const std::string& url) {
        return std::make_unique<QVCardDAVAddressBook>(
            url, QVCardDAVCredentials{.user = "ada", .password = kPassword, .token = std::nullopt});
    }
    void expectGoodSave() const {
        const auto result =
            bookAt(mGood.collection())->saveProfile(vcardtest::profileWithEmail("Ada", "ada@example.com"));
        EXPECT_FALSE(result.error) << textOf(*result.error);
    }
    static void expectError(const std::optional<qv::Error>& error) {
        ASSERT_TRUE(error);
        EXPECT_EQ(error->domain, "QVAddressBookErrorDomain");
        EXPECT_EQ(textOf(*error).find(kPassword), std::string::npos);
        if (GetParam().end == End::Read) return;
        EXPECT_THAT(textOf(*error), HasSubstr(GetParam().text));
    }
    testsupport::CapturedLog mLog;
    testsupport::FakeCardDAVServer mGood;
};

TEST_P(OnTheRoadOfCardDAV, EachOperationEndsWithAnErrorAndTheNextServerIsReached) {
    const auto expectErrors = [](const std::string& url) {
        std::optional<qv::Error> error;
        EXPECT_THAT(bookAt(url)->profiles(&error), IsEmpty());
        expectError(error);
        const auto result = bookAt(url)->saveProfile(vcardtest::profileWithEmail("Ada", "ada@example.com"));
        expectError(result.error);
        EXPECT_EQ(result.UID, std::nullopt);
    };
    meet(
        GetParam().speed, [this] { expectGoodSave(); }, expectErrors);
    EXPECT_FALSE(mLog.mentions(kPassword));
    expectEndBetween(0, kTwoOperations, GetParam().speed);
}

INSTANTIATE_TEST_SUITE_P(Faults, OnTheRoadOfCardDAV, testing::ValuesIn(networkFaultsOf(CardDAV)), nameOf);

/// What is known of a card's person, asked of a service on the network: the host hears once that nothing was found, and
/// the next card's person is.
class OnTheRoadOfSearch : public ARoad {
  protected:
    /// One manager of cards with its search, on the thread that it is made on.
    class Searcher {
      public:
        Searcher() {
            QVSocialSearchManager::setSharedManager(mSearch);
            mManager.setSearchTimeOut(4);
            mManager.setLinkedInKey("key");
            mManager.setLinkedInSecret("secret");
        }
        ~Searcher() { QVSocialSearchManager::setSharedManager(nullptr); }
        Searcher(const Searcher&) = delete;
        Searcher& operator=(const Searcher&) = delete;

        /// Searches at that service; how the host was told, in the end.
        std::vector<int> resultsOfSearchAt(const std::string& url, const std::string& note) {
            mHeard.clear();
            QVGravatarOptions options;
            options.baseURL = url.substr(0, url.size() - 1);
            mSearch->setProviders({std::make_shared<QVGravatarProvider>(options)});
            mManager.addSocialSearchRequestFromCardProcessingResponse(socialsearch::scannedCard(note));
            EXPECT_TRUE(mMain.pumpUntil([this] { return !mHeard.empty(); }));
            mMain.pass(std::chrono::seconds(10));
            return mHeard;
        }

      private:
        testsupport::DrivenMainQueue mMain;
        std::shared_ptr<QVSocialSearchManager> mSearch = std::make_shared<QVSocialSearchManager>();
        QVBizCardManager mManager;
        std::vector<int> mHeard;
        qv::NotificationCenter::Token mToken = qv::NotificationCenter::defaultCenter().addObserverForName(
            kQVSocialSearchFinishedNotification, [this](const qv::Notification& notification) {
                mHeard.push_back(std::any_cast<QVSocialSearchResultType>(
                    notification.userInfo.at(std::string(kQVSocialSearchResultTypeKey))));
            });
    };

    OnTheRoadOfSearch() {
        mGood.respond(testsupport::ScriptedServer::answer(
            200, R"({"verified_accounts": [{"service_type": "facebook", "url": "https://fb.com/jordan"}]})"));
    }
    void expectFound() const {
        Searcher searcher;
        expectFound(searcher);
    }
    void expectFound(Searcher& searcher) const {
        EXPECT_THAT(searcher.resultsOfSearchAt(mGood.url(), "good card"), ElementsAre(QVSocialSearchResultFacebook));
    }

    testsupport::CapturedLog mLog;
    testsupport::ScriptedServer mGood;
};

TEST_P(OnTheRoadOfSearch, TheHostHearsOnceThatNothingWasFoundAndTheNextIs) {
    const auto expectNothing = [this](const std::string& url) {
        Searcher searcher;
        const auto results = searcher.resultsOfSearchAt(url, "bad card");
        EXPECT_THAT(results, ElementsAre(testing::AnyOf(QVSocialSearchResultNotFound, QVSocialSearchResultTimedOut)));
        expectFound(searcher);
    };
    meet(
        1, [this] { expectFound(); }, expectNothing);
    constexpr long kFourSeconds = 4;
    expectEndBetween(0, kFourSeconds, 1);
}

INSTANTIATE_TEST_SUITE_P(Faults, OnTheRoadOfSearch, testing::ValuesIn(networkFaultsOf(Search)), nameOf);

}  // namespace
}  // namespace faults
