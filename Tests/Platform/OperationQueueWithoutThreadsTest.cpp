#include "QVPlatform/MainQueue.h"
#include "QVPlatform/OperationQueue.h"
#include "Support/CapturedLog.h"
#include "Support/FailingMemory.h"
#include "Support/Gate.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <new>
#include <stdexcept>
#include <thread>
#include <utility>
#include <vector>

// What becomes of work when the system has no thread to give. Here it has no memory for one, which is as good.

namespace {

using qv::OperationQueue;
using namespace std::chrono_literals;

/// Keeps what is to run later until the test wants it, or refuses it.
struct LaterExecutor : qv::MainExecutor {
    std::vector<std::function<void()>> works;
    std::vector<std::chrono::nanoseconds> delays;
    bool refuses = false;

    void dispatchAsync(std::function<void()> work) override { dispatchAfter(0ns, std::move(work)); }
    void dispatchAfter(std::chrono::nanoseconds delay, std::function<void()> work) override {
        if (refuses) throw std::runtime_error("no more");
        delays.push_back(delay);
        works.push_back(std::move(work));
    }
    bool isMainThread() const override { return true; }

    /// Runs the only work there is; when there is no memory for a thread, its first allocation fails.
    void runOnly(bool withThread) {
        ASSERT_EQ(works.size(), 1U);
        const auto work = std::move(works.front());
        works.clear();
        if (!withThread) testsupport::failAfter(0);
        work();
        testsupport::endFailing();
    }
};

struct NotedOperation : qv::Operation {
    testsupport::Gate done;
    std::thread::id thread;

    NotedOperation() {
        setCompletionBlock([this] { done.open(); });
    }
    void main() override { thread = std::this_thread::get_id(); }
};

class QueueWithoutThreads : public testing::Test {
  protected:
    QueueWithoutThreads() {
        mExecutor->works.reserve(4);
        mExecutor->delays.reserve(100);
        qv::MainQueue::setExecutor(mExecutor);
    }
    ~QueueWithoutThreads() override { qv::MainQueue::setExecutor(nullptr); }

    /// Adds an operation for which there is no thread: of the allocations that adding takes, the thread's fails.
    std::shared_ptr<NotedOperation> addWithoutThread(OperationQueue& queue) {
        for (long count = 0; count < 10; ++count) {
            const std::size_t before = mLog.count(kNoThread);
            auto operation = std::make_shared<NotedOperation>();
            bool isAdded = true;
            testsupport::failAfter(count);
            try {
                queue.addOperation(operation);
            } catch (const std::bad_alloc&) {
                isAdded = false;
            }
            testsupport::endFailing();
            if (isAdded && mLog.count(kNoThread) > before) return operation;
        }
        ADD_FAILURE() << "there was always a thread";
        return std::make_shared<NotedOperation>();
    }

    static constexpr const char* kNoThread =
        "<ERROR> The system has no thread for the operation queue; its work is delayed.";
    testsupport::CapturedLog mLog;
    const std::shared_ptr<LaterExecutor> mExecutor = std::make_shared<LaterExecutor>();
};

TEST_F(QueueWithoutThreads, AsksAgainOnTheMainExecutor) {
    OperationQueue queue(3);
    const auto operation = addWithoutThread(queue);
    EXPECT_EQ(queue.operations().size(), 1U);
    EXPECT_FALSE(operation->done.isOpen());
    ASSERT_EQ(mExecutor->delays.size(), 1U);
    EXPECT_EQ(mExecutor->delays[0], 100ms);
    mExecutor->runOnly(/*withThread=*/true);
    ASSERT_TRUE(operation->done.waitFor());
    EXPECT_NE(operation->thread, std::this_thread::get_id());
    EXPECT_TRUE(mExecutor->works.empty());
}

TEST_F(QueueWithoutThreads, DoesTheWorkThereWhenItWasRefusedTwentyTimes) {
    OperationQueue queue(3);
    const auto first = addWithoutThread(queue);
    const auto second = addWithoutThread(queue);
    EXPECT_EQ(mExecutor->works.size(), 1U) << "it is asked for once, however much there is to do";
    for (int refusal = 1; refusal < 20; ++refusal) {
        mExecutor->runOnly(/*withThread=*/false);
        ASSERT_FALSE(first->done.isOpen()) << refusal;
    }
    mExecutor->runOnly(/*withThread=*/false);
    ASSERT_TRUE(first->done.isOpen());
    EXPECT_EQ(first->thread, std::this_thread::get_id());
    EXPECT_FALSE(second->done.isOpen()) << "one at a time";
    mExecutor->runOnly(/*withThread=*/false);
    EXPECT_TRUE(second->done.isOpen());
    mExecutor->runOnly(/*withThread=*/false);
    EXPECT_TRUE(mExecutor->works.empty()) << "there is nothing left to ask for";
    EXPECT_TRUE(queue.operations().empty());
}

TEST_F(QueueWithoutThreads, LeavesItToTheNextThatIsAddedWhenNobodyTakesTheAsking) {
    OperationQueue queue(1);
    mExecutor->refuses = true;
    const auto first = addWithoutThread(queue);
    EXPECT_TRUE(mExecutor->works.empty());
    const auto second = std::make_shared<NotedOperation>();
    queue.addOperation(second);
    EXPECT_TRUE(first->done.waitFor());
    EXPECT_TRUE(second->done.waitFor());
    mExecutor->refuses = false;
    queue.waitUntilAllOperationsAreFinished();
}

TEST_F(QueueWithoutThreads, AsksForNothingWhenAnotherThreadDidTheWork) {
    OperationQueue queue(1);
    const auto first = addWithoutThread(queue);
    const auto second = std::make_shared<NotedOperation>();
    queue.addOperation(second);
    ASSERT_TRUE(first->done.waitFor());
    ASSERT_TRUE(second->done.waitFor());
    mExecutor->runOnly(/*withThread=*/false);
    EXPECT_TRUE(mExecutor->works.empty());
}

}  // namespace
