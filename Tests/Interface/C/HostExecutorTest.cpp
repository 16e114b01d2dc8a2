#include "CardHost.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace capitest {
namespace {

/// A loop as a host in C would have it: a list that one thread works through.
class HostLoop {
  public:
    ~HostLoop() {
        for (const Entry& entry : mWaiting)
            qv_work_release(entry.work);
    }

    qv_main_executor executor() {
        qv_main_executor executor = {};
        executor.size = sizeof executor;
        executor.user_data = this;
        executor.dispatch = [](void* data, std::uint64_t delay, qv_work* work) {
            static_cast<HostLoop*>(data)->add(delay, work);
        };
        executor.is_main_thread = [](void* data) -> std::int32_t {
            return static_cast<HostLoop*>(data)->mThread == std::this_thread::get_id();
        };
        executor.release = [](void* data) { static_cast<HostLoop*>(data)->countRelease(); };
        return executor;
    }

    /// Runs what comes until `done` holds; time stands still, so that only what is due at once runs.
    bool runUntil(const bool& done) {
        while (!done) {
            std::unique_lock lock(mMutex);
            const auto isDue = [](const Entry& entry) { return entry.delay == 0; };
            const auto found = [&] { return std::find_if(mWaiting.begin(), mWaiting.end(), isDue); };
            if (!mArrived.wait_for(lock, std::chrono::minutes(1), [&] { return found() != mWaiting.end(); })) break;
            const auto next = found();
            qv_work* const work = next->work;
            mWaiting.erase(next);
            lock.unlock();
            qv_work_run(work);
            qv_work_run(work);
        }
        return done;
    }

    /// Runs what was given first; says whether there was anything.
    bool runFirst() {
        qv_work* const work = takeFirst();
        qv_work_run(work);
        return work != nullptr;
    }
    /// Runs everything that waits, as if its time had come.
    void runAll() {
        while (runFirst()) {
        }
    }
    /// Once something waits.
    bool waitForWork() {
        std::unique_lock lock(mMutex);
        return mArrived.wait_for(lock, std::chrono::minutes(1), [&] { return !mWaiting.empty(); });
    }

    std::vector<std::uint64_t> delays() {
        const std::lock_guard lock(mMutex);
        std::vector<std::uint64_t> delays;
        for (const Entry& entry : mWaiting)
            delays.push_back(entry.delay);
        return delays;
    }
    /// Threads of the library may keep the executor a moment longer than it is installed.
    bool waitForReleases(int count) {
        std::unique_lock lock(mMutex);
        return mArrived.wait_for(lock, std::chrono::minutes(1), [&] { return mReleases >= count; });
    }
    int releases() {
        const std::lock_guard lock(mMutex);
        return mReleases;
    }

  private:
    struct Entry {
        std::uint64_t delay;
        qv_work* work;
    };
    void countRelease() {
        const std::lock_guard lock(mMutex);
        ++mReleases;
        mArrived.notify_all();
    }
    qv_work* takeFirst() {
        const std::lock_guard lock(mMutex);
        if (mWaiting.empty()) return nullptr;
        qv_work* const work = mWaiting.front().work;
        mWaiting.erase(mWaiting.begin());
        return work;
    }
    void add(std::uint64_t delay, qv_work* work) {
        const std::lock_guard lock(mMutex);
        mWaiting.push_back({delay, work});
        mArrived.notify_all();
    }

    const std::thread::id mThread = std::this_thread::get_id();
    int mReleases = 0;
    std::mutex mMutex;
    std::condition_variable mArrived;
    std::vector<Entry> mWaiting;
};

class HostExecutorTest : public CardHost {
  protected:
    ~HostExecutorTest() override {
        qv_set_main_executor(nullptr, nullptr);
        mLoop.waitForReleases(mInstallations);
    }

    void install(HostLoop& loop) {
        if (&loop == &mLoop) ++mInstallations;
        const qv_main_executor executor = loop.executor();
        ASSERT_EQ(qv_set_main_executor(&executor, nullptr), QV_OK);
    }

