#pragma once

#include "QVPlatform/Log.h"

#include <exception>

namespace qvc {

/// Runs the body of an exported function: what it throws ends here, and `failure` is the answer.
template <typename Result, typename Body>
Result guarded(Result failure, Body&& body) noexcept {
    try {
        try {
            return body();
        } catch (const std::exception& exception) {
            qv::Log::write("<ERROR> Exception in the C interface: %@", exception.what());
        }
    } catch (...) {
        // No memory even for the message, or something that is no exception: there is nothing to say.
    }
    return failure;
}

template <typename Body>
void guardedDo(Body&& body) noexcept {
    guarded(0, [&] {
        body();
        return 0;
    });
}

}  // namespace qvc
