#pragma once

#include "Export.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace qv {

/// The host's main thread, as the framework sees it: somewhere to put work. A host with a loop of its own (GLib, Qt)
/// derives from this. `dispatchAsync` and `dispatchAfter` may be called from any thread, never run the work inside the
/// call, and keep the order of work that falls due together.
///
/// Work that is never run is never heard of, and is kept as long as the executor keeps it. What these operations throw
/// is caught and logged, and the work at hand is lost. An executor that runs work on several threads at once, or inside
/// the call, does no harm to the library, but the host's callbacks come there then.
class QV_EXPORT MainExecutor {
  public:
    virtual ~MainExecutor() = default;
    /// Has the work run as soon as the main thread comes to it.
    virtual void dispatchAsync(std::function<void()> work) = 0;
    /// Has the work run when the delay is over, not before.
    virtual void dispatchAfter(std::chrono::nanoseconds delay, std::function<void()> work) = 0;
    /// Whether the calling thread is the one that runs the work.
    virtual bool isMainThread() const = 0;
};

/// The default executor: the host pumps it from its main thread. What work throws is caught and logged; empty work is
/// ignored, and a negative delay is none.
class QV_EXPORT PumpedExecutor : public MainExecutor {
  public:
    /// Tells the time since some beginning; called on any thread.
    using Clock = std::function<std::chrono::nanoseconds()>;

    /// Time is the steady clock's.
    PumpedExecutor();
    /// Time is what `clock` says; for tests that drive it.
    explicit PumpedExecutor(Clock clock);
    ~PumpedExecutor() override;

    void dispatchAsync(std::function<void()> work) override;
    void dispatchAfter(std::chrono::nanoseconds delay, std::function<void()> work) override;
    /// True on the thread that pumped last, or that made the executor if none has.
    bool isMainThread() const override;

    /// Runs everything that is due, by due time and then in the order given; returns how many pieces of work ran. What
    /// is added meanwhile waits for the next pump, so that work which adds work cannot hold the host's thread for ever.
    /// Work may pump in its turn. Work that is still waiting when the executor goes is dropped.
    std::size_t pump();
    /// How long until work falls due, at least zero; nothing when none waits. For a loop of the host's own that wakes
    /// up to pump: ask again after each pump and each dispatch. Any thread may ask.
    std::optional<std::chrono::nanoseconds> timeUntilNextWork() const;
    /// Pumps until `done` holds or `limit` (of the steady clock) has passed, sleeping in between; says whether it held.
    /// `done` is asked on this thread, after each pump and at least every few milliseconds; what it throws leaves this
    /// call, and nothing is lost.
    bool pumpUntil(const std::function<bool()>& done, std::chrono::nanoseconds limit);

  private:
    struct State;
    std::unique_ptr<State> mState;
};

/// A clock that stands still until it is told to move. Any thread may read it.
class QV_EXPORT ManualClock {
  public:
    /// The time it was told.
    std::chrono::nanoseconds now() const;
    /// Moves the time on.
    void advance(std::chrono::nanoseconds by);
    /// This clock for a `PumpedExecutor`; it must outlive the executor.
    PumpedExecutor::Clock clock() const;

  private:
    std::atomic<std::chrono::nanoseconds::rep> mNow{0};
};

/// The process's main executor. Any thread may call.
class QV_EXPORT MainQueue {
  public:
    /// Never null; a `PumpedExecutor`, made at the first call, until the host sets another.
    static std::shared_ptr<MainExecutor> executor();
    /// Null brings the default back, with what still waits in it.
    static void setExecutor(std::shared_ptr<MainExecutor> executor);
};

}  // namespace qv
