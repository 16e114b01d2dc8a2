#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>

namespace qv::recognition {

/// How long something took, counted by size. Not safe between threads.
class Histogram {
  public:
    /// The upper ends of its steps, in seconds; what took longer is in no step but in the count.
    static constexpr std::array<double, 13> kBounds = {0.005, 0.01, 0.025, 0.05, 0.1, 0.25, 0.5, 1, 2.5, 5, 10, 15, 30};

    void add(std::chrono::microseconds time) {
        const double seconds = std::chrono::duration<double>(time).count();
        for (std::size_t i = 0; i < kBounds.size(); ++i)
            mUpTo[i] += seconds <= kBounds[i] ? 1U : 0U;
        mSum += time;
        ++mCount;
    }

    /// How many took no longer than the bound with that index.
    std::uint64_t countUpTo(std::size_t bound) const { return mUpTo[bound]; }
    std::uint64_t count() const { return mCount; }
    double sum() const { return std::chrono::duration<double>(mSum).count(); }

  private:
    std::array<std::uint64_t, kBounds.size()> mUpTo{};
    std::uint64_t mCount = 0;
    std::chrono::microseconds mSum{0};
};

}  // namespace qv::recognition
