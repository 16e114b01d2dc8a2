#pragma once

#include "Export.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>

namespace qv {

/// A unit of work for an `OperationQueue`. A class derived from it overrides `main`.
///
/// `cancel`, the state queries and the completion block may be used from any thread. `main` and the completion block
/// run once each, on a thread of the queue; what either throws is caught there and logged.
class QV_EXPORT Operation {
  public:
    Operation() = default;
    virtual ~Operation() = default;
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

    /// The work. Called by the queue also for an operation that was cancelled while it waited.
    virtual void main() = 0;

    /// Sets the flag; interrupts nothing.
    void cancel() { mCancelled = true; }
    /// Whether somebody called `cancel`.
    bool isCancelled() const { return mCancelled; }
    /// Whether `main` is running.
    bool isExecuting() const { return mExecuting; }
    /// Whether `main` has returned.
    bool isFinished() const { return mFinished; }

    /// Runs after `main`, once the operation has left its queue; released when it has run. Setting it when the
    /// operation has finished has no effect. It may add the operation's successor to the queue, and may destroy the
    /// queue.
    void setCompletionBlock(std::function<void()> block);

  private:
    friend class OperationQueue;
    void runMain();
    void runCompletionBlock();

    std::atomic<bool> mAdded{false};
    std::atomic<bool> mCancelled{false};
    std::atomic<bool> mExecuting{false};
    std::atomic<bool> mFinished{false};
    std::mutex mMutex;
    std::function<void()> mCompletionBlock;
};

}  // namespace qv
