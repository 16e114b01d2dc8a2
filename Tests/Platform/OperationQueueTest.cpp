#include "QVPlatform/OperationQueue.h"
#include "Support/CapturedLog.h"
#include "Support/Gate.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <stdexcept>
#include <thread>
#include <vector>

using qv::Operation;
using qv::OperationQueue;
using testing::ElementsAre;
using testing::IsEmpty;
using testsupport::CapturedLog;
using testsupport::Gate;

namespace {

class BlockOperation : public Operation {
  public:
    explicit BlockOperation(std::function<void()> work) : mWork(std::move(work)) {}
    void main() override { mWork(); }

  private:
    std::function<void()> mWork;
};

std::shared_ptr<Operation> makeOperation(std::function<void()> work) {
    return std::make_shared<BlockOperation>(std::move(work));
}

/// Says in `main` that it began, and waits there until it may go on.
struct HeldOperation : Operation {
    void main() override {
        began.open();
        mayEnd.wait();
    }
    Gate began;
    Gate mayEnd;
};

/// How many threads are inside, and how many were at most.
class Counter {
  public:
    void enter() {
        const int inside = ++mInside;
        int most = mMost;
        while (inside > most && !mMost.compare_exchange_weak(most, inside)) {
        }
    }
    void leave() { --mInside; }
    int most() const { return mMost; }

