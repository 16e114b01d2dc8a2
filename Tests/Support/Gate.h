#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace testsupport {

/// Closed until it is opened, and open for good then. Threads wait in front of it.
class Gate {
  public:
    void open() {
        const std::lock_guard lock(mMutex);
        mIsOpen = true;
        mOpened.notify_all();
    }

    void wait() const {
        std::unique_lock lock(mMutex);
        mOpened.wait(lock, [this] { return mIsOpen; });
    }

    /// Says whether the gate was opened within `limit`, which is there to end a broken test, not to measure time.
    bool waitFor(std::chrono::seconds limit = std::chrono::seconds(60)) const {
        std::unique_lock lock(mMutex);
        return mOpened.wait_for(lock, limit, [this] { return mIsOpen; });
    }

    bool isOpen() const {
        const std::lock_guard lock(mMutex);
        return mIsOpen;
    }

  private:
    mutable std::mutex mMutex;
    mutable std::condition_variable mOpened;
    bool mIsOpen = false;
};

}  // namespace testsupport
