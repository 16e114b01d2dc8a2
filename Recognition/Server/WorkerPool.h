#pragma once

#include "Recogniser.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace qv::recognition {

/// Makes the recogniser of one worker; runs on that worker's thread. Null: it cannot be made.
using RecogniserFactory = std::function<std::unique_ptr<Recogniser>()>;

enum class JobEnd { Done, Failed, Dropped };

/// What became of a job.
struct JobReport {
    JobEnd end = JobEnd::Dropped;
    Recognition recognition;
    std::chrono::microseconds waited{0};  ///< in the line, until a worker took it
};

/// One picture to be read. `finished` is called exactly once, on a worker's thread or, for a job that is dropped, on
/// the one that stops the pool.
struct Job {
    std::vector<std::uint8_t> jpeg;
    std::string contentLanguage;
    std::function<void(JobReport)> finished;
    std::shared_ptr<std::atomic<bool>> isAbandoned;  ///< set when nobody waits for it any more; may be null
    std::chrono::steady_clock::time_point submitted = std::chrono::steady_clock::now();
};

/// A fixed number of threads, each with a recogniser of its own that it makes before its first job, and a waiting line
/// of bounded length. Safe to call from any thread.
class WorkerPool {
  public:
    /// At most `places` jobs wait while all workers are busy.
    WorkerPool(RecogniserFactory factory, std::size_t workers, std::size_t places);
    ~WorkerPool();
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;

    /// False, and the job untouched, when the waiting line is full or the pool has stopped.
    bool submit(Job& job);
    /// Drops what waits; running jobs go on. Does not wait for them.
    void stop();

    std::size_t busy() const;     ///< workers that have a job
    std::size_t waiting() const;  ///< jobs without a worker

  private:
    void work();
    bool next(Job& job);

    const RecogniserFactory mFactory;
    const std::size_t mWorkers;
    const std::size_t mPlaces;
    mutable std::mutex mMutex;
    std::condition_variable mChanged;
    std::deque<Job> mWaiting;
    std::size_t mIdle = 0;
    bool mStopped = false;
    std::vector<std::thread> mThreads;
};

}  // namespace qv::recognition
