#include "WholeHost.h"

#include <deque>
#include <thread>

/// Main executors of hosts that do not keep the rules.
namespace misuse {
namespace {

using testsupport::Gate;
using Work = std::function<void()>;

/// Runs what it is given at once, whatever the delay, on four threads.
class ManyThreads : public qv::MainExecutor {
  public:
    ManyThreads() {
        for (int i = 0; i < 4; ++i)
            mThreads.emplace_back([this] { run(); });
    }
    /// Runs what there is to its end. Whoever lets go of the object last may be one of its threads.
    void stop() {
        {
            const std::lock_guard lock(mMutex);
            mIsOver = true;
        }
        mArrived.notify_all();
        mThreads.clear();
    }
    void dispatchAsync(Work work) override {
        const std::lock_guard lock(mMutex);
        mWaiting.push_back(std::move(work));
        mArrived.notify_one();
    }
    void dispatchAfter(std::chrono::nanoseconds, Work work) override { dispatchAsync(std::move(work)); }
    bool isMainThread() const override { return false; }

  private:
    void run() {
        std::unique_lock lock(mMutex);
        while (true) {
            mArrived.wait(lock, [this] { return mIsOver || !mWaiting.empty(); });
            if (mWaiting.empty()) return;
            Work work = std::move(mWaiting.front());
            mWaiting.pop_front();
            lock.unlock();
            work();
            work = nullptr;
            lock.lock();
        }
    }

    std::mutex mMutex;
    std::condition_variable mArrived;
    std::deque<Work> mWaiting;
    bool mIsOver = false;
    std::vector<std::jthread> mThreads;
};

/// Runs what it is given inside the call.
class InsideTheCall : public qv::MainExecutor {
  public:
    void dispatchAsync(Work work) override { work(); }
    void dispatchAfter(std::chrono::nanoseconds, Work work) override { work(); }
    bool isMainThread() const override { return true; }
};

/// Keeps everything and runs nothing.
class NeverRuns : public qv::MainExecutor {
  public:
    void dispatchAsync(Work work) override {
        const std::lock_guard lock(mMutex);
        mKept.push_back(std::move(work));
        mKeeps.notify_all();
    }
    void dispatchAfter(std::chrono::nanoseconds, Work work) override { dispatchAsync(std::move(work)); }
    bool isMainThread() const override { return false; }
    bool waitUntilItKeeps(std::size_t count) {
        std::unique_lock lock(mMutex);
        return mKeeps.wait_for(lock, std::chrono::minutes(1), [&] { return mKept.size() >= count; });
    }
    std::deque<Work> take() {
        const std::lock_guard lock(mMutex);
        return std::exchange(mKept, {});
    }

  private:
    std::mutex mMutex;
    std::condition_variable mKeeps;
    std::deque<Work> mKept;
};

/// A host with a loop of that kind; its provider finds nobody.
class ALoop : public testing::Test {
  protected:
    ALoop() {
        mManager->setLinkedInKey("");
        mManager->setLinkedInSecret("");
        QVSocialSearchManager::sharedManager()->setProviders({std::make_shared<Provider>(mDesk)});
        QVLinkFetcher::setFetcher([](const std::string&) { return std::nullopt; });
    }
    ~ALoop() override {
        QVSocialSearchManager::sharedManager()->setProviders({});
        QVLinkFetcher::setFetcher({});
        QVAddressBookController::sharedController()->setAddressBook(nullptr);
        qv::MainQueue::setExecutor(nullptr);
    }

    void hear(const qv::Notification& notification) {
        const std::lock_guard lock(mMutex);
        ++mHeard[std::any_cast<std::string>(notification.userInfo.at(std::string(kQVSocialSearchRequestIDKey)))];
        mChanged.notify_all();
    }
    bool waitUntilHeardOf(std::size_t count) {
        std::unique_lock lock(mMutex);
        return mChanged.wait_for(lock, std::chrono::minutes(1), [&] { return mHeard.size() >= count; });
    }
    std::map<std::string, int> heard() {
        const std::lock_guard lock(mMutex);
        return mHeard;
    }

