#pragma once

#include "QVPlatform/MainQueue.h"
#include "Support/CapturedLog.h"
#include "Support/Gate.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <stdexcept>
#include <thread>
#include <utility>
#include <vector>

namespace testsupport {

/// What every executor over a host's loop must do. `Loop` is a loop of the test's own thread:
///     std::shared_ptr<qv::MainExecutor> executor();   a new executor for it
///     bool runUntil(const std::function<bool()>& done);   runs it, from within itself too; false after a minute
///     void onIdle(std::function<void()> work);   work of the host's own, once
///     void end();   the host's loop is gone for good
template <typename Loop>
class ExecutorContract : public testing::Test {
  protected:
    void TearDown() override { qv::MainQueue::setExecutor(nullptr); }

    std::function<void()> note(int what) {
        return [this, what] { mRan.push_back(what); };
    }
    bool runUntilRan(std::size_t count) {
        return mLoop.runUntil([this, count] { return mRan.size() >= count; });
    }

    Loop mLoop;
    std::vector<int> mRan;
};

TYPED_TEST_SUITE_P(ExecutorContract);

using namespace std::chrono_literals;
using testing::ElementsAre;
using Clock = std::chrono::steady_clock;

TYPED_TEST_P(ExecutorContract, NeverRunsWorkInsideTheCall) {
    const auto executor = this->mLoop.executor();
    executor->dispatchAsync(this->note(1));
    executor->dispatchAfter(-1s, this->note(2));
    EXPECT_THAT(this->mRan, ElementsAre());
    ASSERT_TRUE(this->runUntilRan(2));
    EXPECT_THAT(this->mRan, ElementsAre(1, 2));
}

TYPED_TEST_P(ExecutorContract, KeepsTheOrderOfEveryThread) {
    constexpr int kThreads = 8;
    constexpr int kCalls = 500;
    const auto executor = this->mLoop.executor();
    std::vector<std::vector<int>> ran(kThreads);
    int count = 0;
    bool onOwnThread = true;
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread, main = std::this_thread::get_id()] {
            for (int call = 0; call < kCalls; ++call)
                executor->dispatchAsync([&, thread, call, main] {
                    ran[static_cast<std::size_t>(thread)].push_back(call);
                    onOwnThread = onOwnThread && std::this_thread::get_id() == main && executor->isMainThread();
                    ++count;
                });
        });
    }
    ASSERT_TRUE(this->mLoop.runUntil([&] { return count == kThreads * kCalls; }));
    EXPECT_TRUE(onOwnThread);
    for (const auto& calls : ran)
        EXPECT_TRUE(std::is_sorted(calls.begin(), calls.end()));
}

TYPED_TEST_P(ExecutorContract, RunsWorkWhenItFallsDueAndNotBefore) {
    const auto executor = this->mLoop.executor();
    const auto start = Clock::now();
    std::vector<Clock::duration> waits;
    const auto timed = [&](int what) {
        return [&, what] { this->mRan.push_back(what), waits.push_back(Clock::now() - start); };
    };
    executor->dispatchAfter(40ms, timed(4));
    executor->dispatchAfter(20ms, timed(2));
    executor->dispatchAfter(300us, timed(1));
    executor->dispatchAfter(20ms, timed(3));
    ASSERT_TRUE(this->runUntilRan(4));
    EXPECT_THAT(this->mRan, ElementsAre(1, 2, 3, 4));
    EXPECT_THAT(waits, ElementsAre(testing::Ge(300us), testing::Ge(20ms), testing::Ge(20ms), testing::Ge(40ms)));
}

TYPED_TEST_P(ExecutorContract, WakesUpForWorkThatIsDueSooner) {
    const auto executor = this->mLoop.executor();
    executor->dispatchAfter(24h, this->note(2));
    executor->dispatchAfter(std::chrono::nanoseconds::max(), this->note(3));
    Gate running;
    executor->dispatchAsync([&] { running.open(); });
    const std::jthread other([&] {
        running.wait();
        executor->dispatchAfter(1ms, this->note(1));
    });
    ASSERT_TRUE(this->runUntilRan(1));
    EXPECT_THAT(this->mRan, ElementsAre(1));
}

TYPED_TEST_P(ExecutorContract, LetsTheHostHaveItsTurns) {
    const auto executor = this->mLoop.executor();
    bool hostRan = false;
    std::function<void()> again = [&] { executor->dispatchAsync(again); };
    executor->dispatchAsync(again);
    this->mLoop.onIdle([&] { hostRan = true; });
    EXPECT_TRUE(this->mLoop.runUntil([&] { return hostRan; })) << "work that adds work must not hold the loop for ever";
}

