#include "QVPlatform/Operation.h"

#include "Guarded.h"

#include <utility>

namespace qv {

void Operation::setCompletionBlock(std::function<void()> block) {
    const std::lock_guard lock(mMutex);
    mCompletionBlock.swap(block);
}

void Operation::runMain() {
    mExecuting = true;
    runGuarded("an operation", [this] { main(); });
    mExecuting = false;
    mFinished = true;
}

void Operation::runCompletionBlock() {
    std::function<void()> block;
    {
        // Taken out, so that a block that holds its operation does not keep it alive for ever.
        const std::lock_guard lock(mMutex);
        block.swap(mCompletionBlock);
    }
    if (block) runGuarded("a completion block", block);
}

}  // namespace qv
