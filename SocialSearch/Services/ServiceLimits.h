#pragma once

#include "QVSocialSearch/QVSocialSearchProvider.h"

#include <chrono>
#include <cstddef>

/// Bytes of an answer that describes one person; those in use have a few thousand.
constexpr std::size_t kLargestServiceAnswer = std::size_t{512} << 10;

/// When requests must be over, so that what was found until then is handed over before the deadline.
inline QVSocialSearchProvider::Clock::time_point endOfRequests(QVSocialSearchProvider::Clock::time_point deadline) {
    constexpr std::chrono::milliseconds kTimeToHandOver{250};
    return deadline - kTimeToHandOver;
}
