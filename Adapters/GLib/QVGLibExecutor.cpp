#include "QVAdapters/QVGLibExecutor.h"

#include <glib.h>

#include <algorithm>
#include <mutex>
#include <utility>

using std::chrono::nanoseconds;

/// The work, and the source that stands for it in the host's loop. The source shares it, because the loop may be
/// running work while the executor goes.
struct QVGLibExecutor::Loop {
    explicit Loop(GMainContext* hostContext);
    ~Loop();
    Loop(const Loop&) = delete;
    Loop& operator=(const Loop&) = delete;

    void wakeWhenWorkIsDue();
    static gboolean runDueWork(gpointer data);

    GMainContext* const context;
    GSource* const source;
    qv::PumpedExecutor pumped;
    /// Held from the look at what waits until the loop is told, so that the last to tell has seen everything.
    std::mutex mutex;
};

namespace {

gboolean callBack(GSource* /*source*/, GSourceFunc callback, gpointer data) {
    return callback != nullptr ? callback(data) : G_SOURCE_REMOVE;
}

GSourceFuncs gFunctions = {nullptr, nullptr, callBack, nullptr, nullptr, nullptr};

/// Whole microseconds, rounded up: work is never early. So far that nothing overflows; the loop looks again then.
gint64 microseconds(nanoseconds delay) {
    using Microseconds = std::chrono::duration<gint64, std::micro>;
    return std::chrono::ceil<Microseconds>(std::min<nanoseconds>(delay, std::chrono::hours(24))).count();
}

}  // namespace

QVGLibExecutor::Loop::Loop(GMainContext* hostContext)
    : context(g_main_context_ref(hostContext != nullptr ? hostContext : g_main_context_default())),
      source(g_source_new(&gFunctions, sizeof(GSource))) {
    g_source_set_static_name(source, "QVCardScan");
    g_source_set_can_recurse(source, TRUE);
}

QVGLibExecutor::Loop::~Loop() {
    g_source_unref(source);
    g_main_context_unref(context);
}

void QVGLibExecutor::Loop::wakeWhenWorkIsDue() {
    const std::lock_guard lock(mutex);
    const auto delay = pumped.timeUntilNextWork();
    g_source_set_ready_time(source, delay ? g_get_monotonic_time() + microseconds(*delay) : -1);
}

/// The source stays ready while work runs, so that a loop within the loop comes here again and sees to the rest.
gboolean QVGLibExecutor::Loop::runDueWork(gpointer data) {
    Loop& loop = **static_cast<std::shared_ptr<Loop>*>(data);
    loop.pumped.pump();
    loop.wakeWhenWorkIsDue();
    return G_SOURCE_CONTINUE;
}

std::shared_ptr<QVGLibExecutor> QVGLibExecutor::executorForContext(GMainContext* context) {
    auto loop = std::make_shared<Loop>(context);
    const auto release = [](gpointer data) { delete static_cast<std::shared_ptr<Loop>*>(data); };
    g_source_set_callback(loop->source, Loop::runDueWork, new std::shared_ptr<Loop>(loop), release);
    g_source_attach(loop->source, loop->context);
    return std::shared_ptr<QVGLibExecutor>(new QVGLibExecutor(std::move(loop)));
}

QVGLibExecutor::QVGLibExecutor(std::shared_ptr<Loop> loop) : mLoop(std::move(loop)) {
}

QVGLibExecutor::~QVGLibExecutor() {
    g_source_destroy(mLoop->source);
}

void QVGLibExecutor::dispatchAsync(std::function<void()> work) {
    dispatchAfter(nanoseconds::zero(), std::move(work));
}

void QVGLibExecutor::dispatchAfter(nanoseconds delay, std::function<void()> work) {
    mLoop->pumped.dispatchAfter(delay, std::move(work));
    mLoop->wakeWhenWorkIsDue();
}

bool QVGLibExecutor::isMainThread() const {
    return mLoop->pumped.isMainThread();
}
