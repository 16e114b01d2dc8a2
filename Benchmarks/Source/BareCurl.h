#pragma once

#include "QVPlatform/Data.h"
#include "Support/Duel.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace benchmarksupport {

/// Threads that post the same bytes with libcurl and nothing around it, each over a connection that stays open. Before
/// each post a thread does what it is told to.
class BareCurl {
  public:
    BareCurl(std::string url, const qv::Data& body, int threadCount, std::function<void()> beforePost);
    ~BareCurl();
    BareCurl(const BareCurl&) = delete;
    BareCurl& operator=(const BareCurl&) = delete;

    /// Posts so many times and waits for the answers; what it took, in all.
    Times post(int count);

  private:
    void serve();

    std::string mURL;
    const qv::Data& mBody;
    std::function<void()> mBeforePost;
    std::mutex mMutex;
    std::condition_variable mChanged;
    int mWaiting = 0;  ///< posts that nobody has begun
    int mUnfinished = 0;
    bool mFailed = false;
    bool mStops = false;
    std::vector<std::thread> mThreads;
};

}  // namespace benchmarksupport
