#include "WholeHost.h"

#include <thread>

/// Hosts that do not keep to one thread.
namespace misuse {
namespace {

/// Counts what the log tells of operations, and forgets the rest.
class OperationLog {
  public:
    OperationLog() {
        qv::Log::setSink([counts = mCounts](std::string_view message) {
            if (message.find(" completed!") != std::string_view::npos) ++counts->completed;
            if (message.find(" is cancelled!") != std::string_view::npos) ++counts->cancelled;
            if (message.find("We already added") != std::string_view::npos) ++counts->refused;
        });
    }
    ~OperationLog() { qv::Log::useSystemLog(); }
    OperationLog(const OperationLog&) = delete;
    OperationLog& operator=(const OperationLog&) = delete;

    int completed() const { return mCounts->completed; }
    int cancelled() const { return mCounts->cancelled; }
    int refused() const { return mCounts->refused; }

  private:
    struct Counts {
        std::atomic<int> completed{0};
        std::atomic<int> cancelled{0};
        std::atomic<int> refused{0};
    };
    const std::shared_ptr<Counts> mCounts = std::make_shared<Counts>();
};

/// How often completion blocks were called, and how many of them the library still holds.
class Completions {
  public:
    QVBizCardManager::Completion make() {
        {
            const std::lock_guard lock(mState->mutex);
            ++mState->held;
        }
        std::shared_ptr<void> whileHeld(nullptr, [state = mState](void*) {
            const std::lock_guard lock(state->mutex);
            --state->held;
            state->changed.notify_all();
        });
        return [state = mState, held = std::move(whileHeld)](const auto&) { ++state->calls; };
    }
    bool waitUntilNoneIsHeld() const {
        std::unique_lock lock(mState->mutex);
        return mState->changed.wait_for(lock, std::chrono::minutes(2), [&] { return mState->held == 0; });
    }
    int calls() const { return mState->calls; }

  private:
    struct State {
        std::mutex mutex;
        std::condition_variable changed;
        int held = 0;
        std::atomic<int> calls{0};
    };
    const std::shared_ptr<State> mState = std::make_shared<State>();
};

class ManyThreads : public testing::Test {
  protected:
    ManyThreads() {
        mServer.respond(scans::answer({scans::kName, scans::kTitle, scans::kEmail}));
        mManager->setupOperationQueue();
        mManager->setServerURL(mServer.url());
    }

    /// Few notes, so that threads meet at the same; every tenth card goes to the server, the others end at once.
    std::shared_ptr<QVCardProcessingRequest> request(int number) const {
        auto made = QVCardProcessingRequest::initWithNoteUUID(std::to_string(number % 97), mPictures, nullptr, "token",
                                                              /*processImageForOCR=*/false);
        if (number % 10 != 0) made->setAuthToken(std::nullopt);
        return made;
    }

    const QVImageArray mPictures = scans::pictures({scans::picture()});
    testsupport::ScriptedServer mServer;
    std::shared_ptr<QVBizCardManager> mManager = std::make_shared<QVBizCardManager>();
};

/// As long as three cards are held, the others wait, and each that is cancelled meanwhile is never told of.
TEST_F(ManyThreads, CancelWhatWaits) {
    const OperationLog log;
    const Completions completions;
    managers::HoldingServer holding;
    mManager->setServerURL(holding.url());
    Completions all = completions;
    for (const char* note : {"a", "b", "c"})
        mManager->addRequest(scans::request(note, note), all.make());
    ASSERT_TRUE(holding.waitForRequests(3));
    {
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < 4; ++thread) {
            threads.emplace_back([&, thread] {
                Completions own = completions;
                for (int i = 0; i < 100; ++i) {
                    const std::string note = std::to_string(thread) + " " + std::to_string(i);
                    mManager->addRequest(scans::request(note), own.make());
                    if (i % 2 == 0) mManager->cancelRequestWithIDString(note);
                }
            });
        }
    }
    holding.letAllGo();
    ASSERT_TRUE(completions.waitUntilNoneIsHeld());
    EXPECT_EQ(log.cancelled(), 200);
    EXPECT_EQ(log.completed(), 203);
    EXPECT_EQ(completions.calls(), 203);
}

TEST_F(ManyThreads, AddAndCancelThousandsOfCards) {
    constexpr int kThreads = 4;
    constexpr int kEach = 1500;
    const OperationLog log;
    const Completions completions;
    qv::AssertionHandler::setHandler([](const qv::AssertionFailure&) {});
    {
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < kThreads; ++thread) {
            threads.emplace_back([&, thread] {
                Completions all = completions;
                for (int i = 0; i < kEach; ++i) {
                    mManager->addRequest(request(i * kThreads + thread), all.make());
                    if (i % 3 == 0) mManager->cancelRequestWithIDString(std::to_string((i * 7 + thread) % 97));
                    if (i % 50 == 0) mManager->setServerURL(mServer.url());
                    if (i % 50 == 1) mManager->setContactNoteDataSource(nullptr);
                    if (i % 50 == 2) mManager->setSearchTimeOut(i);
                }
            });
        }
    }
    ASSERT_TRUE(completions.waitUntilNoneIsHeld());
    qv::AssertionHandler::setHandler({});
    EXPECT_EQ(completions.calls(), log.completed()) << "each once";
    EXPECT_EQ(log.completed() + log.cancelled() + log.refused(), kThreads * kEach) << "and each ends";
    EXPECT_GT(log.completed(), 0);
    EXPECT_GT(log.refused(), 0);
}

/// The last reference to the manager may be any thread's, at any moment.
TEST_F(ManyThreads, LetTheManagerGoWithCardsUnderWay) {
    const OperationLog log;
    const Completions completions;
    qv::AssertionHandler::setHandler([](const qv::AssertionFailure&) {});
    for (int round = 0; round < 20; ++round) {
        auto manager = std::make_shared<QVBizCardManager>();
        manager->setupOperationQueue();
        manager->setServerURL(mServer.url());
        const std::weak_ptr<QVBizCardManager> watched = manager;
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < 3; ++thread) {
            threads.emplace_back([&, thread] {
                Completions all = completions;
                for (int i = 0; i < 150; ++i) {
                    if (const auto held = watched.lock()) held->addRequest(request(i * 3 + thread), all.make());
                }
            });
        }
        manager.reset();
    }
    ASSERT_TRUE(completions.waitUntilNoneIsHeld());
    qv::AssertionHandler::setHandler({});
    EXPECT_EQ(completions.calls(), log.completed());
}

/// The queue goes and comes while others add: nothing is lost twice or kept.
TEST_F(ManyThreads, CleanTheQueueUpWhileOthersAdd) {
    const OperationLog log;
    const Completions completions;
    qv::AssertionHandler::setHandler([](const qv::AssertionFailure&) {});
    {
        std::jthread cleaner([&] {
            for (int i = 0; i < 200; ++i) {
                mManager->cleanUpOperationQueue();
                mManager->setupOperationQueue();
            }
        });
        Completions all = completions;
        for (int i = 0; i < 2000; ++i)
            mManager->addRequest(request(i), all.make());
    }
    ASSERT_TRUE(completions.waitUntilNoneIsHeld());
    qv::AssertionHandler::setHandler({});
    EXPECT_EQ(completions.calls(), log.completed());
    const auto outcome = std::make_shared<managers::Outcome>();
    mManager->addRequest(scans::request("next"), managers::completionInto(outcome));
    ASSERT_TRUE(outcome->released.waitFor());
    EXPECT_EQ(outcome->calls, 1);
}

}  // namespace
}  // namespace misuse
