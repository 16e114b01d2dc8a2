#include "ManagerFixtures.h"
#include "QVCardScan/QVBizCardManager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>

namespace {

using managers::completed;
using managers::completionInto;
using managers::Outcome;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pointee;
using testsupport::CapturedLog;

/// How it is set up, and what it makes of servers, tokens and credentials.
using QVBizCardManagerTest = managers::Manager;

// The manager itself.

TEST(QVBizCardManagerShared, IsOneWithATimeOutOfFourSeconds) {
    const auto manager = QVBizCardManager::sharedManager();
    ASSERT_TRUE(manager);
    EXPECT_EQ(QVBizCardManager::sharedManager(), manager);
    EXPECT_EQ(manager->searchTimeOut(), 4.0);
}

TEST(QVBizCardManagerShared, HasAQueue) {
    const CapturedLog log;
    const auto outcome = std::make_shared<Outcome>();
    QVBizCardManager::sharedManager()->addRequest(scans::request("shared"), completionInto(outcome));
    ASSERT_TRUE(outcome->released.waitFor());
    ASSERT_TRUE(outcome->response);
    EXPECT_THAT(scans::codesOf(outcome->response->errors()), ElementsAre(1));
}

TEST(QVBizCardManagerInit, HasATimeOutOfZeroAndAnEmptyMap) {
    const QVBizCardManager manager;
    EXPECT_EQ(manager.searchTimeOut(), 0.0);
    ASSERT_TRUE(manager.socialSearchRequestMap());
    EXPECT_TRUE(manager.socialSearchRequestMap()->empty());
    EXPECT_EQ(manager.serverURL(), std::nullopt);
    EXPECT_EQ(manager.linkedInKey(), std::nullopt);
    EXPECT_EQ(manager.linkedInSecret(), std::nullopt);
    EXPECT_EQ(manager.contactNoteDataSource(), nullptr);
}

TEST(QVBizCardManagerInit, HasNoQueue) {
    const CapturedLog log;
    QVBizCardManager manager;
    const auto outcome = std::make_shared<Outcome>();
    manager.addRequest(scans::request(), completionInto(outcome));
    EXPECT_TRUE(outcome->released.isOpen());
    EXPECT_EQ(outcome->calls, 0);
    manager.cancelRequestWithIDString("note-1");
    manager.cleanUpOperationQueue();
    EXPECT_THAT(log.messages(), IsEmpty());
}

TEST(QVBizCardManagerInit, SetsItsTimeOutWithItsQueue) {
    QVBizCardManager manager;
    manager.setSearchTimeOut(1.5);
    EXPECT_EQ(manager.searchTimeOut(), 1.5);
    manager.setupOperationQueue();
    EXPECT_EQ(manager.searchTimeOut(), 4.0);
    manager.setSearchTimeOut(0.25);
    EXPECT_EQ(manager.searchTimeOut(), 0.25);
}

TEST(QVBizCardManagerInit, KeepsItsConfiguration) {
    QVBizCardManager manager;
    std::string url = "http://127.0.0.1/";
    manager.setServerURL(url);
    url = "changed";
    manager.setLinkedInKey("key");
    manager.setLinkedInSecret("");
    const auto map = std::make_shared<std::map<std::string, std::any>>();
    manager.setSocialSearchRequestMap(map);
    EXPECT_EQ(manager.serverURL(), "http://127.0.0.1/");
    EXPECT_EQ(manager.linkedInKey(), "key");
    EXPECT_EQ(manager.linkedInSecret(), "");
    EXPECT_EQ(manager.socialSearchRequestMap(), map);
}

TEST(QVBizCardManagerInit, DoesNotOwnItsDataSource) {
    QVBizCardManager manager;
    auto dataSource = std::make_shared<QVContactNoteDataSource>();
    manager.setContactNoteDataSource(dataSource);
    EXPECT_EQ(manager.contactNoteDataSource(), dataSource);
    dataSource.reset();
    EXPECT_EQ(manager.contactNoteDataSource(), nullptr);
}

// Servers.

struct ServerCase {
    const char* name;
    QVString url;
    long code;
};

class AServerURL : public QVBizCardManagerTest, public testing::WithParamInterface<ServerCase> {};

TEST_P(AServerURL, ThatServesNothingIsOneError) {
    mManager->setServerURL(GetParam().url);
    const auto outcome = add("a");
    expectCompleted(outcome);
    ASSERT_TRUE(outcome->response);
    EXPECT_THAT(scans::codesOf(outcome->response->errors()), ElementsAre(GetParam().code));
    EXPECT_EQ(outcome->response->originalNoteUUID(), GetParam().code == 1 ? std::nullopt : QVString("a"));
    EXPECT_EQ(mLog.count("<ERROR> CardScan server url is not set!"), GetParam().code == 1 ? 1U : 0U);
    EXPECT_EQ(mLog.count(completed("a")), 1U);
}

INSTANTIATE_TEST_SUITE_P(URLs, AServerURL,
                         testing::Values(ServerCase{"Unset", std::nullopt, 1}, ServerCase{"Empty", "", 1},
                                         ServerCase{"WithASpace", "http://127.0.0.1/a b", 1},
                                         ServerCase{"WithALineEnd", "http://127.0.0.1/\r\nX: 1", 1},
                                         ServerCase{"WithABadEscape", "http://127.0.0.1/%zz", 1},
                                         ServerCase{"WithABadPort", "http://127.0.0.1:port/", 1},
                                         ServerCase{"NotASCII", "http://127.0.0.1/\xC3\xA4", 1},
                                         ServerCase{"Relative", "recognise", 2},
                                         ServerCase{"Ftp", "ftp://127.0.0.1/", 2},
                                         ServerCase{"File", "file:///dev/null", 2}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(QVBizCardManagerTest, TakesTheServerOfTheMomentTheRequestIsAdded) {
    for (const char* note : {"a", "b", "c"})
        add(note);
    ASSERT_TRUE(mServer.waitForRequests(3));
    const auto waiting = add("d");
    mManager->setServerURL(std::nullopt);
    mServer.letAllGo();
    expectCompleted(waiting);
    EXPECT_THAT(waiting->response->errors(), Pointee(IsEmpty()));
}

TEST_F(QVBizCardManagerTest, CompletesWithNothingWithoutAToken) {
    std::vector<std::string> failures;
    qv::AssertionHandler::setHandler([&](const qv::AssertionFailure& failure) {
        failures.push_back(std::string(failure.description) + "|" + std::string(failure.file) + "|" +
                           std::to_string(failure.line));
    });
    mManager->setLinkedInKey("key");
    mManager->setLinkedInSecret("secret");
    const auto outcome = addRequest(scans::request("a", std::nullopt));
    expectCompleted(outcome);
    EXPECT_EQ(outcome->response, nullptr);
    EXPECT_THAT(failures, ElementsAre("Authentication token cannot be nil!|QVCardProcessingOperation|155"));
    EXPECT_THAT(mServer.tokens(), IsEmpty());
    EXPECT_EQ(mLog.count(completed("a")), 1U);
}

TEST_F(QVBizCardManagerTest, CompletesAlsoWhenTheAssertionHandlerThrows) {
    qv::AssertionHandler::setHandler([](const qv::AssertionFailure&) { throw std::logic_error("stop"); });
    const auto outcome = addRequest(scans::request("a", std::nullopt));
    expectCompleted(outcome);
    EXPECT_EQ(outcome->response, nullptr);
    mServer.letGo("b");
    expectCompleted(add("b"));
}

// The data source.

class CountingDataSource : public QVContactNoteDataSource {
  public:
    bool implementsContactMatchingFullName() const override { return true; }
    std::shared_ptr<QVVeltoContact> contactMatchingFullName(const QVString&, const QVString&, const QVString&,
                                                            const QVString&, const QVString&) override {
        ++calls;
        return nullptr;
    }
    std::atomic<int> calls{0};
};

TEST_F(QVBizCardManagerTest, GivesOperationsItsDataSourceOfTheMoment) {
    const auto first = std::make_shared<CountingDataSource>();
    const auto second = std::make_shared<CountingDataSource>();
    mManager->setContactNoteDataSource(first);
    const auto outcome = add("a");
    mManager->setContactNoteDataSource(second);
    mServer.letGo("a");
    expectCompleted(outcome);
    EXPECT_EQ(first->calls, 1);
    EXPECT_EQ(second->calls, 0);
}

TEST_F(QVBizCardManagerTest, KeepsNoDataSourceAlive) {
    auto dataSource = std::make_shared<CountingDataSource>();
    const std::weak_ptr watched = dataSource;
    mManager->setContactNoteDataSource(dataSource);
    const auto outcome = add("a");
    ASSERT_TRUE(mServer.waitForRequests(1));
    dataSource.reset();
    EXPECT_TRUE(watched.expired());
    mServer.letGo("a");
    expectCompleted(outcome);
    EXPECT_TRUE(outcome->response->qvmlContent());
}

// Whether a social search is possible.

struct SearchCase {
    const char* name;
    QVString key;
    QVString secret;
    bool expected;
};

class ASearch : public QVBizCardManagerTest, public testing::WithParamInterface<SearchCase> {};

TEST_P(ASearch, NeedsAKeyAndASecret) {
    mManager->setLinkedInKey(GetParam().key);
    mManager->setLinkedInSecret(GetParam().secret);
    EXPECT_EQ(mManager->canStartLinkedInSearchForCardProcessingResponse(std::make_shared<QVCardProcessingResponse>()),
              GetParam().expected);
    EXPECT_FALSE(mManager->canStartLinkedInSearchForCardProcessingResponse(nullptr));
    const auto outcome = add("a");
    mServer.letGo("a");
    expectCompleted(outcome);
    EXPECT_EQ(outcome->response->willStartLinkedInSearch(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Credentials, ASearch,
                         testing::Values(SearchCase{"Both", "key", "secret", true},
                                         SearchCase{"BothEmpty", "", "", true},
                                         SearchCase{"KeyAlone", "key", std::nullopt, false},
                                         SearchCase{"SecretAlone", std::nullopt, "secret", false},
                                         SearchCase{"Neither", std::nullopt, std::nullopt, false}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(QVBizCardManagerTest, MarksResponsesByTheCredentialsOfTheirCompletion) {
    const auto outcome = add("a");
    ASSERT_TRUE(mServer.waitForRequests(1));
    mManager->setLinkedInKey("key");
    mManager->setLinkedInSecret("secret");
    mServer.letGo("a");
    expectCompleted(outcome);
    EXPECT_TRUE(outcome->response->willStartLinkedInSearch());
}

TEST_F(QVBizCardManagerTest, MarksAFailedResponseToo) {
    mManager->setServerURL(std::nullopt);
    mManager->setLinkedInKey("key");
    mManager->setLinkedInSecret("secret");
    const auto outcome = add("a");
    expectCompleted(outcome);
    EXPECT_TRUE(outcome->response->willStartLinkedInSearch());
}

}  // namespace
