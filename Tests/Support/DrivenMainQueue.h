#pragma once

#include "QVPlatform/MainQueue.h"

#include <chrono>
#include <functional>
#include <memory>

namespace testsupport {

/// The process's main executor while this lives, on a clock that the test drives. The test's thread is the main thread.
class DrivenMainQueue {
  public:
    DrivenMainQueue() { qv::MainQueue::setExecutor(mExecutor); }
    ~DrivenMainQueue() { qv::MainQueue::setExecutor(nullptr); }
    DrivenMainQueue(const DrivenMainQueue&) = delete;
    DrivenMainQueue& operator=(const DrivenMainQueue&) = delete;

    std::size_t pump() { return mExecutor->pump(); }
    /// Moves the clock on and runs what is due then.
    void pass(std::chrono::nanoseconds time) {
        mClock->advance(time);
        mExecutor->pump();
    }
    /// Runs what comes until `done` holds, with the clock standing still. False after a minute, which ends a broken
    /// test.
    bool pumpUntil(const std::function<bool()>& done) { return mExecutor->pumpUntil(done, std::chrono::minutes(1)); }

  private:
    /// Work that is late may still ask the executor for the time.
    std::shared_ptr<qv::ManualClock> mClock = std::make_shared<qv::ManualClock>();
    std::shared_ptr<qv::PumpedExecutor> mExecutor =
        std::make_shared<qv::PumpedExecutor>([clock = mClock] { return clock->now(); });
};

}  // namespace testsupport