TYPED_TEST_P(ExecutorContract, GoesOnInALoopWithinTheLoop) {
    const auto executor = this->mLoop.executor();
    executor->dispatchAfter(5ms, this->note(3));
    executor->dispatchAsync([&] {
        this->note(1)();
        executor->dispatchAsync(this->note(4));
        EXPECT_TRUE(this->runUntilRan(4)) << "a dialogue must not hold up the rest";
    });
    executor->dispatchAsync(this->note(2));
    ASSERT_TRUE(this->runUntilRan(4));
    EXPECT_THAT(this->mRan, testing::UnorderedElementsAre(1, 2, 3, 4));
}

TYPED_TEST_P(ExecutorContract, LogsWhatWorkThrowsAndGoesOn) {
    const CapturedLog log;
    const auto executor = this->mLoop.executor();
    executor->dispatchAsync([] { throw std::runtime_error("broken"); });
    executor->dispatchAsync(nullptr);
    executor->dispatchAsync(this->note(1));
    ASSERT_TRUE(this->runUntilRan(1));
    EXPECT_THAT(log.messages(), ElementsAre("<ERROR> Exception from work on the main thread: broken"));
}

TYPED_TEST_P(ExecutorContract, DropsWhatWaitsWhenItGoes) {
    auto executor = this->mLoop.executor();
    const auto held = std::make_shared<int>(0);
    executor->dispatchAsync([this, held] { this->mRan.push_back(1); });
    executor->dispatchAfter(1ms, [this, held] { this->mRan.push_back(2); });
    executor.reset();
    EXPECT_EQ(held.use_count(), 1) << "what waited is let go";
    const auto next = this->mLoop.executor();
    next->dispatchAfter(5ms, this->note(3));
    ASSERT_TRUE(this->runUntilRan(1));
    EXPECT_THAT(this->mRan, ElementsAre(3));
}

TYPED_TEST_P(ExecutorContract, MayGoInItsOwnWork) {
    auto executor = this->mLoop.executor();
    executor->dispatchAfter(1ms, this->note(2));
    executor->dispatchAsync([&] {
        executor.reset();
        this->note(1)();
    });
    ASSERT_TRUE(this->runUntilRan(1));
    const auto next = this->mLoop.executor();
    next->dispatchAfter(10ms, this->note(3));
    ASSERT_TRUE(this->runUntilRan(2));
    EXPECT_THAT(this->mRan, ElementsAre(1, 3));
}

TYPED_TEST_P(ExecutorContract, MayGoOnAnotherThreadWhileTheLoopRuns) {
    std::atomic<bool> gone{false};
    std::vector<std::shared_ptr<qv::MainExecutor>> executors;
    for (int i = 0; i < 50; ++i)
        executors.push_back(this->mLoop.executor());
    const std::jthread other([&gone, executors = std::move(executors)]() mutable {
        while (!executors.empty()) {
            for (int i = 0; i < 10; ++i)
                executors.back()->dispatchAfter(std::chrono::microseconds(50 * i), [] {});
            executors.pop_back();
        }
        gone = true;
    });
    // The loop turns all the while.
    const auto ticking = this->mLoop.executor();
    std::function<void()> tick = [&] { ticking->dispatchAfter(100us, tick); };
    ticking->dispatchAsync(tick);
    EXPECT_TRUE(this->mLoop.runUntil([&] { return gone.load(); }));
}

TYPED_TEST_P(ExecutorContract, MayOutliveTheLoop) {
    const auto executor = this->mLoop.executor();
    executor->dispatchAsync(this->note(1));
    this->mLoop.end();
    executor->dispatchAsync(this->note(2));
    std::jthread([&] { executor->dispatchAfter(1ms, this->note(3)); }).join();
    EXPECT_THAT(this->mRan, ElementsAre());
}

TYPED_TEST_P(ExecutorContract, ServesTheLibrary) {
    qv::MainQueue::setExecutor(this->mLoop.executor());
    std::jthread worker([this] { qv::MainQueue::executor()->dispatchAfter(1ms, this->note(1)); });
    ASSERT_TRUE(this->runUntilRan(1));
    EXPECT_TRUE(qv::MainQueue::executor()->isMainThread());
    bool isMain = true;
    std::jthread([&] { isMain = qv::MainQueue::executor()->isMainThread(); }).join();
    EXPECT_FALSE(isMain);
}

REGISTER_TYPED_TEST_SUITE_P(ExecutorContract, NeverRunsWorkInsideTheCall, KeepsTheOrderOfEveryThread,
                            RunsWorkWhenItFallsDueAndNotBefore, WakesUpForWorkThatIsDueSooner, LetsTheHostHaveItsTurns,
                            GoesOnInALoopWithinTheLoop, LogsWhatWorkThrowsAndGoesOn, DropsWhatWaitsWhenItGoes,
                            MayGoInItsOwnWork, MayGoOnAnotherThreadWhileTheLoopRuns, MayOutliveTheLoop,
                            ServesTheLibrary);

}  // namespace testsupport
