#include "Server/WorkerPool.h"

#include <exception>
#include <utility>

namespace qv::recognition {
namespace {

using Clock = std::chrono::steady_clock;

JobReport run(Recogniser* recogniser, const Job& job) {
    JobReport report;
    report.waited = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - job.submitted);
    if (job.isAbandoned && job.isAbandoned->load()) return report;
    report.end = JobEnd::Failed;
    if (recogniser == nullptr) return report;
    // Whatever a picture makes the libraries do, the worker goes on with the next one.
    try {
        report.recognition = recogniser->recognise(job.jpeg, job.contentLanguage);
        report.end = JobEnd::Done;
    } catch (const std::exception& problem) {
        report.recognition.remark = problem.what();
    }
    return report;
}

void rest(Recogniser* recogniser) {
    try {
        if (recogniser != nullptr) recogniser->rest();
    } catch (const std::exception&) {
        // What could not be put in order is as it was, and is looked at again after the next card.
    }
}

}  // namespace

WorkerPool::WorkerPool(RecogniserFactory factory, std::size_t workers, std::size_t places)
    : mFactory(std::move(factory)), mWorkers(workers), mPlaces(places), mIdle(workers) {
    for (std::size_t i = 0; i < workers; ++i)
        mThreads.emplace_back([this] { work(); });
}

WorkerPool::~WorkerPool() {
    stop();
    for (auto& thread : mThreads)
        thread.join();
}

bool WorkerPool::submit(Job& job) {
    {
        const std::lock_guard lock(mMutex);
        if (mStopped || mWaiting.size() >= mPlaces + mIdle) return false;
        mWaiting.push_back(std::move(job));
    }
    mChanged.notify_one();
    return true;
}

void WorkerPool::stop() {
    std::deque<Job> dropped;
    {
        const std::lock_guard lock(mMutex);
        mStopped = true;
        dropped.swap(mWaiting);
    }
    mChanged.notify_all();
    for (auto& job : dropped)
        job.finished({});
}

std::size_t WorkerPool::busy() const {
    const std::lock_guard lock(mMutex);
    return mWorkers - mIdle;
}

std::size_t WorkerPool::waiting() const {
    const std::lock_guard lock(mMutex);
    return mWaiting.size();
}

void WorkerPool::work() {
    const auto recogniser = mFactory();
    for (Job job; next(job);) {
        JobReport report = run(recogniser.get(), job);
        {
            // Before the answer: whoever has it finds the worker free.
            const std::lock_guard lock(mMutex);
            ++mIdle;
        }
        job.finished(std::move(report));
        job = Job();
        rest(recogniser.get());
    }
}

bool WorkerPool::next(Job& job) {
    std::unique_lock lock(mMutex);
    mChanged.wait(lock, [this] { return mStopped || !mWaiting.empty(); });
    if (mWaiting.empty()) return false;
    job = std::move(mWaiting.front());
    mWaiting.pop_front();
    --mIdle;
    return true;
}

}  // namespace qv::recognition
