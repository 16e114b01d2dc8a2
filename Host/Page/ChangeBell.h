#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <mutex>
#include <vector>

namespace qvhost {

/// Tells those who wait that something has changed. Any thread may call; whoever waits is told on the thread that rang,
/// and exactly once.
class ChangeBell {
  public:
    using Clock = std::chrono::steady_clock;

    /// Tells at once when the count of changes is no longer `seen`, else when it changes, or at `until` at the latest
    /// (see `expire`).
    void await(std::uint64_t seen, Clock::time_point until, std::function<void()> told);
    /// One change more.
    void ring();
    /// Tells those whose time is over.
    void expire(Clock::time_point now);
    /// Tells all, and from now on everybody at once.
    void stop();

    std::uint64_t count() const;

  private:
    struct Waiting {
        Clock::time_point until;
        std::function<void()> told;
    };
    using WaitingList = std::vector<Waiting>;

    static void tell(const WaitingList& waiting);

    mutable std::mutex mMutex;
    std::uint64_t mCount = 1;
    bool mIsStopped = false;
    WaitingList mWaiting;
};

}  // namespace qvhost
