#pragma once

#include <mutex>
#include <utility>

namespace qv {

/// A property value that several threads may read and replace. Each access takes the property's own lock, so a reader
/// never sees a half-replaced value; what a shared pointer points to is not guarded.
template <typename T>
class Atomic {
  public:
    Atomic() = default;
    /// Begins with that value.
    explicit Atomic(T value) : mValue(std::move(value)) {}
    Atomic(const Atomic&) = delete;
    Atomic& operator=(const Atomic&) = delete;

    /// A copy of the value, made under the lock.
    T load() const {
        const std::lock_guard lock(mMutex);
        return mValue;
    }

    /// Replaces the value; the previous one is released after the lock is.
    void store(T value) {
        const std::lock_guard lock(mMutex);
        std::swap(mValue, value);
    }

  private:
    mutable std::mutex mMutex;
    T mValue{};
};

}  // namespace qv
