#pragma once

#include "QVPlatform/MainQueue.h"

#include <chrono>
#include <memory>

namespace qvhost {

/// How long the program waits at a time for what the library's threads do.
inline constexpr std::chrono::milliseconds kBetweenMainWork{100};

/// Runs what the library has for the program's main thread, on that thread; nothing on another. Whoever waits there for
/// a card calls it now and then, because where the system has no more threads the card is read by this.
inline void runMainWork() {
    const auto executor = std::dynamic_pointer_cast<qv::PumpedExecutor>(qv::MainQueue::executor());
    if (executor && executor->isMainThread()) executor->pump();
}

}  // namespace qvhost
