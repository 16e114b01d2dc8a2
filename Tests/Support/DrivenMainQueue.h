#pragma once

#include "QVPlatform/MainQueue.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <utility>

namespace testsupport {

/// The process's main executor while this lives, on a clock that the test drives. The test's thread is the main thread.
class DrivenMainQueue {
  public:
    DrivenMainQueue() { qv::MainQueue::setExecutor(mExecutor); }
    ~DrivenMainQueue() { qv::MainQueue::setExecutor(nullptr); }
    DrivenMainQueue(const DrivenMainQueue&) = delete;
    DrivenMainQueue& operator=(const DrivenMainQueue&) = delete;

    std::size_t pump() { return mExecutor->pumped.pump(); }
    /// Moves the clock on while the main thread is busy: what falls due waits for the next pump.
    void advance(std::chrono::nanoseconds time) { mExecutor->clock.advance(time); }
    /// Moves the clock on and runs what is due then.
    void pass(std::chrono::nanoseconds time) {
        advance(time);
        pump();
    }
    /// Runs what comes until `done` holds, with the clock standing still. False after a minute, which ends a broken
    /// test.
    bool pumpUntil(const std::function<bool()>& done) {
        return mExecutor->pumped.pumpUntil(done, std::chrono::minutes(1));
    }
    /// The same until so many pieces of work have run since the beginning.
    bool pumpUntilRan(std::size_t count) {
        return pumpUntil([&] { return mExecutor->ran >= count; });
    }

  private:
    /// Threads that are late may still hand work in, so they share this.
    struct Executor : qv::MainExecutor {
        qv::ManualClock clock;
        qv::PumpedExecutor pumped{clock.clock()};
        std::size_t ran = 0;

        std::function<void()> counted(std::function<void()> work) {
            return [this, work = std::move(work)] {
                ++ran;
                work();
            };
        }
        void dispatchAsync(std::function<void()> work) override { pumped.dispatchAsync(counted(std::move(work))); }
        void dispatchAfter(std::chrono::nanoseconds delay, std::function<void()> work) override {
            pumped.dispatchAfter(delay, counted(std::move(work)));
        }
        bool isMainThread() const override { return pumped.isMainThread(); }
    };

    std::shared_ptr<Executor> mExecutor = std::make_shared<Executor>();
};

}  // namespace testsupport
