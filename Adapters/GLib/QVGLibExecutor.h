#pragma once

#include "QVPlatform/Export.h"
#include "QVPlatform/MainQueue.h"

#include <memory>

/// GLib's own, as its headers have it.
typedef struct _GMainContext GMainContext;

/// The main executor of a host that runs a GLib main loop: the library's work becomes work of the loop.
///
///     qv::MainQueue::setExecutor(QVGLibExecutor::executorForContext(nullptr));
///
/// Any thread may dispatch, at any time; the loop need not run yet. Work runs at the loop's default priority, in the
/// order in which it falls due and then in which it was given. Work that opens a loop within the loop (a dialogue) does
/// not hold up the rest. What work throws is caught and logged.
///
/// The executor keeps the context. It may go before the loop or after it, on any thread: what still waits is dropped,
/// but for work that the loop has begun to run down.
class QV_EXPORT QVGLibExecutor : public qv::MainExecutor {
  public:
    /// `executorForContext:` An executor for that context; null is the global default one. Call it on the thread that
    /// runs the loop.
    static std::shared_ptr<QVGLibExecutor> executorForContext(GMainContext* context);

    ~QVGLibExecutor() override;
    QVGLibExecutor(const QVGLibExecutor&) = delete;
    QVGLibExecutor& operator=(const QVGLibExecutor&) = delete;

    void dispatchAsync(std::function<void()> work) override;
    void dispatchAfter(std::chrono::nanoseconds delay, std::function<void()> work) override;
    /// True on the thread that ran work last, or that made the executor if none did.
    bool isMainThread() const override;

  private:
    struct Loop;
    explicit QVGLibExecutor(std::shared_ptr<Loop> loop);
    const std::shared_ptr<Loop> mLoop;
};
