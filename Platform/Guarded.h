#pragma once

#include "Log.h"

#include <exception>
#include <string_view>

namespace qv {

/// Runs foreign code at a thread's edge, or where a host calls: what it throws ends here, with a line in the log that
/// says `what` it was.
template <typename Work>
void runGuarded(std::string_view what, Work&& work) noexcept {
    try {
        try {
            work();
        } catch (const std::exception& exception) {
            Log::write("<ERROR> Exception from %@: %@", what, exception.what());
        } catch (...) {
            Log::write("<ERROR> Exception from %@", what);
        }
    } catch (...) {
        // No memory even for the message: there is nobody left to tell.
    }
}

}  // namespace qv
