#include "QVAdapters/QVQtExecutor.h"

#include <QBasicTimer>
#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QThread>
#include <algorithm>
#include <mutex>
#include <utility>

using std::chrono::nanoseconds;

/// The work, and the object that stands for it in the host's loop; null once that is gone.
struct QVQtExecutor::Loop {
    void wake();

    qv::PumpedExecutor pumped;
    std::mutex mutex;
    Receiver* receiver = nullptr;
    /// Whether an event is on its way already.
    bool isWoken = false;
};

/// Lives on the loop's thread and is told by events. Belongs to the application object, or to its thread's end; the
/// executor may go first.
class QVQtExecutor::Receiver : public QObject {
  public:
    explicit Receiver(const std::shared_ptr<Loop>& loop) : mLoop(loop) {}
    ~Receiver() override;
    Receiver(const Receiver&) = delete;
    Receiver& operator=(const Receiver&) = delete;

    static constexpr QEvent::Type kWake = QEvent::User;

  protected:
    bool event(QEvent* event) override;

  private:
    void runDueWork();
    void startTimer(const qv::PumpedExecutor& pumped);

    const std::weak_ptr<Loop> mLoop;
    QBasicTimer mTimer;
};

void QVQtExecutor::Loop::wake() {
    const std::lock_guard lock(mutex);
    if (receiver == nullptr || std::exchange(isWoken, true)) return;
    QCoreApplication::postEvent(receiver, new QEvent(Receiver::kWake));
}

QVQtExecutor::Receiver::~Receiver() {
    const auto loop = mLoop.lock();
    if (!loop) return;
    const std::lock_guard lock(loop->mutex);
    loop->receiver = nullptr;
}

bool QVQtExecutor::Receiver::event(QEvent* event) {
    if (event->type() != kWake && event->type() != QEvent::Timer) return QObject::event(event);
    runDueWork();
    return true;
}

/// The timer runs while the work does, so that a loop within the loop comes here again and sees to the rest. The work
/// may end the application, and this object with it.
void QVQtExecutor::Receiver::runDueWork() {
    const auto loop = mLoop.lock();
    if (!loop) return mTimer.stop();
    {
        const std::lock_guard lock(loop->mutex);
        loop->isWoken = false;
    }
    startTimer(loop->pumped);
    loop->pumped.pump();
    const std::lock_guard lock(loop->mutex);
    if (loop->receiver == this) startTimer(loop->pumped);
}

/// Whole milliseconds, rounded up: work is never early. No more than the timer can count; it looks again then.
void QVQtExecutor::Receiver::startTimer(const qv::PumpedExecutor& pumped) {
    const auto delay = pumped.timeUntilNextWork();
    if (!delay) return mTimer.stop();
    const auto wait = std::min<nanoseconds>(*delay, std::chrono::hours(24));
    const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(wait).count();
    mTimer.start(static_cast<int>(milliseconds), Qt::PreciseTimer, this);
}

std::shared_ptr<QVQtExecutor> QVQtExecutor::executorForCurrentThread() {
    QCoreApplication* const application = QCoreApplication::instance();
    if (application == nullptr) return nullptr;
    auto loop = std::make_shared<Loop>();
    loop->receiver = new Receiver(loop);
    if (application->thread() == QThread::currentThread()) {
        loop->receiver->setParent(application);
    } else {
        QObject::connect(QThread::currentThread(), &QThread::finished, loop->receiver, &QObject::deleteLater);
    }
    return std::shared_ptr<QVQtExecutor>(new QVQtExecutor(std::move(loop)));
}

QVQtExecutor::QVQtExecutor(std::shared_ptr<Loop> loop) : mLoop(std::move(loop)) {
}

/// The object may be in the middle of an event, on this thread or another: its own thread deletes it afterwards.
QVQtExecutor::~QVQtExecutor() {
    const std::lock_guard lock(mLoop->mutex);
    if (mLoop->receiver != nullptr) std::exchange(mLoop->receiver, nullptr)->deleteLater();
}

void QVQtExecutor::dispatchAsync(std::function<void()> work) {
    dispatchAfter(nanoseconds::zero(), std::move(work));
}

void QVQtExecutor::dispatchAfter(nanoseconds delay, std::function<void()> work) {
    mLoop->pumped.dispatchAfter(delay, std::move(work));
    mLoop->wake();
}

bool QVQtExecutor::isMainThread() const {
    return mLoop->pumped.isMainThread();
}
