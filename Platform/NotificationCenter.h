#pragma once

#include "Error.h"
#include "Export.h"

#include <any>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace qv {

struct Notification {
    std::string name;
    /// The sender; empty when there is none.
    std::any object;
    Dictionary userInfo;
};

/// Hands notifications to whoever asked for them. Posting is synchronous: observers run on the thread that posts, in
/// the order they were added; what one throws is caught and logged, and the next still runs. Any thread may call.
/// Observers may add and remove observers while they run: one added during a post hears of the next post first, one
/// removed before its turn is not called. Removing does not wait for an observer that is running on another thread.
class QV_EXPORT NotificationCenter {
  public:
    using Observer = std::function<void(const Notification&)>;
    using Token = std::shared_ptr<void>;

    static NotificationCenter& defaultCenter();

    /// Observes until the token is released; the token may outlive the center. An empty observer hears nothing.
    [[nodiscard]] Token addObserverForName(std::string_view name, Observer observer);
    void postNotification(const Notification& notification);

    NotificationCenter();
    ~NotificationCenter();

  private:
    struct State;
    std::shared_ptr<State> mState;
};

}  // namespace qv
