#include "QVPlatform/AssertionHandler.h"

#include "Guarded.h"
#include "QVPlatform/Log.h"

#include <memory>
#include <mutex>
#include <utility>

namespace qv {

namespace {

void logFailure(const AssertionFailure& failure) {
    Log::write("<ERROR> Assertion failed: %@ in %@ (%@:%d)", failure.description, failure.function, failure.file,
               failure.line);
}

/// Never destroyed: threads may still assert while the process ends.
struct State {
    std::mutex mutex;
    std::shared_ptr<const AssertionHandler::Handler> handler;
};

State& state() {
    static State* const shared = new State;
    return *shared;
}

}  // namespace

void AssertionHandler::setHandler(Handler handler) {
    auto replacement = handler ? std::make_shared<const Handler>(std::move(handler)) : nullptr;
    const std::lock_guard lock(state().mutex);
    state().handler.swap(replacement);
}

void AssertionHandler::handleFailure(const AssertionFailure& failure) {
    std::shared_ptr<const Handler> handler;
    {
        const std::lock_guard lock(state().mutex);
        handler = state().handler;
    }
    if (!handler) return logFailure(failure);
    runGuarded("the host's assertion handler", [&] { (*handler)(failure); });
}

}  // namespace qv
