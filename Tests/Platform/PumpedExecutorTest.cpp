#include "QVPlatform/MainQueue.h"
#include "Support/CapturedLog.h"
#include "Support/Gate.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

using namespace std::chrono_literals;
using qv::ManualClock;
using qv::PumpedExecutor;
using testing::ElementsAre;
using testing::IsEmpty;
using testsupport::CapturedLog;
using testsupport::Gate;

namespace {

class PumpedExecutorTest : public testing::Test {
  protected:
    std::function<void()> note(int what) {
        return [this, what] { mRan.push_back(what); };
    }

    ManualClock mClock;
    PumpedExecutor mExecutor{mClock.clock()};
    std::vector<int> mRan;
};

TEST_F(PumpedExecutorTest, NeverRunsWorkInsideTheCall) {
    mExecutor.dispatchAsync(note(1));
    mExecutor.dispatchAfter(0ns, note(2));
    EXPECT_THAT(mRan, IsEmpty());
    EXPECT_EQ(mExecutor.pump(), 2U);
    EXPECT_THAT(mRan, ElementsAre(1, 2));
    EXPECT_EQ(mExecutor.pump(), 0U);
}

TEST_F(PumpedExecutorTest, RunsWorkWhenItsTimeHasCome) {
    mExecutor.dispatchAfter(4s, note(1));
    mClock.advance(4s - 1ns);
    EXPECT_EQ(mExecutor.pump(), 0U);
    mClock.advance(1ns);
    EXPECT_EQ(mExecutor.pump(), 1U);
    EXPECT_THAT(mRan, ElementsAre(1));
    mClock.advance(100s);
    EXPECT_EQ(mExecutor.pump(), 0U) << "once only";
}

TEST_F(PumpedExecutorTest, OrdersByDueTimeThenByArrival) {
    mExecutor.dispatchAfter(2s, note(4));
    mExecutor.dispatchAfter(1s, note(2));
    mExecutor.dispatchAsync(note(1));
    mExecutor.dispatchAfter(1s, note(3));
    mExecutor.dispatchAfter(2s, note(5));
    mClock.advance(2s);
    mExecutor.dispatchAsync(note(6));
    EXPECT_EQ(mExecutor.pump(), 6U);
    EXPECT_THAT(mRan, ElementsAre(1, 2, 3, 4, 5, 6));
}

TEST_F(PumpedExecutorTest, TakesANegativeDelayForNone) {
    mExecutor.dispatchAsync(note(1));
    mExecutor.dispatchAfter(-5s, note(2));
    mExecutor.pump();
    EXPECT_THAT(mRan, ElementsAre(1, 2));
}

TEST_F(PumpedExecutorTest, TakesTheLongestDelayForNever) {
    mClock.advance(1h);
    mExecutor.dispatchAfter(std::chrono::nanoseconds::max(), note(1));
    EXPECT_EQ(mExecutor.pump(), 0U);
}

TEST_F(PumpedExecutorTest, SaysHowLongUntilWorkFallsDue) {
    EXPECT_EQ(mExecutor.timeUntilNextWork(), std::nullopt);
    mExecutor.dispatchAfter(5s, note(2));
    mExecutor.dispatchAfter(2s, note(1));
    EXPECT_EQ(mExecutor.timeUntilNextWork(), 2s);
    mClock.advance(3s);
    EXPECT_EQ(mExecutor.timeUntilNextWork(), 0s) << "late work is due now";
    mExecutor.pump();
    EXPECT_EQ(mExecutor.timeUntilNextWork(), 2s);
    mExecutor.dispatchAsync(note(3));
    EXPECT_EQ(mExecutor.timeUntilNextWork(), 0s);
    mClock.advance(2s);
    mExecutor.pump();
    EXPECT_EQ(mExecutor.timeUntilNextWork(), std::nullopt);
    mExecutor.dispatchAfter(std::chrono::nanoseconds::max(), note(4));
    EXPECT_GT(mExecutor.timeUntilNextWork(), 1h);
}

TEST_F(PumpedExecutorTest, LeavesWhatIsAddedMeanwhileToTheNextPump) {
    std::function<void()> again = [&] {
        mRan.push_back(1);
        mExecutor.dispatchAsync(again);
    };
    mExecutor.dispatchAsync(again);
    mExecutor.dispatchAsync(note(2));
    EXPECT_EQ(mExecutor.pump(), 2U);
    EXPECT_EQ(mExecutor.pump(), 1U);
    EXPECT_THAT(mRan, ElementsAre(1, 2, 1));
}

TEST_F(PumpedExecutorTest, LetsWorkPump) {
    mExecutor.dispatchAsync([&] {
        mRan.push_back(1);
        mExecutor.dispatchAsync(note(3));
        EXPECT_EQ(mExecutor.pump(), 2U);
    });
    mExecutor.dispatchAsync(note(2));
    EXPECT_EQ(mExecutor.pump(), 1U);
    EXPECT_THAT(mRan, ElementsAre(1, 2, 3));
}

TEST_F(PumpedExecutorTest, LogsWhatWorkThrowsAndGoesOn) {
    const CapturedLog log;
    mExecutor.dispatchAsync([] { throw std::runtime_error("broken"); });
    mExecutor.dispatchAsync(note(1));
    EXPECT_EQ(mExecutor.pump(), 2U);
    EXPECT_THAT(mRan, ElementsAre(1));
    EXPECT_THAT(log.messages(), ElementsAre("<ERROR> Exception from work on the main thread: broken"));
}

TEST_F(PumpedExecutorTest, IgnoresEmptyWork) {
    mExecutor.dispatchAsync({});
    mExecutor.dispatchAfter(0ns, {});
    EXPECT_EQ(mExecutor.pump(), 0U);
}

TEST_F(PumpedExecutorTest, DropsWhatStillWaitsWhenItGoes) {
    const auto held = std::make_shared<int>();
    {
        PumpedExecutor executor;
        executor.dispatchAfter(1h, [held] {});
        EXPECT_EQ(held.use_count(), 2);
    }
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(PumpedExecutorTest, KnowsTheThreadThatPumps) {
    EXPECT_TRUE(mExecutor.isMainThread()) << "made here";
    bool mainBeforePump = true;
    bool mainInside = false;
    mExecutor.dispatchAsync([&] { mainInside = mExecutor.isMainThread(); });
    std::thread([&] {
        mainBeforePump = mExecutor.isMainThread();
        mExecutor.pump();
    }).join();
    EXPECT_FALSE(mainBeforePump);
    EXPECT_TRUE(mainInside);
    EXPECT_FALSE(mExecutor.isMainThread()) << "the other thread pumped last";
    mExecutor.pump();
    EXPECT_TRUE(mExecutor.isMainThread());
}

TEST_F(PumpedExecutorTest, PumpsUntilTheConditionHolds) {
    EXPECT_TRUE(mExecutor.pumpUntil([] { return true; }, 0ns));
    mExecutor.dispatchAsync(note(1));
    EXPECT_TRUE(mExecutor.pumpUntil([&] { return !mRan.empty(); }, 60s));
    EXPECT_THAT(mRan, ElementsAre(1));
}

TEST_F(PumpedExecutorTest, PumpsOnceAndGivesUpAtTheLimit) {
    mExecutor.dispatchAsync(note(1));
    EXPECT_FALSE(mExecutor.pumpUntil([] { return false; }, 0ns));
    EXPECT_THAT(mRan, ElementsAre(1));
    EXPECT_FALSE(mExecutor.pumpUntil([] { return false; }, -1s));
    EXPECT_FALSE(mExecutor.pumpUntil([] { return false; }, 10ms));
}

TEST_F(PumpedExecutorTest, SeesWorkAndTimeFromOtherThreadsWhileItSleeps) {
    Gate asked;
    std::thread other([&] {
        asked.wait();
        mExecutor.dispatchAfter(5s, note(2));
        mExecutor.dispatchAsync(note(1));
        mClock.advance(5s);
    });
    EXPECT_TRUE(mExecutor.pumpUntil(
        [&] {
            asked.open();
            return mRan.size() == 2;
        },
        60s));
    other.join();
    EXPECT_THAT(mRan, ElementsAre(1, 2));
}

TEST(PumpedExecutor, RunsTimersOfTheSteadyClock) {
    PumpedExecutor executor;
    bool fired = false;
    const auto begin = std::chrono::steady_clock::now();
    executor.dispatchAfter(20ms, [&] { fired = true; });
    EXPECT_EQ(executor.pump(), 0U);
    EXPECT_TRUE(executor.pumpUntil([&] { return fired; }, 60s));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, 20ms);
}

TEST(PumpedExecutor, TakesWorkFromSeveralThreadsInTheirOrder) {
    constexpr int kThreads = 4;
    constexpr int kPieces = 500;
    PumpedExecutor executor;
    std::vector<std::vector<int>> ran(kThreads);
    std::size_t count = 0;
    {
        std::vector<std::jthread> threads;
        for (std::size_t i = 0; i < kThreads; ++i) {
            threads.emplace_back([&, i] {
                for (int j = 0; j < kPieces; ++j)
                    executor.dispatchAsync([&, i, j] {
                        ran[i].push_back(j);
                        ++count;
                    });
            });
        }
        EXPECT_TRUE(executor.pumpUntil([&] { return count == std::size_t{kThreads} * kPieces; }, 60s));
    }
    for (const auto& pieces : ran)
        EXPECT_TRUE(std::is_sorted(pieces.begin(), pieces.end()));
}

}  // namespace
