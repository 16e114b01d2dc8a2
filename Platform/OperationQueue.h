#pragma once

#include "Export.h"
#include "Operation.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace qv {

/// Runs operations on threads of its own, first in, first out, at most `maxConcurrentOperationCount` at once. Threads
/// are made when there is work and kept for the next. Any thread may call. An operation leaves the queue before its
/// completion block runs.
///
/// Destroying the queue does not wait: what it holds is still run to its end by its threads, which outlive it.
class QV_EXPORT OperationQueue {
  public:
    explicit OperationQueue(std::size_t maxConcurrentOperationCount);
    ~OperationQueue();
    OperationQueue(const OperationQueue&) = delete;
    OperationQueue& operator=(const OperationQueue&) = delete;

    std::size_t maxConcurrentOperationCount() const;

    void addOperation(std::shared_ptr<Operation> operation);

    /// A snapshot of what waits or runs, in the order added.
    std::vector<std::shared_ptr<Operation>> operations() const;

    void cancelAllOperations();

    /// Blocks until the queue is empty and every completion block has returned. Not from one of its own threads.
    void waitUntilAllOperationsAreFinished();

  private:
    struct State;
    std::shared_ptr<State> mState;
};

}  // namespace qv
