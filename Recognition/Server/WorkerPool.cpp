#include "Server/WorkerPool.h"

#include <exception>
#include <utility>

namespace qv::recognition {
namespace {

void run(Recogniser* recogniser, Job& job) {
    if (job.isAbandoned && job.isAbandoned->load()) return job.finished(JobEnd::Dropped, {});
    if (recogniser == nullptr) return job.finished(JobEnd::Failed, {});
    Recognition recognition;
    // Whatever a picture makes the libraries do, the worker goes on with the next one.
    try {
        recognition = recogniser->recognise(job.jpeg, job.contentLanguage);
    } catch (const std::exception& problem) {
        recognition.remark = problem.what();
        return job.finished(JobEnd::Failed, std::move(recognition));
    }
    job.finished(JobEnd::Done, std::move(recognition));
}

}  // namespace

WorkerPool::WorkerPool(RecogniserFactory factory, std::size_t workers, std::size_t places)
    : mFactory(std::move(factory)), mPlaces(places), mIdle(workers) {
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
        job.finished(JobEnd::Dropped, {});
}

void WorkerPool::work() {
    const auto recogniser = mFactory();
    for (Job job; next(job); job = Job()) {
        run(recogniser.get(), job);
        const std::lock_guard lock(mMutex);
        ++mIdle;
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
