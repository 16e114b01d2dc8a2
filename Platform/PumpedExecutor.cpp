#include "Guarded.h"
#include "QVPlatform/MainQueue.h"

#include <algorithm>
#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace qv {

using std::chrono::nanoseconds;

namespace {

/// How long `pumpUntil` sleeps at most: neither a driven clock nor the caller's condition wakes it.
constexpr std::chrono::milliseconds kLongestSleep{5};

nanoseconds steadyNow() {
    return std::chrono::steady_clock::now().time_since_epoch();
}

nanoseconds addSaturated(nanoseconds time, nanoseconds delay) {
    return delay > nanoseconds::max() - time ? nanoseconds::max() : time + delay;
}

}  // namespace

struct PumpedExecutor::State {
    /// When the work is due, and its place among what is due together.
    using Key = std::pair<nanoseconds, std::uint64_t>;

    explicit State(Clock source) : clock(std::move(source)) {}

    void add(nanoseconds delay, std::function<void()> work);
    std::optional<std::function<void()>> takeBefore(const Key& end);
    Key beginPump();
    std::uint64_t added() const;
    std::optional<nanoseconds> nextDue() const;

    const Clock clock;
    mutable std::mutex mutex;
    std::condition_variable workArrived;
    std::map<Key, std::function<void()>> waiting;
    std::uint64_t sequence = 0;
    std::thread::id mainThread = std::this_thread::get_id();
};

void PumpedExecutor::State::add(nanoseconds delay, std::function<void()> work) {
    if (!work) return;
    const nanoseconds due = addSaturated(clock(), std::max(delay, nanoseconds::zero()));
    const std::lock_guard lock(mutex);
    waiting.emplace(Key(due, sequence++), std::move(work));
    workArrived.notify_all();
}

/// Everything due now that was added until now stands before the key that this returns.
PumpedExecutor::State::Key PumpedExecutor::State::beginPump() {
    const nanoseconds now = clock();
    const std::lock_guard lock(mutex);
    mainThread = std::this_thread::get_id();
    return {now, sequence};
}

std::optional<std::function<void()>> PumpedExecutor::State::takeBefore(const Key& end) {
    const std::lock_guard lock(mutex);
    for (auto entry = waiting.begin(); entry != waiting.end() && entry->first.first <= end.first; ++entry) {
        if (entry->first.second >= end.second) continue;
        auto work = std::move(entry->second);
        waiting.erase(entry);
        return work;
    }
    return std::nullopt;
}

std::uint64_t PumpedExecutor::State::added() const {
    const std::lock_guard lock(mutex);
    return sequence;
}

std::optional<nanoseconds> PumpedExecutor::State::nextDue() const {
    const std::lock_guard lock(mutex);
    return waiting.empty() ? std::nullopt : std::optional(waiting.begin()->first.first);
}

PumpedExecutor::PumpedExecutor() : PumpedExecutor(steadyNow) {
}
PumpedExecutor::PumpedExecutor(Clock clock) : mState(std::make_unique<State>(std::move(clock))) {
}
PumpedExecutor::~PumpedExecutor() = default;

void PumpedExecutor::dispatchAsync(std::function<void()> work) {
    mState->add(nanoseconds::zero(), std::move(work));
}

void PumpedExecutor::dispatchAfter(nanoseconds delay, std::function<void()> work) {
    mState->add(delay, std::move(work));
}

bool PumpedExecutor::isMainThread() const {
    const std::lock_guard lock(mState->mutex);
    return mState->mainThread == std::this_thread::get_id();
}

std::size_t PumpedExecutor::pump() {
    std::size_t count = 0;
    const State::Key end = mState->beginPump();
    while (const auto work = mState->takeBefore(end)) {
        runGuarded("work on the main thread", *work);
        ++count;
    }
    return count;
}

std::optional<nanoseconds> PumpedExecutor::timeUntilNextWork() const {
    const auto due = mState->nextDue();
    if (!due) return std::nullopt;
    return std::max(*due - mState->clock(), nanoseconds::zero());
}

bool PumpedExecutor::pumpUntil(const std::function<bool()>& done, nanoseconds limit) {
    const nanoseconds end = addSaturated(steadyNow(), std::max(limit, nanoseconds::zero()));
    while (true) {
        const std::uint64_t seen = mState->added();
        const std::size_t count = pump();
        if (done()) return true;
        const nanoseconds left = end - steadyNow();
        if (left <= nanoseconds::zero()) return false;
        if (count > 0) continue;
        std::unique_lock lock(mState->mutex);
        mState->workArrived.wait_for(lock, std::min<nanoseconds>(left, kLongestSleep),
                                     [&] { return mState->sequence != seen; });
    }
}

}  // namespace qv
