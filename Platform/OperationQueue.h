#pragma once

#include "Export.h"
#include "Operation.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace qv {

/// Runs operations on threads of its own, first in, first out, at most `maxConcurrentOperationCount` at once. Threads
/// are made when there is work and kept for the next. Any thread may call. An operation leaves the queue before its
/// completion block runs, on the thread that ran its `main`; that thread takes the next operation when the block has
/// returned, so a block that waits holds one of the queue's places.
///
/// Where the system has no thread at all to give, the queue asks again for two seconds, on the main executor, and then
/// does the work there: that holds the main thread up, but ends what was added.
///
/// Destroying the queue does not wait: what it holds is still run to its end by its threads, which outlive it.
///
/// In a process that was forked the queue makes threads of its own; what ran in the parent is run there only, and what
/// waited there at that moment is run in both.
class QV_EXPORT OperationQueue {
  public:
    /// A count of 0 is taken for 1.
    explicit OperationQueue(std::size_t maxConcurrentOperationCount);
    ~OperationQueue();
    OperationQueue(const OperationQueue&) = delete;
    OperationQueue& operator=(const OperationQueue&) = delete;

    /// How many operations run at once.
    std::size_t maxConcurrentOperationCount() const;

    /// Null is ignored. An operation runs once: one that was added before, to whatever queue, is ignored with a logged
    /// warning.
    void addOperation(std::shared_ptr<Operation> operation);

    /// A snapshot of what waits or runs, in the order added.
    std::vector<std::shared_ptr<Operation>> operations() const;

    /// Sets the flag of each; their `main` is still called, and sees it.
    void cancelAllOperations();

    /// Blocks until the queue is empty and every completion block has returned. Not from one of its own threads.
    void waitUntilAllOperationsAreFinished();

  private:
    struct State;
    std::shared_ptr<State> mState;
};

}  // namespace qv