    HostLoop mLoop;
    int mInstallations = 0;
};

TEST_F(HostExecutorTest, RunsCompletionsInTheHostsLoop) {
    struct State {
        bool done = false;
        std::thread::id thread;
    } state;
    install(mLoop);
    const Request request = makeRequest();
    qv_request_set_completes_on_main_thread(request.get(), 1);
    const auto complete = [](qv_response* response, void* data) {
        *static_cast<State*>(data) = {true, std::this_thread::get_id()};
        qv_response_release(response);
    };
    ASSERT_EQ(qv_request_run(request.get(), complete, &state, nullptr, nullptr), QV_OK);
    EXPECT_TRUE(mLoop.runUntil(state.done));
    EXPECT_EQ(state.thread, std::this_thread::get_id());
    EXPECT_EQ(qv_pump(), 0U) << "the host pumps its own loop";
    qv_set_main_executor(nullptr, nullptr);
    EXPECT_TRUE(mLoop.waitForReleases(1));
}

TEST_F(HostExecutorTest, GetsTheTimeOutAsADelay) {
    install(mLoop);
    qv_set_search_time_out(2.5);
    const Response response = respond(makeRequest().get());
    Run run;
    const auto complete = [](qv_search_result* result, void*) { qv_search_result_release(result); };
    ASSERT_EQ(qv_search_start(response.get(), complete, &run, Run::release, nullptr), QV_OK);
    EXPECT_THAT(mLoop.delays(), testing::ElementsAre(0U)) << "a search begins in the loop, on the main thread as well";
    EXPECT_TRUE(mLoop.runFirst());
    EXPECT_THAT(mLoop.delays(), testing::ElementsAre(2'500'000'000U));
    EXPECT_EQ(run.releases, 0);
    mLoop.runAll();
    EXPECT_EQ(run.releases, 1);
}

TEST_F(HostExecutorTest, DropsAResponseThatTheLoopDrops) {
    Run run;
    {
        HostLoop loop;
        install(loop);
        const Request request = makeRequest();
        qv_request_set_completes_on_main_thread(request.get(), 1);
        ASSERT_EQ(run.start(request.get()), QV_OK);
        ASSERT_TRUE(loop.waitForWork());
        qv_set_main_executor(nullptr, nullptr);
        ASSERT_TRUE(loop.waitForReleases(1));
    }
    ASSERT_TRUE(run.released.waitFor());
    EXPECT_EQ(run.completions, 0);
    EXPECT_EQ(run.releases, 1);
}

/// A host that closes a note on its main thread hears no more of it there.
TEST_F(HostExecutorTest, DropsAResponseThatIsCancelledWhileItWaits) {
    install(mLoop);
    const Request request = makeRequest("closed");
    qv_request_set_completes_on_main_thread(request.get(), 1);
    Run closed;
    ASSERT_EQ(closed.start(request.get()), QV_OK);
    ASSERT_TRUE(mLoop.waitForWork());
    qv_cancel("another");
    qv_cancel("closed");
    Run again;
    EXPECT_EQ(again.start(request.get()), QV_OK) << "the note may be read again at once";
    while (again.completions == 0 && mLoop.waitForWork())
        mLoop.runAll();
    ASSERT_TRUE(closed.released.waitFor());
    ASSERT_TRUE(again.released.waitFor());
    EXPECT_EQ(closed.completions, 0);
    EXPECT_EQ(again.completions, 1);
    qv_response_release(again.response);
}

/// What is thrown is a failure like any other: with an error, and without the user data being kept.
TEST_F(HostExecutorTest, ReportsWhatTheHostThrows) {
    const Response response = respond(makeRequest().get());
    static qv_work* sWork = nullptr;
    qv_main_executor executor = mLoop.executor();
    executor.release = nullptr;
    executor.dispatch = [](void*, std::uint64_t, qv_work* work) {
        sWork = work;
        throw 1;
    };
    ASSERT_EQ(qv_set_main_executor(&executor, nullptr), QV_OK);
    Run run;
    qv_error* error = nullptr;
    const auto complete = [](qv_search_result* result, void*) { qv_search_result_release(result); };
    EXPECT_EQ(qv_search_start(response.get(), complete, &run, Run::release, &error), QV_FAILED);
    EXPECT_EQ(qv_error_code(error), QV_FAILED);
    EXPECT_THAT(textOf(qv_error_message(error)), testing::StartsWith("Out of memory, or a fault"));
    qv_error_release(error);
    EXPECT_EQ(run.releases, 0) << "the work is the host's, as it was given";
    qv_work_release(sWork);
    EXPECT_EQ(run.releases, 1);
}

TEST_F(HostExecutorTest, NeedsItsFunctions) {
    qv_main_executor executor = mLoop.executor();
    executor.dispatch = nullptr;
    qv_error* error = nullptr;
    EXPECT_EQ(qv_set_main_executor(&executor, &error), QV_INVALID_ARGUMENT);
    EXPECT_STREQ(qv_error_message(error), "The functions dispatch and is_main_thread are required.");
    qv_error_release(error);
    EXPECT_EQ(mLoop.releases(), 1);
    executor = mLoop.executor();
    executor.is_main_thread = nullptr;
    EXPECT_EQ(qv_set_main_executor(&executor, nullptr), QV_INVALID_ARGUMENT);
    executor = mLoop.executor();
    executor.size = sizeof executor - 1;
    EXPECT_EQ(qv_set_main_executor(&executor, nullptr), QV_INVALID_ARGUMENT);
    EXPECT_EQ(mLoop.releases(), 2) << "a structure of another shape is not looked into";
    executor = mLoop.executor();
    executor.size = sizeof executor + 64;
    EXPECT_EQ(qv_set_main_executor(&executor, nullptr), QV_OK) << "a later version's host";
}

}  // namespace
}  // namespace capitest
