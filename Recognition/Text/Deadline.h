#pragma once

#include <algorithm>
#include <chrono>

namespace qv::recognition {

/// When work has to end. A value; any thread.
class Deadline {
  public:
    using Clock = std::chrono::steady_clock;

    static Deadline in(std::chrono::milliseconds time) { return Deadline(Clock::now() + time); }
    static Deadline never() { return Deadline(Clock::time_point::max()); }

    bool passed() const { return Clock::now() >= mEnd; }
    /// What is left, between 0 and one hour.
    std::chrono::milliseconds left() const {
        const auto now = Clock::now();
        if (mEnd <= now) return std::chrono::milliseconds(0);
        if (mEnd - now > std::chrono::hours(1)) return std::chrono::hours(1);
        return std::chrono::duration_cast<std::chrono::milliseconds>(mEnd - now);
    }
    /// The earlier of this and `time` from now.
    Deadline orIn(std::chrono::milliseconds time) const { return Deadline(std::min(mEnd, Clock::now() + time)); }

  private:
    explicit Deadline(Clock::time_point end) : mEnd(end) {}
    Clock::time_point mEnd;
};

}  // namespace qv::recognition
