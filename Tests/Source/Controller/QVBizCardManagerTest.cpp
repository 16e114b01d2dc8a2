#include "../Operation/ScanFixtures.h"
#include "QVCardScan/QVBizCardManager.h"
#include "QVCardScan/QVCardProcessingOperation.h"
#include "QVPlatform/AssertionHandler.h"
#include "Support/CapturedLog.h"
#include "Support/Gate.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <stdexcept>
#include <thread>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pointee;
using testsupport::CapturedLog;
using testsupport::Gate;
using testsupport::ScriptedConnection;
using testsupport::ScriptedRequest;
using testsupport::ScriptedServer;

constexpr const char* kNoNote = "<WARNING> The request doesn't have a note UUID! Ignored.";
constexpr const char* kNoImages = "<WARNING> The request doesn't contain any images! Ignored.";
constexpr const char* kSameNote = "<WARNING> We already added the same request! Ignored.";

std::string performing(const std::string& note) {
    return "Performing operation with ID: " + note;
}
std::string completed(const std::string& note) {
    return "<INFO> Operation with ID: " + note + " completed!";
}
std::string cancelled(const std::string& note) {
    return "<INFO> Operation with ID: " + note + " is cancelled!";
}

/// What became of one request. Its completion block is released when the manager is through with it, called or not.
struct Outcome {
    Gate called;
    Gate released;
    std::atomic<int> calls{0};
    std::shared_ptr<QVCardProcessingResponse> response;
    std::thread::id thread;
};
using OutcomePtr = std::shared_ptr<Outcome>;

QVBizCardManager::Completion completionInto(const OutcomePtr& outcome, std::function<void()> after = {}) {
    const std::shared_ptr<void> whileHeld(nullptr, [outcome](void*) { outcome->released.open(); });
    return [outcome, whileHeld, after = std::move(after)](std::shared_ptr<QVCardProcessingResponse> response) {
        outcome->response = std::move(response);
        outcome->thread = std::this_thread::get_id();
        ++outcome->calls;
        outcome->called.open();
        if (after) after();
    };
}

/// A server that holds each request until its token is let go, and counts how many it holds at once.
class HoldingServer {
  public:
    HoldingServer() {
        mServer.handle([this](ScriptedConnection& connection, const ScriptedRequest& request) {
            arrive();
            gate(request.header("auth").value_or("")).wait();
            leave();
            connection.write(scans::answer({scans::kName, scans::kTitle, scans::kEmail}));
        });
    }
    ~HoldingServer() { letAllGo(); }
    HoldingServer(const HoldingServer&) = delete;
    HoldingServer& operator=(const HoldingServer&) = delete;

    std::string url() const { return mServer.url(); }
    void letGo(const std::string& token) { gate(token).open(); }
    void letAllGo() {
        const std::lock_guard lock(mMutex);
        mAllGo = true;
        for (auto& [token, held] : mGates)
            held.open();
    }
    /// Waits until so many requests were held at some time; says whether they were (a broken test ends after a minute).
    bool waitForRequests(std::size_t count) {
        std::unique_lock lock(mMutex);
        return mArrival.wait_for(lock, std::chrono::seconds(60), [&] { return mArrived >= count; });
    }
    int mostAtOnce() {
        const std::lock_guard lock(mMutex);
        return mMost;
    }

    std::vector<std::string> tokens() const {
        std::vector<std::string> tokens;
        for (const auto& request : mServer.requests())
            tokens.push_back(request.header("auth").value_or("(none)"));
        return tokens;
    }

  private:
    void arrive() {
        const std::lock_guard lock(mMutex);
        ++mArrived;
        mMost = std::max(mMost, ++mHeld);
        mArrival.notify_all();
    }
    void leave() {
        const std::lock_guard lock(mMutex);
        --mHeld;
    }
    Gate& gate(const std::string& token) {
        const std::lock_guard lock(mMutex);
        Gate& gate = mGates[token];
        if (mAllGo) gate.open();
        return gate;
    }

    std::mutex mMutex;
    std::condition_variable mArrival;
    std::map<std::string, Gate> mGates;
    bool mAllGo = false;
    std::size_t mArrived = 0;
    int mHeld = 0;
    int mMost = 0;
    ScriptedServer mServer;
};

