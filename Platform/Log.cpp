#include "QVPlatform/Log.h"

#include <syslog.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <limits>
#include <memory>
#include <mutex>
#include <utility>

namespace qv {

namespace {

int priorityOf(std::string_view message) {
    constexpr std::array<std::pair<std::string_view, int>, 4> kTags = {
        {{"<ERROR>", LOG_ERR}, {"<WARNING>", LOG_WARNING}, {"<INFO>", LOG_INFO}, {"<Debug>", LOG_DEBUG}}};
    for (const auto& [tag, priority] : kTags) {
        if (message.substr(0, tag.size()) == tag) return priority;
    }
    return LOG_INFO;
}

void writeToSystemLog(std::string_view message) {
    constexpr auto kLongest = static_cast<std::size_t>(std::numeric_limits<int>::max());
    ::syslog(priorityOf(message), "%.*s", static_cast<int>(std::min(message.size(), kLongest)), message.data());
}

/// Threads may still log while the process ends, so this is never destroyed.
struct State {
    std::mutex mutex;
    std::shared_ptr<const Log::Sink> sink = std::make_shared<const Log::Sink>(writeToSystemLog);
};

/// Beside the state, so that a question costs one load: an answer of a million items asks three million times.
constinit std::atomic<bool> gIsEnabled{true};

State& state() {
    static State* const shared = new State;
    return *shared;
}

/// A sink that causes messages of its own would be called for each of them, until the stack is full.
thread_local bool isInSink = false;

struct InSink {
    InSink() { isInSink = true; }
    ~InSink() { isInSink = false; }
    InSink(const InSink&) = delete;
    InSink& operator=(const InSink&) = delete;
};

}  // namespace

void Log::setSink(Sink sink) {
    const bool enabled = static_cast<bool>(sink);
    auto replacement = std::make_shared<const Sink>(std::move(sink));
    const std::lock_guard lock(state().mutex);
    state().sink.swap(replacement);
    gIsEnabled = enabled;
}

void Log::useSystemLog() {
    setSink(writeToSystemLog);
}

bool Log::isEnabled() {
    return gIsEnabled;
}

void Log::write(std::string_view message) {
    if (!isEnabled() || isInSink) return;
    std::shared_ptr<const Sink> sink;
    {
        const std::lock_guard lock(state().mutex);
        sink = state().sink;
    }
    try {
        const InSink inSink;
        if (*sink) (*sink)(message);
    } catch (...) {
        // A log that fails must not fail the work it tells about, and there is no second log to tell.
    }
}

}  // namespace qv
