#include "QVPlatform/MainQueue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

using namespace std::chrono_literals;
using qv::MainExecutor;
using qv::MainQueue;
using qv::ManualClock;
using qv::PumpedExecutor;

namespace {

class MainQueueTest : public testing::Test {
  protected:
    void TearDown() override { MainQueue::setExecutor(nullptr); }
};

TEST_F(MainQueueTest, IsAPumpedExecutorAtFirst) {
    const auto executor = MainQueue::executor();
    ASSERT_NE(executor, nullptr);
    EXPECT_NE(dynamic_cast<PumpedExecutor*>(executor.get()), nullptr);
    EXPECT_EQ(MainQueue::executor(), executor);
}

TEST_F(MainQueueTest, TakesTheHostsExecutorAndGivesTheDefaultBack) {
    const auto standard = MainQueue::executor();
    ManualClock clock;
    const auto own = std::make_shared<PumpedExecutor>(clock.clock());
    MainQueue::setExecutor(own);
    EXPECT_EQ(MainQueue::executor(), own);
    MainQueue::setExecutor(nullptr);
    EXPECT_EQ(MainQueue::executor(), standard);
    EXPECT_EQ(own.use_count(), 1) << "the host's executor is released";
}

TEST_F(MainQueueTest, KeepsWhatWaitsInTheDefault) {
    const auto standard = std::dynamic_pointer_cast<PumpedExecutor>(MainQueue::executor());
    ASSERT_NE(standard, nullptr);
    bool ran = false;
    MainQueue::executor()->dispatchAsync([&] { ran = true; });
    MainQueue::setExecutor(std::make_shared<PumpedExecutor>());
    MainQueue::setExecutor(nullptr);
    EXPECT_TRUE(standard->pumpUntil([&] { return ran; }, 60s));
}

TEST_F(MainQueueTest, IsForSeveralThreads) {
    std::vector<std::jthread> threads;
    std::atomic<int> missing{0};
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&, i] {
            for (int j = 0; j < 500; ++j) {
                if (i == 0) MainQueue::setExecutor(j % 2 ? std::make_shared<PumpedExecutor>() : nullptr);
                if (!MainQueue::executor()) ++missing;
            }
        });
    }
    threads.clear();
    EXPECT_EQ(missing, 0);
}

TEST(ManualClock, StandsStillUntilItIsMoved) {
    ManualClock clock;
    const auto read = clock.clock();
    EXPECT_EQ(clock.now(), 0ns);
    clock.advance(1500ms);
    EXPECT_EQ(clock.now(), 1500ms);
    EXPECT_EQ(read(), 1500ms);
    EXPECT_EQ(read(), 1500ms);
    clock.advance(1ns);
    EXPECT_EQ(read(), 1500000001ns);
}

}  // namespace