/// A manager of its own with a queue, and a server that answers when it is told to.
class QVBizCardManagerTest : public testing::Test {
  protected:
    QVBizCardManagerTest() {
        mManager->setupOperationQueue();
        mManager->setServerURL(mServer.url());
    }
    ~QVBizCardManagerTest() override {
        mServer.letAllGo();
        if (mManager) mManager->cleanUpOperationQueue();
        for (const OutcomePtr& outcome : mOutcomes)
            EXPECT_TRUE(outcome->released.waitFor());
        qv::AssertionHandler::setHandler({});
    }

    /// The note's identifier is its token too.
    OutcomePtr add(const std::string& note, std::function<void()> after = {}) {
        return addRequest(scans::request(note, note), std::move(after));
    }
    OutcomePtr addRequest(const std::shared_ptr<QVCardProcessingRequest>& request, std::function<void()> after = {}) {
        mOutcomes.push_back(std::make_shared<Outcome>());
        mManager->addRequest(request, completionInto(mOutcomes.back(), std::move(after)));
        return mOutcomes.back();
    }

    /// Refused: released at once without a call.
    static void expectRefused(const OutcomePtr& outcome) {
        EXPECT_TRUE(outcome->released.isOpen());
        EXPECT_EQ(outcome->calls, 0);
    }
    static void expectCompleted(const OutcomePtr& outcome) {
        ASSERT_TRUE(outcome->released.waitFor());
        EXPECT_EQ(outcome->calls, 1);
    }
    static void expectNeverCalled(const OutcomePtr& outcome) {
        ASSERT_TRUE(outcome->released.waitFor());
        EXPECT_EQ(outcome->calls, 0);
    }

    std::size_t positionInLog(const std::string& line) const {
        const auto lines = mLog.messages();
        return static_cast<std::size_t>(std::find(lines.begin(), lines.end(), line) - lines.begin());
    }

    CapturedLog mLog;
    HoldingServer mServer;
    std::shared_ptr<QVBizCardManager> mManager = std::make_shared<QVBizCardManager>();
    std::vector<OutcomePtr> mOutcomes;
};

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

// Refused requests.

struct RefusalCase {
    const char* name;
    QVString note;
    QVImageArray images;
    const char* warning;  ///< null: accepted
};

class ARequest : public QVBizCardManagerTest, public testing::WithParamInterface<RefusalCase> {};

TEST_P(ARequest, IsCheckedInThisOrder) {
    const auto request = QVCardProcessingRequest::initWithNoteUUID(GetParam().note, GetParam().images, nullptr, "token",
                                                                   /*processImageForOCR=*/false);
    if (!GetParam().warning) {
        EXPECT_TRUE(mManager->canWeAddRequestToQueue(request));
        EXPECT_THAT(mLog.messages(), IsEmpty());
        return;
    }
    EXPECT_FALSE(mManager->canWeAddRequestToQueue(request));
    EXPECT_THAT(mLog.messages(), ElementsAre(GetParam().warning));
    expectRefused(addRequest(request));
    EXPECT_THAT(mLog.messages(), ElementsAre(GetParam().warning, GetParam().warning));
}

