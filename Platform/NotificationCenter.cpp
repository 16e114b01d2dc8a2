#include "QVPlatform/NotificationCenter.h"

#include "Guarded.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <utility>
#include <vector>

namespace qv {

namespace {

struct Entry {
    std::string name;
    NotificationCenter::Observer observer;
    std::atomic<bool> removed{false};
};

}  // namespace

struct NotificationCenter::State {
    std::mutex mutex;
    std::vector<std::shared_ptr<Entry>> entries;

    std::vector<std::shared_ptr<Entry>> entriesForName(const std::string& name) {
        std::vector<std::shared_ptr<Entry>> found;
        const std::lock_guard lock(mutex);
        std::copy_if(entries.begin(), entries.end(), std::back_inserter(found),
                     [&](const auto& entry) { return entry->name == name; });
        return found;
    }

    void remove(const std::shared_ptr<Entry>& entry) {
        const std::lock_guard lock(mutex);
        entries.erase(std::find(entries.begin(), entries.end(), entry));
    }
};

NotificationCenter::NotificationCenter() : mState(std::make_shared<State>()) {
}
NotificationCenter::~NotificationCenter() = default;

NotificationCenter& NotificationCenter::defaultCenter() {
    // Never destroyed: threads may still post while the process ends.
    static NotificationCenter* const shared = new NotificationCenter;
    return *shared;
}

NotificationCenter::Token NotificationCenter::addObserverForName(std::string_view name, Observer observer) {
    auto entry = std::make_shared<Entry>();
    entry->name = name;
    entry->observer = std::move(observer);
    {
        const std::lock_guard lock(mState->mutex);
        mState->entries.push_back(entry);
    }
    return Token(entry.get(), [entry, center = std::weak_ptr(mState)](void*) {
        entry->removed = true;
        if (const auto state = center.lock()) state->remove(entry);
    });
}

void NotificationCenter::postNotification(const Notification& notification) {
    for (const auto& entry : mState->entriesForName(notification.name)) {
        if (entry->removed || !entry->observer) continue;
        runGuarded("a notification's observer", [&] { entry->observer(notification); });
    }
}

}  // namespace qv
