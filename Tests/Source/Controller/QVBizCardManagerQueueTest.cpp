#include "ManagerFixtures.h"
#include "QVCardScan/QVBizCardManager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <stdexcept>
#include <thread>

namespace {

using managers::cancelled;
using managers::completed;
using managers::completionInto;
using managers::Outcome;
using managers::OutcomePtr;
using managers::performing;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pointee;

/// How requests run and end.
using QVBizCardManagerQueueTest = managers::Manager;

// The queue.

TEST_F(QVBizCardManagerQueueTest, RunsThreeOfFourRequestsAtOnce) {
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

TEST_F(QVBizCardManagerQueueTest, RunsFirstInFirstOut) {
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

TEST_F(QVBizCardManagerQueueTest, CompletesOnceInTheBackground) {
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

TEST_F(QVBizCardManagerQueueTest, LogsTheCompletionBeforeTheBlockIsCalled) {
    bool wasLogged = false;
    const auto outcome = add("a", [&] { wasLogged = mLog.contains(completed("a")); });
    mServer.letGo("a");
    expectCompleted(outcome);
    EXPECT_TRUE(wasLogged);
}

TEST_F(QVBizCardManagerQueueTest, GoesOnAfterACompletionBlockThatThrows) {
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

TEST_F(QVBizCardManagerQueueTest, AssertsACompletionBlock) {
    std::vector<std::string> failures;
    qv::AssertionHandler::setHandler([&](const qv::AssertionFailure& failure) {
        failures.push_back(std::string(failure.description) + "|" + std::string(failure.file) + "|" +
                           std::string(failure.function));
        EXPECT_GT(failure.line, 0);
    });
    mManager->addRequest(scans::request("a", "a"), {});
    EXPECT_THAT(failures, ElementsAre("Completion block cannot be nil!|QVBizCardManager|addRequest:completion:"));
    EXPECT_TRUE(mManager->canWeAddRequestToQueue(scans::request("a"))) << "Nothing was queued.";
    EXPECT_THAT(mLog.messages(), IsEmpty());
}

TEST_F(QVBizCardManagerQueueTest, LogsAMissingCompletionBlockWithoutAHandler) {
    mManager->addRequest(scans::request("a", "a"), {});
    ASSERT_EQ(mLog.messages().size(), 1U);
    EXPECT_THAT(mLog.messages()[0], HasSubstr("<ERROR> Assertion failed: "));
}

// Cancelling.

TEST_F(QVBizCardManagerQueueTest, CancelsARequestThatRuns) {
    const auto outcome = add("a");
    ASSERT_TRUE(mServer.waitForRequests(1));
    mManager->cancelRequestWithIDString("a");
    mServer.letGo("a");
    expectNeverCalled(outcome);
    EXPECT_EQ(mLog.count(cancelled("a")), 1U);
    EXPECT_EQ(mLog.count(completed("a")), 0U);
    EXPECT_TRUE(mLog.mentions("<Debug> Card reco result: ")) << "It runs to its end.";
}

TEST_F(QVBizCardManagerQueueTest, CancelsARequestThatWaits) {
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

TEST_F(QVBizCardManagerQueueTest, CancelsEveryMatch) {
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

TEST_F(QVBizCardManagerQueueTest, IgnoresACancellationThatMatchesNothing) {
    const auto outcome = add("a");
    ASSERT_TRUE(mServer.waitForRequests(1));
    const auto before = mLog.messages().size();
    for (const QVString& note : {QVString("b"), QVString(""), QVString("A"), QVString("a "), QVString()})
        mManager->cancelRequestWithIDString(note);
    EXPECT_EQ(mLog.messages().size(), before);
    mServer.letGo("a");
    expectCompleted(outcome);
}

TEST_F(QVBizCardManagerQueueTest, IgnoresACancellationInsideTheCompletionBlock) {
    const auto outcome = add("a", [&] { mManager->cancelRequestWithIDString("a"); });
    mServer.letGo("a");
    expectCompleted(outcome);
    EXPECT_EQ(mLog.count(cancelled("a")), 0U);
}

TEST_F(QVBizCardManagerQueueTest, CancelsEverythingWhenTheQueueIsCleanedUp) {
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

TEST_F(QVBizCardManagerQueueTest, MayGoWhileOperationsRun) {
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

TEST_F(QVBizCardManagerQueueTest, MayGoInsideACompletionBlock) {
    const auto outcome = add("a", [&] { mManager.reset(); });
    mServer.letGo("a");
    expectCompleted(outcome);
    EXPECT_EQ(mManager, nullptr);
}

// Threads.

TEST_F(QVBizCardManagerQueueTest, ServesSeveralThreadsWithNotesOfTheirOwn) {
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
            const QVString key = "key";
            const QVString absent;
            for (int i = 0; i < 200; ++i) {
                mManager->setLinkedInKey(i % 2 ? key : absent);
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
