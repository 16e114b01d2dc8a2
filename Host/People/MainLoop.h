#pragma once

#include "QVPlatform/MainQueue.h"

#include <chrono>
#include <functional>
#include <memory>

namespace qvhost {

/// The program's main thread as the libraries' main executor, while this lives: answers are delivered while it waits
/// for them. For the thread that made it.
class MainLoop {
  public:
    MainLoop() { qv::MainQueue::setExecutor(mExecutor); }
    /// On this clock; for tests that drive it.
    explicit MainLoop(qv::PumpedExecutor::Clock clock)
        : mExecutor(std::make_shared<qv::PumpedExecutor>(std::move(clock))) {
        qv::MainQueue::setExecutor(mExecutor);
    }
    ~MainLoop() { qv::MainQueue::setExecutor(nullptr); }
    MainLoop(const MainLoop&) = delete;
    MainLoop& operator=(const MainLoop&) = delete;

    /// Runs what comes until `done` holds, or the time is over by the steady clock; says whether it held.
    bool runUntil(const std::function<bool()>& done, std::chrono::nanoseconds limit) {
        return mExecutor->pumpUntil(done, limit);
    }

  private:
    std::shared_ptr<qv::PumpedExecutor> mExecutor = std::make_shared<qv::PumpedExecutor>();
};

}  // namespace qvhost
