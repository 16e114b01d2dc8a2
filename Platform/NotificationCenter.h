#pragma once

#include "Error.h"
#include "Export.h"

#include <any>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace qv {

/// What is announced.
struct Notification {
    /// What happened.
    std::string name;
    /// The sender; empty when there is none.
    std::any object;
    /// What there is to say of it.
    Dictionary userInfo;
};

/// Hands notifications to whoever asked for them. Posting is synchronous: observers run on the thread that posts, in
/// the order they were added; what one throws is caught and logged, and the next still runs. Any thread may call.
/// Observers may add and remove observers while they run: one added during a post hears of the next post first, one
/// removed before its turn is not called. Removing does not wait for an observer that is running on another thread.
class QV_EXPORT NotificationCenter {
  public:
    /// Hears a notification; on the thread that posts it.
    using Observer = std::function<void(const Notification&)>;
    /// Keeps an observation; the last copy to go ends it.
    using Token = std::shared_ptr<void>;

    /// The process's center; never destroyed.
    static NotificationCenter& defaultCenter();

    /// Observes until the token is released; the token may outlive the center. An empty observer hears nothing.
    [[nodiscard]] Token addObserverForName(std::string_view name, Observer observer);
    /// Tells every observer of that name before it returns.
    void postNotification(const Notification& notification);

    NotificationCenter();
    ~NotificationCenter();

  private:
    struct State;
    std::shared_ptr<State> mState;
};

}  // namespace qv