    const testsupport::CapturedLog mLog;
    const DeskPtr mDesk = std::make_shared<Desk>();
    std::shared_ptr<QVBizCardManager> mManager = std::make_shared<QVBizCardManager>();
    std::mutex mMutex;
    std::condition_variable mChanged;
    std::map<std::string, int> mHeard;
    const qv::NotificationCenter::Token mObservation = qv::NotificationCenter::defaultCenter().addObserverForName(
        kQVSocialSearchFinishedNotification, [this](const auto& notification) { hear(notification); });
};

/// Answer and time-out of each search come on threads of their own at the same moment; one of them is announced.
TEST_F(ALoop, MayRunItsWorkOnManyThreadsAtOnce) {
    constexpr std::size_t kSearches = 150;
    std::vector<std::shared_ptr<QVCardProcessingResponse>> responses;
    for (std::size_t i = 0; i < kSearches; ++i)
        responses.push_back(socialsearch::scannedCard("note " + std::to_string(i)));
    const auto loop = std::make_shared<ManyThreads>();
    qv::MainQueue::setExecutor(loop);
    {
        std::jthread even([&] {
            for (std::size_t i = 0; i < kSearches; i += 2)
                mManager->addSocialSearchRequestFromCardProcessingResponse(responses[i]);
        });
        for (std::size_t i = 1; i < kSearches; i += 2)
            mManager->addSocialSearchRequestFromCardProcessingResponse(responses[i]);
    }
    EXPECT_TRUE(waitUntilHeardOf(kSearches));
    qv::MainQueue::setExecutor(nullptr);
    loop->stop();
    for (const auto& [note, count] : heard())
        EXPECT_EQ(count, 1) << note;
    EXPECT_TRUE(mManager->socialSearchRequestMap()->empty());
}

TEST_F(ALoop, MayRunItsWorkInsideTheCall) {
    const auto response = socialsearch::scannedCard("a");
    qv::MainQueue::setExecutor(std::make_shared<InsideTheCall>());
    mManager->addSocialSearchRequestFromCardProcessingResponse(response);
    EXPECT_EQ(heard(), (std::map<std::string, int>{{"a", 1}})) << "the time-out, which came at once";
    const auto saved = std::make_shared<Gate>();
    QVAddressBookController::sharedController()->setAddressBook(std::make_shared<AddressBook>(mDesk));
    QVAddressBookController::sharedController()->saveSocialProfileInAddressBook(
        std::make_shared<QVSocialProfile>(), [saved](const auto&) { saved->open(); });
    EXPECT_TRUE(saved->waitFor());
}

TEST_F(ALoop, MayNeverRunAnything) {
    const auto response = socialsearch::scannedCard("a");
    const auto kept = std::make_shared<Gate>();
    auto loop = std::make_shared<NeverRuns>();
    qv::MainQueue::setExecutor(loop);
    mManager->addSocialSearchRequestFromCardProcessingResponse(response);
    std::shared_ptr<void> whileHeld(nullptr, [kept](void*) { kept->open(); });
    QVAddressBookController::sharedController()->saveSocialProfileInAddressBook(
        std::make_shared<QVSocialProfile>(),
        [held = std::move(whileHeld)](const auto&) { FAIL() << "nobody runs this"; });
    // The manager's time-out, the providers' time, what the provider found, and the save.
    EXPECT_TRUE(loop->waitUntilItKeeps(4));
    mManager.reset();
    EXPECT_FALSE(kept->isOpen());
    qv::MainQueue::setExecutor(nullptr);
    loop.reset();
    EXPECT_TRUE(kept->waitFor()) << "what never ran goes with the loop";
    EXPECT_TRUE(heard().empty());
}

/// So late that the manager, the provider and the loop's own place are gone.
TEST_F(ALoop, MayRunItsWorkLate) {
    const auto response = socialsearch::scannedCard("a");
    const auto loop = std::make_shared<NeverRuns>();
    qv::MainQueue::setExecutor(loop);
    mManager->addSocialSearchRequestFromCardProcessingResponse(response);
    EXPECT_TRUE(loop->waitUntilItKeeps(3));
    mManager.reset();
    QVSocialSearchManager::sharedManager()->setProviders({});
    qv::MainQueue::setExecutor(nullptr);
    for (auto late = loop->take(); !late.empty(); late = loop->take()) {
        for (const Work& work : late)
            work();
    }
    EXPECT_EQ(heard(), (std::map<std::string, int>{{"a", 1}}));
}

/// One thread, but another than the host's main thread.
TEST_F(ALoop, MayBelongToAnotherThread) {
    const auto response = socialsearch::scannedCard("a");
    const auto loop = std::make_shared<qv::PumpedExecutor>();
    qv::MainQueue::setExecutor(loop);
    mManager->addSocialSearchRequestFromCardProcessingResponse(response);
    std::jthread([&] {
        EXPECT_TRUE(loop->pumpUntil([&] { return !heard().empty(); }, std::chrono::minutes(1)));
    }).join();
    EXPECT_EQ(heard(), (std::map<std::string, int>{{"a", 1}}));
}

/// The work that replaces the loop is its last use; the next search finds the new one.
TEST_F(ALoop, MayBeReplacedByItsOwnWork) {
    auto loop = std::make_shared<qv::PumpedExecutor>();
    qv::MainQueue::setExecutor(loop);
    loop->dispatchAsync([] { qv::MainQueue::setExecutor(std::make_shared<InsideTheCall>()); });
    const std::weak_ptr<qv::PumpedExecutor> watched = loop;
    mManager->addSocialSearchRequestFromCardProcessingResponse(socialsearch::scannedCard("dropped"));
    EXPECT_GT(std::exchange(loop, nullptr)->pump(), 0U);
    mManager->addSocialSearchRequestFromCardProcessingResponse(socialsearch::scannedCard("next"));
    EXPECT_EQ(heard()["next"], 1);
    EXPECT_LE(heard()["dropped"], 1);
    mManager.reset();
    EXPECT_TRUE(watched.expired());
}

}  // namespace
}  // namespace misuse
