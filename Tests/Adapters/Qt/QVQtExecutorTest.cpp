#include "../ExecutorContract.h"
#include "QVAdapters/QVQtExecutor.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>
#include <QTimer>
#include <optional>

namespace {

using namespace std::chrono_literals;

/// An application object of the test's own.
class QtLoop {
  public:
    std::shared_ptr<qv::MainExecutor> executor() { return QVQtExecutor::executorForCurrentThread(); }

    bool runUntil(const std::function<bool()>& done) {
        bool isLate = false;
        QTimer::singleShot(60s, &*mApplication, [&isLate] { isLate = true; });
        while (!done() && !isLate)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return done();
    }

    void onIdle(std::function<void()> work) { QTimer::singleShot(0ms, &*mApplication, std::move(work)); }
    void end() { mApplication.reset(); }

  private:
    int mCount = 1;
    char mName[5] = "test";
    char* mArguments[2] = {mName, nullptr};
    std::optional<QCoreApplication> mApplication{std::in_place, mCount, mArguments};
};

}  // namespace

namespace testsupport {
INSTANTIATE_TYPED_TEST_SUITE_P(Qt, ExecutorContract, QtLoop);
}  // namespace testsupport

namespace {

TEST(QVQtExecutor, NeedsAnApplication) {
    EXPECT_EQ(QVQtExecutor::executorForCurrentThread(), nullptr);
}

TEST(QVQtExecutor, ServesAThreadOfItsOwn) {
    QtLoop application;
    std::shared_ptr<qv::MainExecutor> executor;
    QThread* const thread = QThread::create([&] {
        executor = QVQtExecutor::executorForCurrentThread();
        QEventLoop loop;
        executor->dispatchAfter(1ms, [&] { loop.quit(); });
        loop.exec();
    });
    thread->start();
    ASSERT_TRUE(thread->wait(60000));
    delete thread;
    bool ran = false;
    executor->dispatchAsync([&] { ran = true; });
    executor.reset();
    EXPECT_FALSE(ran) << "its thread has ended";
}

TEST(QVQtExecutor, LeavesTheLoopAsleepWhileNothingIsDue) {
    QtLoop loop;
    const auto executor = loop.executor();
    executor->dispatchAfter(std::chrono::hours(1), [] {});
    bool ran = false;
    executor->dispatchAsync([&] { ran = true; });
    ASSERT_TRUE(loop.runUntil([&] { return ran; }));
    while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents)) {
    }
    EXPECT_FALSE(QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents))
        << "a loop that finds work never sleeps";
}

}  // namespace