INSTANTIATE_TEST_SUITE_P(
    Requests, ARequest,
    testing::Values(RefusalCase{"WithoutNote", std::nullopt, scans::pictures({scans::picture()}), kNoNote},
                    RefusalCase{"WithoutAnything", std::nullopt, nullptr, kNoNote},
                    RefusalCase{"WithoutImages", "note", nullptr, kNoImages},
                    RefusalCase{"WithAnEmptyListOfImages", "note", scans::pictures({}), kNoImages},
                    RefusalCase{"WithAnEmptyNoteAndNoImages", "", scans::pictures({}), kNoImages},
                    RefusalCase{"WithAnEmptyNote", "", scans::pictures({scans::picture()}), nullptr},
                    RefusalCase{"Whole", "note", scans::pictures({scans::picture()}), nullptr}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(QVBizCardManagerTest, RefusesNoRequestAtAll) {
    expectRefused(addRequest(nullptr));
    EXPECT_THAT(mLog.messages(), ElementsAre(kNoNote));
}

TEST_F(QVBizCardManagerTest, RunsARequestWithAnEmptyNote) {
    const auto outcome = add("");
    mServer.letGo("");
    expectCompleted(outcome);
    EXPECT_EQ(outcome->response->originalNoteUUID(), "");
    EXPECT_TRUE(mLog.contains(completed("")));
}

TEST_F(QVBizCardManagerTest, RefusesANoteThatRuns) {
    const auto first = add("a");
    ASSERT_TRUE(mServer.waitForRequests(1));
    expectRefused(add("a"));
    EXPECT_EQ(mLog.count(kSameNote), 1U);
    mServer.letGo("a");
    expectCompleted(first);
    EXPECT_EQ(mServer.tokens().size(), 1U);
}

TEST_F(QVBizCardManagerTest, ChecksImagesBeforeDuplicates) {
    add("a");
    const auto request = scans::request("a");
    request->setCardImages(nullptr);
    expectRefused(addRequest(request));
    EXPECT_EQ(mLog.count(kNoImages), 1U);
    EXPECT_EQ(mLog.count(kSameNote), 0U);
}

TEST_F(QVBizCardManagerTest, RefusesANoteThatWaits) {
    for (const char* note : {"a", "b", "c"})
        add(note);
    ASSERT_TRUE(mServer.waitForRequests(3));
    const auto waiting = add("d");
    expectRefused(add("d"));
    EXPECT_EQ(mLog.count(kSameNote), 1U);
    mServer.letAllGo();
    expectCompleted(waiting);
}

TEST_F(QVBizCardManagerTest, RefusesANoteThatIsCancelledButNotGone) {
    const auto first = add("a");
    ASSERT_TRUE(mServer.waitForRequests(1));
    mManager->cancelRequestWithIDString("a");
    expectRefused(add("a"));
    EXPECT_EQ(mLog.count(kSameNote), 1U);
    mServer.letGo("a");
    expectNeverCalled(first);
    expectCompleted(add("a"));
}

TEST_F(QVBizCardManagerTest, AcceptsANoteAgainWhenItHasFinished) {
    mServer.letGo("a");
    const auto first = add("a");
    ASSERT_TRUE(first->called.waitFor());
    expectCompleted(add("a"));
    EXPECT_EQ(mLog.count(kSameNote), 0U);
    EXPECT_EQ(mLog.count(completed("a")), 2U);
}

TEST_F(QVBizCardManagerTest, AcceptsANoteAgainInsideItsCompletionBlock) {
    const auto second = std::make_shared<Outcome>();
    const auto first = add("a", [&] { mManager->addRequest(scans::request("a", "a"), completionInto(second)); });
    mServer.letGo("a");
    expectCompleted(first);
    expectCompleted(second);
    EXPECT_EQ(mLog.count(kSameNote), 0U);
}

TEST_F(QVBizCardManagerTest, TellsNotesApartByTheirLetters) {
    const auto upper = add("Note");
    const auto lower = add("note");
    ASSERT_TRUE(mServer.waitForRequests(2));
    EXPECT_EQ(mLog.count(kSameNote), 0U);
    mManager->cancelRequestWithIDString("NOTE");
    mManager->cancelRequestWithIDString("note");
    mServer.letAllGo();
    expectCompleted(upper);
    expectNeverCalled(lower);
}

// The queue.

TEST_F(QVBizCardManagerTest, RunsThreeOfFourRequestsAtOnce) {
    std::vector<OutcomePtr> outcomes;
    for (const char* note : {"a", "b", "c", "d"})
        outcomes.push_back(add(note));
    ASSERT_TRUE(mServer.waitForRequests(3));
    EXPECT_THAT(mServer.tokens(), testing::UnorderedElementsAre("a", "b", "c"));
    EXPECT_FALSE(mLog.contains(performing("d")));
    mServer.letGo("b");
    ASSERT_TRUE(mServer.waitForRequests(4));
    EXPECT_EQ(mServer.tokens().back(), "d");
    EXPECT_LT(positionInLog(completed("b")), positionInLog(performing("d")));
    mServer.letAllGo();
    for (const OutcomePtr& outcome : outcomes)
        expectCompleted(outcome);
    EXPECT_EQ(mServer.mostAtOnce(), 3);
}

TEST_F(QVBizCardManagerTest, RunsFirstInFirstOut) {
    for (const char* note : {"a", "b", "c"})
        add(note);
    ASSERT_TRUE(mServer.waitForRequests(3));
    for (const char* note : {"d", "e", "f"})
        add(note);
    std::size_t arrived = 3;
    for (const char* note : {"c", "a", "b"}) {
        mServer.letGo(note);
        ASSERT_TRUE(mServer.waitForRequests(++arrived));
    }
    const auto tokens = mServer.tokens();
    EXPECT_THAT(std::vector<std::string>(tokens.begin() + 3, tokens.end()), ElementsAre("d", "e", "f"));
}

TEST_F(QVBizCardManagerTest, CompletesOnceInTheBackground) {
    const auto outcome = add("a");
    mServer.letGo("a");
    expectCompleted(outcome);
    EXPECT_NE(outcome->thread, std::this_thread::get_id());
    ASSERT_TRUE(outcome->response);
    EXPECT_EQ(outcome->response->originalNoteUUID(), "a");
    EXPECT_EQ(outcome->response->contactName(), "Jordan Example");
    EXPECT_THAT(outcome->response->errors(), Pointee(IsEmpty()));
    EXPECT_EQ(mLog.count(completed("a")), 1U);
    EXPECT_EQ(mLog.count(cancelled("a")), 0U);
}

TEST_F(QVBizCardManagerTest, LogsTheCompletionBeforeTheBlockIsCalled) {
    bool wasLogged = false;
    const auto outcome = add("a", [&] { wasLogged = mLog.contains(completed("a")); });
    mServer.letGo("a");
    expectCompleted(outcome);
    EXPECT_TRUE(wasLogged);
}

TEST_F(QVBizCardManagerTest, GoesOnAfterACompletionBlockThatThrows) {
    for (const char* note : {"a", "b", "c", "d"})
        mServer.letGo(note);
    std::vector<OutcomePtr> outcomes;
    for (const char* note : {"a", "b", "c", "d"})
        outcomes.push_back(add(note, [] { throw std::runtime_error("the host's own fault"); }));
    for (const OutcomePtr& outcome : outcomes)
        expectCompleted(outcome);
    EXPECT_EQ(mLog.count("<ERROR> Exception from a completion block: the host's own fault"), 4U);
    mServer.letGo("e");
    expectCompleted(add("e"));
}

TEST_F(QVBizCardManagerTest, AssertsACompletionBlock) {
    std::vector<std::string> failures;
    qv::AssertionHandler::setHandler([&](const qv::AssertionFailure& failure) {
        failures.push_back(std::string(failure.file) + "|" + std::string(failure.function));
    });
    mManager->addRequest(scans::request("a", "a"), {});
    EXPECT_THAT(failures, ElementsAre("QVBizCardManager|addRequest:completion:"));
    EXPECT_TRUE(mManager->canWeAddRequestToQueue(scans::request("a"))) << "Nothing was queued.";
    EXPECT_THAT(mLog.messages(), IsEmpty());
}

TEST_F(QVBizCardManagerTest, LogsAMissingCompletionBlockWithoutAHandler) {
    mManager->addRequest(scans::request("a", "a"), {});
    ASSERT_EQ(mLog.messages().size(), 1U);
    EXPECT_THAT(mLog.messages()[0], HasSubstr("<ERROR> Assertion failed: "));
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

// Cancelling.

TEST_F(QVBizCardManagerTest, CancelsARequestThatRuns) {
    const auto outcome = add("a");
    ASSERT_TRUE(mServer.waitForRequests(1));
    mManager->cancelRequestWithIDString("a");
    mServer.letGo("a");
    expectNeverCalled(outcome);
    EXPECT_EQ(mLog.count(cancelled("a")), 1U);
    EXPECT_EQ(mLog.count(completed("a")), 0U);
    EXPECT_TRUE(mLog.mentions("<Debug> Card reco result: ")) << "It runs to its end.";
}

TEST_F(QVBizCardManagerTest, CancelsARequestThatWaits) {
    for (const char* note : {"a", "b", "c"})
        add(note);
    ASSERT_TRUE(mServer.waitForRequests(3));
    const auto waiting = add("d");
    mManager->cancelRequestWithIDString("d");
    mServer.letAllGo();
    expectNeverCalled(waiting);
    EXPECT_EQ(mLog.count(cancelled("d")), 1U);
    EXPECT_FALSE(mLog.contains(performing("d")));
    for (const OutcomePtr& outcome : {mOutcomes[0], mOutcomes[1], mOutcomes[2]})
        expectCompleted(outcome);
    EXPECT_EQ(mServer.tokens().size(), 3U);
}

TEST_F(QVBizCardManagerTest, CancelsEveryMatch) {
    const auto second = scans::request("b", "b");
    const auto outcomeOfFirst = add("a");
    const auto outcomeOfSecond = addRequest(second);
    const auto other = add("c");
    second->setNoteUUID("a");
    ASSERT_TRUE(mServer.waitForRequests(3));
    mManager->cancelRequestWithIDString("a");
    mServer.letAllGo();
    expectNeverCalled(outcomeOfFirst);
    expectNeverCalled(outcomeOfSecond);
    expectCompleted(other);
    EXPECT_EQ(mLog.count(cancelled("a")), 2U);
}

TEST_F(QVBizCardManagerTest, IgnoresACancellationThatMatchesNothing) {
    const auto outcome = add("a");
    ASSERT_TRUE(mServer.waitForRequests(1));
    const auto before = mLog.messages().size();
    for (const QVString& note : {QVString("b"), QVString(""), QVString("A"), QVString("a "), QVString()})
        mManager->cancelRequestWithIDString(note);
    EXPECT_EQ(mLog.messages().size(), before);
    mServer.letGo("a");
    expectCompleted(outcome);
}

TEST_F(QVBizCardManagerTest, IgnoresACancellationInsideTheCompletionBlock) {
    const auto outcome = add("a", [&] { mManager->cancelRequestWithIDString("a"); });
    mServer.letGo("a");
    expectCompleted(outcome);
    EXPECT_EQ(mLog.count(cancelled("a")), 0U);
}

TEST_F(QVBizCardManagerTest, CancelsEverythingWhenTheQueueIsCleanedUp) {
    std::vector<OutcomePtr> outcomes;
    for (const char* note : {"a", "b", "c", "d"})
        outcomes.push_back(add(note));
    ASSERT_TRUE(mServer.waitForRequests(3));
    mManager->cleanUpOperationQueue();
    EXPECT_TRUE(add("e")->released.isOpen()) << "Without a queue nothing is queued.";
    mServer.letAllGo();
    for (const OutcomePtr& outcome : outcomes)
        expectNeverCalled(outcome);
    for (const char* note : {"a", "b", "c", "d"})
        EXPECT_EQ(mLog.count(cancelled(note)), 1U);
    mManager->setupOperationQueue();
    expectCompleted(add("a"));
}

TEST_F(QVBizCardManagerTest, MayGoWhileOperationsRun) {
    std::vector<OutcomePtr> outcomes;
    for (const char* note : {"a", "b", "c", "d"})
        outcomes.push_back(add(note));
    ASSERT_TRUE(mServer.waitForRequests(3));
    const std::weak_ptr watched = mManager;
    mManager.reset();
    EXPECT_TRUE(watched.expired());
    mServer.letAllGo();
    for (const OutcomePtr& outcome : outcomes)
        expectNeverCalled(outcome);
    EXPECT_EQ(mLog.count(cancelled("a")), 1U);
    EXPECT_EQ(mLog.count(cancelled("d")), 1U);
}

TEST_F(QVBizCardManagerTest, MayGoInsideACompletionBlock) {
    const auto outcome = add("a", [&] { mManager.reset(); });
    mServer.letGo("a");
    expectCompleted(outcome);
    EXPECT_EQ(mManager, nullptr);
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

// Threads.

TEST_F(QVBizCardManagerTest, ServesSeveralThreadsWithNotesOfTheirOwn) {
    constexpr int kRequests = 25;
    mServer.letAllGo();
    std::atomic<int> completions{0};
    std::mutex mutex;
    std::vector<OutcomePtr> outcomes;
    const auto addMany = [&](const std::string& prefix) {
        for (int i = 0; i < kRequests; ++i) {
            const auto outcome = std::make_shared<Outcome>();
            const auto request = scans::request(prefix + std::to_string(i));
            mManager->addRequest(request, completionInto(outcome, [&completions] { ++completions; }));
            request->setSkipNoteGeneration(i % 2 == 0);
            const std::lock_guard lock(mutex);
            outcomes.push_back(outcome);
        }
    };
    {
        std::jthread first(addMany, "first-");
        std::jthread second(addMany, "second-");
        std::jthread configuring([&] {
            for (int i = 0; i < 200; ++i) {
                mManager->setLinkedInKey(i % 2 ? QVString("key") : std::nullopt);
                mManager->cancelRequestWithIDString("nobody's");
            }
        });
    }
    for (const OutcomePtr& outcome : outcomes)
        expectCompleted(outcome);
    EXPECT_EQ(completions, 2 * kRequests);
    EXPECT_LE(mServer.mostAtOnce(), 3);
}

}  // namespace
