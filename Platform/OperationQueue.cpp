#include "QVPlatform/OperationQueue.h"

#include "Guarded.h"
#include "QVPlatform/Log.h"
#include "QVPlatform/MainQueue.h"

#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <iterator>
#include <list>
#include <mutex>
#include <thread>
#include <utility>

namespace qv {
namespace {

/// A system without a thread to give is asked again so often and so many times: for two seconds.
constexpr std::chrono::milliseconds kUntilNextTry{100};
constexpr int kMostRefusals = 20;

}  // namespace

using Operations = std::list<std::shared_ptr<Operation>>;

/// What the queue and its threads share. The queue may be gone while threads still work.
struct OperationQueue::State {
    explicit State(std::size_t count) : maxCount(std::max<std::size_t>(count, 1)) {}

    const std::size_t maxCount;
    mutable std::mutex mutex;
    std::condition_variable workArrived;
    std::condition_variable allFinished;
    /// In the order added. Work is taken from the front on, so what runs stands before what waits.
    Operations operations;
    /// The first operation that waits.
    Operations::iterator next = operations.end();
    std::size_t waiting = 0;
    std::size_t threads = 0;
    /// Threads that run an operation or its completion block.
    std::size_t busy = 0;
    bool closed = false;
    /// Whether the main executor will ask for a thread, and how often it was refused one.
    bool trying = false;
    int refusals = 0;
    pid_t process = ::getpid();

    [[nodiscard]] Operations takeWorkOfParent();
    void append(std::shared_ptr<Operation> operation);
    bool needsThread() const { return waiting + busy > threads && threads < maxCount; }
    Operations::iterator take();
    void leave(Operations::iterator position);
    bool startThread(const std::shared_ptr<State>& self);
    static bool add(const std::shared_ptr<State>& self, std::shared_ptr<Operation> operation);
    static void tryLater(const std::shared_ptr<State>& self);
    static void tryAgain(const std::shared_ptr<State>& self);
    void runNext(std::unique_lock<std::mutex>& lock);
    static void work(const std::shared_ptr<State>& state);
};

/// A process that was forked has none of its parent's threads: what they run is the parent's to end, and what waits
/// needs threads of its own. The caller lets go of what it gets when it holds the lock no more.
Operations OperationQueue::State::takeWorkOfParent() {
    Operations work;
    if (process == ::getpid()) return work;
    process = ::getpid();
    work.splice(work.end(), operations, operations.begin(), next);
    threads = 0;
    busy = 0;
    return work;
}

void OperationQueue::State::append(std::shared_ptr<Operation> operation) {
    operations.push_back(std::move(operation));
    if (next == operations.end()) next = std::prev(operations.end());
    ++waiting;
}

Operations::iterator OperationQueue::State::take() {
    --waiting;
    ++busy;
    return next++;
}

/// The operation's own end is not the lock's business: the caller holds another reference.
void OperationQueue::State::leave(Operations::iterator position) {
    const std::lock_guard lock(mutex);
    operations.erase(position);
}

void OperationQueue::State::runNext(std::unique_lock<std::mutex>& lock) {
    const auto position = take();
    std::shared_ptr<Operation> operation = *position;
    lock.unlock();
    operation->runMain();
    leave(position);
    operation->runCompletionBlock();
    operation.reset();
    lock.lock();
    --busy;
    if (operations.empty() && busy == 0) allFinished.notify_all();
}

void OperationQueue::State::work(const std::shared_ptr<State>& state) {
    std::unique_lock lock(state->mutex);
    while (true) {
        state->workArrived.wait(lock, [&] { return state->waiting > 0 || state->closed; });
        if (state->waiting == 0) break;
        state->runNext(lock);
    }
    --state->threads;
}

bool OperationQueue::State::startThread(const std::shared_ptr<State>& self) {
    try {
        std::thread([self] { work(self); }).detach();
        ++threads;
        return true;
    } catch (const std::exception&) {
        // The system has none, or no memory for one.
        return false;
    }
}

/// Says whether the queue has all the threads that it wants.
bool OperationQueue::State::add(const std::shared_ptr<State>& self, std::shared_ptr<Operation> operation) {
    Operations workOfParent;
    const std::lock_guard lock(self->mutex);
    workOfParent = self->takeWorkOfParent();
    self->append(std::move(operation));
    self->workArrived.notify_one();
    return !self->needsThread() || self->startThread(self);
}

void OperationQueue::State::tryLater(const std::shared_ptr<State>& self) {
    {
        const std::lock_guard lock(self->mutex);
        if (self->trying) return;
        self->trying = true;
    }
    bool taken = false;
    runGuarded("the main executor", [&] {
        MainQueue::executor()->dispatchAfter(kUntilNextTry, [self] { tryAgain(self); });
        taken = true;
    });
    if (taken) return;
    const std::lock_guard lock(self->mutex);
    self->trying = false;
}

/// On the main executor. When it was refused often enough, the work is done right here, one operation at a time: that
/// holds up the main thread, but nothing waits for ever.
void OperationQueue::State::tryAgain(const std::shared_ptr<State>& self) {
    std::unique_lock lock(self->mutex);
    self->trying = false;
    if (self->waiting == 0 || self->threads > 0) return;
    if (self->startThread(self)) {
        self->refusals = 0;
        return;
    }
    if (++self->refusals >= kMostRefusals) self->runNext(lock);
    lock.unlock();
    tryLater(self);
}

OperationQueue::OperationQueue(std::size_t maxConcurrentOperationCount)
    : mState(std::make_shared<State>(maxConcurrentOperationCount)) {
}

OperationQueue::~OperationQueue() {
    const std::lock_guard lock(mState->mutex);
    mState->closed = true;
    mState->workArrived.notify_all();
}

std::size_t OperationQueue::maxConcurrentOperationCount() const {
    return mState->maxCount;
}

void OperationQueue::addOperation(std::shared_ptr<Operation> operation) {
    if (!operation) return;
    if (operation->mAdded.exchange(true)) {
        Log::write("<WARNING> The operation was already added to a queue! Ignored.");
        return;
    }
    if (!State::add(mState, std::move(operation))) {
        // The work stays in the queue: a thread that there is takes it, or one that there is later. The message takes
        // memory, which may be what there is too little of.
        State::tryLater(mState);
        Log::write("<ERROR> The system has no thread for the operation queue; its work is delayed.");
    }
}

std::vector<std::shared_ptr<Operation>> OperationQueue::operations() const {
    Operations workOfParent;
    const std::lock_guard lock(mState->mutex);
    workOfParent = mState->takeWorkOfParent();
    return {mState->operations.begin(), mState->operations.end()};
}

void OperationQueue::cancelAllOperations() {
    for (const auto& operation : operations())
        operation->cancel();
}

void OperationQueue::waitUntilAllOperationsAreFinished() {
    std::unique_lock lock(mState->mutex);
    mState->allFinished.wait(lock, [&] { return mState->operations.empty() && mState->busy == 0; });
}

}  // namespace qv
