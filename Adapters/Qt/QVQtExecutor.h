#pragma once

#include "QVPlatform/Export.h"
#include "QVPlatform/MainQueue.h"

#include <memory>

/// The main executor of a host that runs a Qt 6 event loop: the library's work becomes events of a thread.
///
///     QApplication application(argc, argv);
///     qv::MainQueue::setExecutor(QVQtExecutor::executorForCurrentThread());
///
/// Any thread may dispatch, at any time; the loop need not run yet. Work runs in the order in which it falls due and
/// then in which it was given. Work that opens a loop within the loop (a dialogue) does not hold up the rest. What work
/// throws is caught and logged.
///
/// The executor may go before the loop or after it, on any thread: what still waits is dropped, but for work that the
/// loop has begun to run down. Once the application object is gone, or the thread has ended, nothing runs any more.
class QV_EXPORT QVQtExecutor : public qv::MainExecutor {
  public:
    /// `executorForCurrentThread` An executor for the event loop of the calling thread, usually that of the application
    /// object, which must be there already; null while there is none.
    static std::shared_ptr<QVQtExecutor> executorForCurrentThread();

    ~QVQtExecutor() override;
    QVQtExecutor(const QVQtExecutor&) = delete;
    QVQtExecutor& operator=(const QVQtExecutor&) = delete;

    void dispatchAsync(std::function<void()> work) override;
    void dispatchAfter(std::chrono::nanoseconds delay, std::function<void()> work) override;
    /// True on the thread that ran work last, or that made the executor if none did.
    bool isMainThread() const override;

  private:
    struct Loop;
    class Receiver;
    explicit QVQtExecutor(std::shared_ptr<Loop> loop);
    const std::shared_ptr<Loop> mLoop;
};
