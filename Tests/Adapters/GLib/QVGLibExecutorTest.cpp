#include "../ExecutorContract.h"
#include "QVAdapters/QVGLibExecutor.h"

#include <glib.h>

namespace {

using namespace std::chrono_literals;

/// A GLib context of the test's own; GLib's calls for it may come from within each other.
class GLibLoop {
  public:
    GLibLoop() { g_main_context_push_thread_default(mContext); }
    ~GLibLoop() { end(); }
    GLibLoop(const GLibLoop&) = delete;
    GLibLoop& operator=(const GLibLoop&) = delete;

    std::shared_ptr<qv::MainExecutor> executor() { return QVGLibExecutor::executorForContext(mContext); }

    bool runUntil(const std::function<bool()>& done) {
        bool isLate = false;
        GSource* const alarm = g_timeout_source_new_seconds(60);
        g_source_set_callback(
            alarm, [](gpointer late) -> gboolean { return *static_cast<bool*>(late) = true, G_SOURCE_REMOVE; }, &isLate,
            nullptr);
        g_source_attach(alarm, mContext);
        while (!done() && !isLate)
            g_main_context_iteration(mContext, /*may_block=*/TRUE);
        g_source_destroy(alarm);
        g_source_unref(alarm);
        return done();
    }

    void onIdle(std::function<void()> work) {
        GSource* const idle = g_idle_source_new();
        const auto run = [](gpointer data) -> gboolean {
            (*static_cast<std::function<void()>*>(data))();
            return G_SOURCE_REMOVE;
        };
        const auto release = [](gpointer data) { delete static_cast<std::function<void()>*>(data); };
        g_source_set_callback(idle, run, new std::function<void()>(std::move(work)), release);
        g_source_set_priority(idle, G_PRIORITY_DEFAULT);
        g_source_attach(idle, mContext);
        g_source_unref(idle);
    }

    void end() {
        if (mContext == nullptr) return;
        g_main_context_pop_thread_default(mContext);
        g_main_context_unref(std::exchange(mContext, nullptr));
    }

  private:
    GMainContext* mContext = g_main_context_new();
};

}  // namespace

namespace testsupport {
INSTANTIATE_TYPED_TEST_SUITE_P(GLib, ExecutorContract, GLibLoop);
}  // namespace testsupport

namespace {

TEST(QVGLibExecutor, RunsInTheDefaultContextUnlessToldOtherwise) {
    const auto executor = QVGLibExecutor::executorForContext(nullptr);
    GMainLoop* const loop = g_main_loop_new(nullptr, FALSE);
    executor->dispatchAfter(1ms, [loop] { g_main_loop_quit(loop); });
    g_main_loop_run(loop);
    g_main_loop_unref(loop);
}

TEST(QVGLibExecutor, LeavesTheLoopAsleepWhileNothingIsDue) {
    GMainContext* const context = g_main_context_new();
    {
        const auto executor = QVGLibExecutor::executorForContext(context);
        executor->dispatchAfter(std::chrono::hours(1), [] {});
        EXPECT_FALSE(g_main_context_pending(context));
        executor->dispatchAsync([] {});
        EXPECT_TRUE(g_main_context_iteration(context, /*may_block=*/FALSE));
        EXPECT_FALSE(g_main_context_pending(context)) << "a loop that finds work all the time never sleeps";
    }
    g_main_context_unref(context);
}

}  // namespace
