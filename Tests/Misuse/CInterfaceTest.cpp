#include "Interface/C/CardHost.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <stdexcept>
#include <string_view>
#include <thread>
#include <vector>

/// Hosts of the C interface that misbehave.
namespace misuse {
namespace {

using capitest::Request;
using capitest::Response;
using testsupport::Gate;

class CHost : public capitest::CardHost {
  protected:
    void expectTheNextToGoItsWay() {
        const Response response = respond(makeRequest("next").get());
        EXPECT_STREQ(qv_response_name(response.get()), "Ada Example");
        EXPECT_EQ(qv_response_error_count(response.get()), 0U);
    }
};

struct Thrower {
    static std::int32_t done(void*) { throw std::runtime_error("done"); }
    static void sink(const char*, size_t, void*) { throw std::runtime_error("sink"); }
    static void release(void* data) {
        static_cast<Gate*>(data)->open();
        throw std::runtime_error("release");
    }
    static void complete(qv_response* response, void*) {
        qv_response_release(response);
        throw 7;
    }
    static void completeSearch(qv_search_result* result, void*) {
        qv_search_result_release(result);
        throw 7;
    }
};

TEST_F(CHost, MayThrowFromEveryCallback) {
    qv_set_log_sink(Thrower::sink, nullptr, nullptr);
    Gate released;
    ASSERT_EQ(qv_request_run(makeRequest().get(), Thrower::complete, &released, Thrower::release, nullptr), QV_OK);
    EXPECT_TRUE(released.waitFor());

    const Request onMain = makeRequest("main");
    qv_request_set_completes_on_main_thread(onMain.get(), 1);
    Gate releasedOnMain;
    ASSERT_EQ(qv_request_run(onMain.get(), Thrower::complete, &releasedOnMain, Thrower::release, nullptr), QV_OK);
    const auto isOpen = [](void* gate) -> std::int32_t { return static_cast<Gate*>(gate)->isOpen(); };
    EXPECT_EQ(qv_pump_until(isOpen, &releasedOnMain, 60), 1);

    const Response response = respond(makeRequest().get());
    Gate searched;
    qv_set_search_time_out(0);
    ASSERT_EQ(qv_search_start(response.get(), Thrower::completeSearch, &searched, Thrower::release, nullptr), QV_OK);
    EXPECT_EQ(qv_pump_until(isOpen, &searched, 60), 1);
    EXPECT_EQ(qv_pump_until(Thrower::done, nullptr, 60), 0);
    expectTheNextToGoItsWay();
}

/// A loop whose functions fail, each in its turn.
TEST_F(CHost, MayThrowFromItsLoop) {
    const Response response = respond(makeRequest().get());
    qv_set_search_credentials("", "", nullptr);
    static std::atomic<int> sFailures;
    sFailures = 0;
    qv_main_executor executor = {};
    executor.size = sizeof executor;
    executor.dispatch = [](void*, std::uint64_t, qv_work* work) {
        qv_work_release(work);
        ++sFailures;
        throw std::runtime_error("no loop");
    };
    executor.is_main_thread = [](void*) -> std::int32_t { throw 7; };
    ASSERT_EQ(qv_set_main_executor(&executor, nullptr), QV_OK);
    const Request request = makeRequest();
    qv_request_set_completes_on_main_thread(request.get(), 1);
    Run run;
    ASSERT_EQ(run.start(request.get()), QV_OK);
    EXPECT_TRUE(run.released.waitFor());
    EXPECT_EQ(run.completions, 0);
    Run search;
    const auto complete = [](qv_search_result* result, void*) { qv_search_result_release(result); };
    EXPECT_EQ(qv_search_start(response.get(), complete, &search, Run::release, nullptr), QV_FAILED);
    EXPECT_EQ(search.releases, 1);
    EXPECT_EQ(sFailures, 2);
    qv_set_main_executor(nullptr, nullptr);
    expectTheNextToGoItsWay();
}

/// A sink that does everything, once, when it hears of a request that is refused.
struct MeddlingSink {
    qv_request* other = nullptr;
    qv_request* same = nullptr;
    std::atomic<int> calls{0};
    std::atomic<int> statusOfOther{-1};
    std::atomic<int> statusOfSame{-1};
    Gate otherIsDone;