  private:
    std::atomic<int> mInside{0};
    std::atomic<int> mMost{0};
};

TEST(OperationQueue, RunsFirstInFirstOut) {
    std::vector<int> order;
    OperationQueue queue(1);
    for (int i = 0; i < 50; ++i)
        queue.addOperation(makeOperation([&order, i] { order.push_back(i); }));
    queue.waitUntilAllOperationsAreFinished();
    std::vector<int> expected(50);
    for (int i = 0; i < 50; ++i)
        expected[static_cast<std::size_t>(i)] = i;
    EXPECT_EQ(order, expected);
}

TEST(OperationQueue, RunsThreeOfFourAtOnce) {
    OperationQueue queue(3);
    std::vector<std::shared_ptr<HeldOperation>> held;
    for (int i = 0; i < 4; ++i) {
        held.push_back(std::make_shared<HeldOperation>());
        queue.addOperation(held.back());
    }
    for (int i = 0; i < 3; ++i)
        ASSERT_TRUE(held[static_cast<std::size_t>(i)]->began.waitFor());
    EXPECT_FALSE(held[3]->isExecuting());
    EXPECT_EQ(queue.operations().size(), 4U);

    held[1]->mayEnd.open();
    EXPECT_TRUE(held[3]->began.waitFor()) << "the place that came free is the fourth one's";
    for (const auto& operation : held)
        operation->mayEnd.open();
    queue.waitUntilAllOperationsAreFinished();
    EXPECT_THAT(queue.operations(), IsEmpty());
}

TEST(OperationQueue, NeverRunsMoreThanItsCount) {
    EXPECT_EQ(OperationQueue(3).maxConcurrentOperationCount(), 3U);
    Counter counter;
    OperationQueue queue(3);
    for (int i = 0; i < 300; ++i) {
        queue.addOperation(makeOperation([&] {
            counter.enter();
            std::this_thread::yield();
            counter.leave();
        }));
    }
    queue.waitUntilAllOperationsAreFinished();
    EXPECT_LE(counter.most(), 3);
    EXPECT_GE(counter.most(), 1);
}

TEST(OperationQueue, TakesACountOfZeroForOne) {
    OperationQueue queue(0);
    EXPECT_EQ(queue.maxConcurrentOperationCount(), 1U);
    bool ran = false;
    queue.addOperation(makeOperation([&] { ran = true; }));
    queue.waitUntilAllOperationsAreFinished();
    EXPECT_TRUE(ran);
}

TEST(OperationQueue, ListsWhatWaitsOrRunsInTheOrderAdded) {
    OperationQueue queue(2);
    std::vector<std::shared_ptr<Operation>> all;
    std::vector<std::shared_ptr<HeldOperation>> held;
    for (int i = 0; i < 4; ++i) {
        held.push_back(std::make_shared<HeldOperation>());
        all.push_back(held.back());
        queue.addOperation(held.back());
    }
    EXPECT_EQ(queue.operations(), all);
    ASSERT_TRUE(held[1]->began.waitFor());
    held[1]->mayEnd.open();
    ASSERT_TRUE(held[2]->began.waitFor());
    EXPECT_THAT(queue.operations(), ElementsAre(all[0], all[2], all[3]));
    for (const auto& operation : held)
        operation->mayEnd.open();
    queue.waitUntilAllOperationsAreFinished();
}

TEST(OperationQueue, DropsAnOperationBeforeItsCompletionBlockRuns) {
    OperationQueue queue(1);
    std::size_t listed = 99;
    bool successorRan = false;
    const auto operation = makeOperation([] {});
    operation->setCompletionBlock([&] {
        listed = queue.operations().size();
        queue.addOperation(makeOperation([&] { successorRan = true; }));
    });
    queue.addOperation(operation);
    queue.waitUntilAllOperationsAreFinished();
    EXPECT_EQ(listed, 0U);
    EXPECT_TRUE(successorRan);
}

TEST(OperationQueue, RunsTheCompletionBlockOnTheThreadOfMain) {
    OperationQueue queue(3);
    std::thread::id mainThread;
    std::thread::id blockThread;
    const auto operation = makeOperation([&] { mainThread = std::this_thread::get_id(); });
    operation->setCompletionBlock([&] { blockThread = std::this_thread::get_id(); });
    queue.addOperation(operation);
    queue.waitUntilAllOperationsAreFinished();
    EXPECT_EQ(mainThread, blockThread);
    EXPECT_NE(mainThread, std::this_thread::get_id());
}

TEST(OperationQueue, KeepsAPlaceTakenWhileACompletionBlockRuns) {
    OperationQueue queue(1);
    Gate inBlock;
    Gate mayLeave;
    const auto first = makeOperation([] {});
    first->setCompletionBlock([&] {
        inBlock.open();
        mayLeave.wait();
    });
    const auto second = makeOperation([] {});
    queue.addOperation(first);
    queue.addOperation(second);
    ASSERT_TRUE(inBlock.waitFor());
    EXPECT_FALSE(second->isExecuting() || second->isFinished());
    EXPECT_THAT(queue.operations(), ElementsAre(second));
    mayLeave.open();
    queue.waitUntilAllOperationsAreFinished();
    EXPECT_TRUE(second->isFinished());
}

TEST(OperationQueue, WaitsForCompletionBlocksToo) {
    OperationQueue queue(2);
    std::atomic<bool> returned{false};
    const auto operation = makeOperation([] {});
    operation->setCompletionBlock([&] {
        for (int i = 0; i < 1000; ++i)
            std::this_thread::yield();
        returned = true;
    });
    queue.addOperation(operation);
    queue.waitUntilAllOperationsAreFinished();
    EXPECT_TRUE(returned);
    queue.waitUntilAllOperationsAreFinished();  // of an empty queue: at once
}

TEST(OperationQueue, CancelsEverythingAndStillRunsIt) {
    OperationQueue queue(1);
    const auto running = std::make_shared<HeldOperation>();
    std::atomic<int> mains{0};
    std::atomic<int> completions{0};
    const auto waiting = makeOperation([&] { ++mains; });
    running->setCompletionBlock([&] { ++completions; });
    waiting->setCompletionBlock([&] { ++completions; });
    queue.addOperation(running);
    queue.addOperation(waiting);
    ASSERT_TRUE(running->began.waitFor());
    queue.cancelAllOperations();
    EXPECT_TRUE(running->isCancelled() && waiting->isCancelled());
    running->mayEnd.open();
    queue.waitUntilAllOperationsAreFinished();
    EXPECT_EQ(mains, 1);
    EXPECT_EQ(completions, 2);
    const auto later = makeOperation([] {});
    queue.addOperation(later);
    queue.waitUntilAllOperationsAreFinished();
    EXPECT_FALSE(later->isCancelled());
}

TEST(OperationQueue, GoesOnAfterAnOperationThatThrows) {
    const CapturedLog log;
    OperationQueue queue(1);
    bool ran = false;
    queue.addOperation(makeOperation([] { throw std::runtime_error("broken"); }));
    queue.addOperation(makeOperation([&] { ran = true; }));
    queue.waitUntilAllOperationsAreFinished();
    EXPECT_TRUE(ran);
    EXPECT_THAT(log.messages(), ElementsAre("<ERROR> Exception from an operation: broken"));
}

TEST(OperationQueue, IgnoresNull) {
    OperationQueue queue(1);
    queue.addOperation(nullptr);
    EXPECT_THAT(queue.operations(), IsEmpty());
}

TEST(OperationQueue, RunsAnOperationOnce) {
    const CapturedLog log;
    std::atomic<int> runs{0};
    OperationQueue queue(2);
    OperationQueue other(2);
    const auto operation = makeOperation([&] { ++runs; });
    queue.addOperation(operation);
    queue.addOperation(operation);
    other.addOperation(operation);
    queue.waitUntilAllOperationsAreFinished();
    other.waitUntilAllOperationsAreFinished();
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(log.count("<WARNING> The operation was already added to a queue! Ignored."), 2U);
}

TEST(OperationQueue, KeepsItsThreadsForTheNextWork) {
    OperationQueue queue(2);
    std::mutex mutex;
    std::set<std::thread::id> threads;
    for (int i = 0; i < 100; ++i) {
        queue.addOperation(makeOperation([&] {
            const std::lock_guard lock(mutex);
            threads.insert(std::this_thread::get_id());
        }));
        queue.waitUntilAllOperationsAreFinished();
    }
    EXPECT_LE(threads.size(), 2U);
}

TEST(OperationQueue, LeavesItsWorkToItsThreadsWhenItGoes) {
    auto queue = std::make_unique<OperationQueue>(1);
    const auto held = std::make_shared<HeldOperation>();
    Gate completed;
    const auto waiting = makeOperation([] {});
    waiting->setCompletionBlock([&] { completed.open(); });
    queue->addOperation(held);
    queue->addOperation(waiting);
    ASSERT_TRUE(held->began.waitFor());
    queue.reset();  // returns although an operation runs
    EXPECT_FALSE(held->isFinished() || waiting->isFinished());
    held->mayEnd.open();
    ASSERT_TRUE(completed.waitFor());
    EXPECT_TRUE(held->isFinished() && waiting->isFinished());
}

TEST(OperationQueue, MayBeDestroyedByACompletionBlock) {
    auto queue = std::make_shared<OperationQueue>(2);
    const std::weak_ptr<OperationQueue> weak = queue;
    Gate mayRun;
    Gate completed;
    const auto operation = makeOperation([&] { mayRun.wait(); });
    operation->setCompletionBlock([&completed, queue]() mutable {
        queue.reset();
        completed.open();
    });
    queue->addOperation(operation);
    queue.reset();
    mayRun.open();
    ASSERT_TRUE(completed.waitFor());
    EXPECT_TRUE(weak.expired());
}

/// Tells when its thread ends.
struct ThreadEnd {
    std::shared_ptr<Gate> gate;
    ~ThreadEnd() {
        if (gate) gate->open();
    }
};

TEST(OperationQueue, EndsItsThreadsWhenItIsGoneAndNothingWaits) {
    const auto ended = std::make_shared<Gate>();
    auto queue = std::make_unique<OperationQueue>(1);
    queue->addOperation(makeOperation([&] {
        thread_local ThreadEnd end;
        end.gate = ended;
    }));
    queue->waitUntilAllOperationsAreFinished();
    EXPECT_FALSE(ended->isOpen()) << "an idle thread is kept";
    queue.reset();
    EXPECT_TRUE(ended->waitFor());
}

TEST(OperationQueue, IsForSeveralThreads) {
    constexpr int kThreads = 4;
    constexpr int kOperations = 250;
    std::atomic<int> mains{0};
    std::atomic<int> completions{0};
    OperationQueue queue(3);
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < kThreads; ++i) {
            threads.emplace_back([&] {
                for (int j = 0; j < kOperations; ++j) {
                    const auto operation = makeOperation([&] { ++mains; });
                    operation->setCompletionBlock([&] { ++completions; });
                    queue.addOperation(operation);
                    if (j % 50 == 0) queue.cancelAllOperations();
                    for (const auto& listed : queue.operations())
                        listed->isFinished();
                }
            });
        }
    }
    queue.waitUntilAllOperationsAreFinished();
    EXPECT_EQ(mains, kThreads * kOperations);
    EXPECT_EQ(completions, kThreads * kOperations);
}

#ifndef __SANITIZE_THREAD__
// The sanitizer allows no threads to a fork of a process that has some.
TEST(OperationQueueTest, ForgetsInAForkedProcessWhatItsParentRuns) {
    OperationQueue queue(1);
    const auto held = std::make_shared<HeldOperation>();
    queue.addOperation(held);
    ASSERT_TRUE(held->began.waitFor());
    std::atomic<bool> waitingRan = false;
    queue.addOperation(makeOperation([&] { waitingRan = true; }));
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        ::alarm(60);
        const bool isOnlyWaiting = queue.operations().size() == 1;
        queue.addOperation(makeOperation([] {}));
        queue.waitUntilAllOperationsAreFinished();
        std::exit(isOnlyWaiting && waitingRan ? 0 : 1);
    }
    int status = -1;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(queue.operations().size(), 2U) << "the parent's are its own";
    EXPECT_FALSE(waitingRan);
    held->mayEnd.open();
    queue.waitUntilAllOperationsAreFinished();
    EXPECT_TRUE(waitingRan);
}
#endif

}  // namespace
