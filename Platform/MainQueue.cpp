#include "QVPlatform/MainQueue.h"

#include <mutex>

namespace qv {

std::chrono::nanoseconds ManualClock::now() const {
    return std::chrono::nanoseconds(mNow.load());
}

void ManualClock::advance(std::chrono::nanoseconds by) {
    mNow += by.count();
}

PumpedExecutor::Clock ManualClock::clock() const {
    return [this] { return now(); };
}

namespace {

/// Never destroyed: threads may still dispatch while the process ends.
struct State {
    std::mutex mutex;
    std::shared_ptr<MainExecutor> standard;
    std::shared_ptr<MainExecutor> replacement;
};

State& state() {
    static State* const shared = new State;
    return *shared;
}

}  // namespace

std::shared_ptr<MainExecutor> MainQueue::executor() {
    const std::lock_guard lock(state().mutex);
    if (state().replacement) return state().replacement;
    if (!state().standard) state().standard = std::make_shared<PumpedExecutor>();
    return state().standard;
}

void MainQueue::setExecutor(std::shared_ptr<MainExecutor> executor) {
    const std::lock_guard lock(state().mutex);
    state().replacement.swap(executor);
}

}  // namespace qv