    static void hear(const char* message, size_t, void* data) {
        auto& sink = *static_cast<MeddlingSink*>(data);
        if (std::string_view(message).find("We already added") == std::string_view::npos || sink.calls++ > 0) return;
        const auto complete = [](qv_response* response, void*) { qv_response_release(response); };
        const auto release = [](void* gate) { static_cast<Gate*>(gate)->open(); };
        sink.statusOfOther = qv_request_run(sink.other, complete, &sink.otherIsDone, release, nullptr);
        sink.statusOfSame = qv_request_run(sink.same, complete, nullptr, nullptr, nullptr);
        qv_request_set_skip_note(sink.same, 1);
        qv_cancel("nobody's");
        qv_request_release(nullptr);
        qv_pump();
    }
};

TEST_F(CHost, MayCallTheLibraryFromItsLog) {
    const auto gate = std::make_shared<Gate>();
    testsupport::ScriptedServer slow;
    slow.respondAfter(gate, testsupport::ScriptedServer::answer(200, capitest::kAnswer));
    ASSERT_EQ(qv_set_server_url(slow.url().c_str(), nullptr), QV_OK);
    const Request same = makeRequest("same");
    const Request other = makeRequest("other");
    MeddlingSink sink;
    sink.same = same.get();
    sink.other = other.get();
    qv_set_log_sink(MeddlingSink::hear, &sink, nullptr);
    Run run;
    ASSERT_EQ(run.start(same.get()), QV_OK);
    Run refused;
    EXPECT_EQ(refused.start(same.get()), QV_REFUSED);
    EXPECT_EQ(sink.calls, 1) << "what the sink caused is not told to it";
    EXPECT_EQ(sink.statusOfOther, QV_OK);
    EXPECT_EQ(sink.statusOfSame, QV_REFUSED);
    gate->open();
    EXPECT_TRUE(run.released.waitFor());
    qv_response_release(run.response);
    EXPECT_TRUE(sink.otherIsDone.waitFor());
    qv_use_system_log();
    ASSERT_EQ(qv_set_server_url(mServer.url().c_str(), nullptr), QV_OK);
    expectTheNextToGoItsWay();
}

/// User data that starts the next card when it is released, and settings that are changed by what they replace.
TEST_F(CHost, MayCallTheLibraryFromARelease) {
    struct Chain {
        Request next;
        Run last;
    } chain{makeRequest("chained"), {}};
    const auto complete = [](qv_response* response, void*) { qv_response_release(response); };
    const auto release = [](void* data) {
        auto& state = *static_cast<Chain*>(data);
        qv_cancel("first");
        qv_set_log_sink(nullptr, nullptr, nullptr);
        EXPECT_EQ(state.last.start(state.next.get()), QV_OK);
    };
    ASSERT_EQ(qv_request_run(makeRequest("first").get(), complete, &chain, release, nullptr), QV_OK);
    EXPECT_TRUE(chain.last.released.waitFor());
    EXPECT_EQ(chain.last.completions, 1);
    qv_response_release(chain.last.response);
    const auto sink = [](const char*, size_t, void*) {};
    static std::atomic<int> sReleases;
    sReleases = 0;
    const auto replacing = [](void*) {
        ++sReleases;
        qv_use_system_log();
    };
    qv_set_log_sink(sink, nullptr, replacing);
    qv_set_log_sink(sink, nullptr, nullptr);
    EXPECT_EQ(sReleases, 1);
}

TEST_F(CHost, MayCancelAndStartAgainInItsCompletion) {
    struct State {
        Request request;
        Run again;
        std::atomic<int> calls{0};
    } state{makeRequest("a"), {}, {}};
    const auto complete = [](qv_response* response, void* data) {
        auto& self = *static_cast<State*>(data);
        ++self.calls;
        qv_response_release(response);
        qv_cancel("a");
        EXPECT_EQ(self.again.start(self.request.get()), QV_OK);
        self.request.reset();
        qv_set_main_executor(nullptr, nullptr);
    };
    ASSERT_EQ(qv_request_run(state.request.get(), complete, &state, nullptr, nullptr), QV_OK);
    EXPECT_TRUE(state.again.released.waitFor());
    EXPECT_EQ(state.calls, 1);
    EXPECT_EQ(state.again.completions, 1);
    qv_response_release(state.again.response);
}

/// What became of thousands of runs: each that was taken is released once, and completed at most once.
struct Tally {
    std::mutex mutex;
    std::condition_variable changed;
    int held = 0;
    std::atomic<int> completions{0};

