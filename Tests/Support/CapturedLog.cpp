#include "Support/CapturedLog.h"

#include "QVPlatform/Log.h"

#include <algorithm>
#include <mutex>

namespace testsupport {

struct CapturedLog::State {
    mutable std::mutex mutex;
    std::vector<std::string> messages;
};

CapturedLog::CapturedLog() : mState(std::make_shared<State>()) {
    qv::Log::setSink([state = mState](std::string_view message) {
        const std::lock_guard lock(state->mutex);
        state->messages.emplace_back(message);
    });
}

CapturedLog::~CapturedLog() {
    qv::Log::useSystemLog();
}

std::vector<std::string> CapturedLog::messages() const {
    const std::lock_guard lock(mState->mutex);
    return mState->messages;
}

std::size_t CapturedLog::count(std::string_view message) const {
    const auto all = messages();
    return static_cast<std::size_t>(std::count(all.begin(), all.end(), message));
}

bool CapturedLog::mentions(std::string_view text) const {
    const auto all = messages();
    return std::any_of(all.begin(), all.end(),
                       [&](const std::string& message) { return message.find(text) != std::string::npos; });
}

void CapturedLog::clear() {
    const std::lock_guard lock(mState->mutex);
    mState->messages.clear();
}

}  // namespace testsupport