    void hold() {
        const std::lock_guard lock(mutex);
        ++held;
    }
    static void complete(qv_response* response, void* data) {
        ++static_cast<Tally*>(data)->completions;
        qv_response_release(response);
    }
    static void release(void* data) {
        auto& tally = *static_cast<Tally*>(data);
        const std::lock_guard lock(tally.mutex);
        --tally.held;
        tally.changed.notify_all();
    }
    bool waitUntilNothingIsHeld() {
        std::unique_lock lock(mutex);
        return changed.wait_for(lock, std::chrono::minutes(2), [&] { return held == 0; });
    }
};

TEST_F(CHost, MayRunAndCancelThousandsOfCardsOnManyThreads) {
    constexpr int kThreads = 4;
    constexpr int kEach = 600;
    qv_set_log_sink(nullptr, nullptr, nullptr);
    // Without a server each card ends at once, with an error.
    ASSERT_EQ(qv_set_server_url(nullptr, nullptr), QV_OK);
    std::vector<Request> requests;
    for (int i = 0; i < 24; ++i)
        requests.push_back(makeRequest("note " + std::to_string(i)));
    Tally tally;
    std::atomic<int> taken{0};
    {
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < kThreads; ++thread) {
            threads.emplace_back([&, thread] {
                for (int i = 0; i < kEach; ++i) {
                    qv_request* const request = requests[static_cast<std::size_t>(i * 5 + thread) % 24].get();
                    tally.hold();
                    if (qv_request_run(request, Tally::complete, &tally, Tally::release, nullptr) == QV_OK) ++taken;
                    if (i % 3 == 0) qv_cancel(("note " + std::to_string(i % 24)).c_str());
                    if (i % 7 == 0) qv_request_set_token(request, i % 2 ? "one" : "another", nullptr);
                    if (i % 11 == 0) qv_request_set_language(request, i % 2 ? "de" : nullptr, nullptr);
                }
            });
        }
    }
    ASSERT_TRUE(tally.waitUntilNothingIsHeld());
    EXPECT_GT(taken, 0);
    EXPECT_GT(tally.completions, 0);
    EXPECT_LE(tally.completions, taken);
    ASSERT_EQ(qv_set_server_url(mServer.url().c_str(), nullptr), QV_OK);
    expectTheNextToGoItsWay();
}

/// A loop that runs what it gets on three threads, at once and whatever the delay.
class ThreadsOfAHost {
  public:
    ThreadsOfAHost() {
        for (int i = 0; i < 3; ++i)
            mThreads.emplace_back([this] { run(); });
    }
    ~ThreadsOfAHost() {
        {
            const std::lock_guard lock(mMutex);
            mIsOver = true;
        }
        mArrived.notify_all();
        mThreads.clear();
    }
    qv_main_executor executor() {
        qv_main_executor executor = {};
        executor.size = sizeof executor;
        executor.user_data = this;
        executor.dispatch = [](void* data, std::uint64_t, qv_work* work) {
            static_cast<ThreadsOfAHost*>(data)->add(work);
        };
        executor.is_main_thread = [](void*) -> std::int32_t { return 0; };
        executor.release = [](void* data) { static_cast<ThreadsOfAHost*>(data)->released.open(); };
        return executor;
    }

    Gate released;

  private:
    void add(qv_work* work) {
        const std::lock_guard lock(mMutex);
        mWaiting.push_back(work);
        mArrived.notify_one();
    }
    void run() {
        std::unique_lock lock(mMutex);
        while (true) {
            mArrived.wait(lock, [this] { return mIsOver || !mWaiting.empty(); });
            if (mWaiting.empty()) return;
            qv_work* const work = mWaiting.front();
            mWaiting.pop_front();
            lock.unlock();
            qv_work_run(work);
            lock.lock();
        }
    }

    std::mutex mMutex;
    std::condition_variable mArrived;
    std::deque<qv_work*> mWaiting;
    bool mIsOver = false;
    std::vector<std::jthread> mThreads;
};

TEST_F(CHost, MayRunItsLoopOnManyThreads) {
    constexpr int kSearches = 60;
    qv_set_log_sink(nullptr, nullptr, nullptr);
    qv_set_search_credentials("", "", nullptr);
    std::vector<Response> responses;
    for (int i = 0; i < kSearches; ++i)
        responses.push_back(respond(makeRequest("note " + std::to_string(i)).get()));
    Tally tally;
    const auto complete = [](qv_search_result* result, void* data) {
        ++static_cast<Tally*>(data)->completions;
        qv_search_result_release(result);
    };
    ThreadsOfAHost loop;
    const qv_main_executor executor = loop.executor();
    ASSERT_EQ(qv_set_main_executor(&executor, nullptr), QV_OK);
    for (const Response& response : responses) {
        tally.hold();
        ASSERT_EQ(qv_search_start(response.get(), complete, &tally, Tally::release, nullptr), QV_OK);
    }
    EXPECT_TRUE(tally.waitUntilNothingIsHeld());
    EXPECT_EQ(tally.completions, kSearches) << "each search ends once";
    qv_set_main_executor(nullptr, nullptr);
    EXPECT_TRUE(loop.released.waitFor());
}

}  // namespace
}  // namespace misuse
