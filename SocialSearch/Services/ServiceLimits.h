#pragma once

#include "QVSocialSearch/QVSocialSearchProvider.h"

#include <chrono>
#include <cstddef>

/// Links that are looked at in one list. Nobody has more, and to compare very many with each other takes its time.
constexpr std::size_t kMostLinks = 100;

/// When requests must be over, so that what was found until then is handed over before the deadline.
inline QVSocialSearchProvider::Clock::time_point endOfRequests(QVSocialSearchProvider::Clock::time_point deadline) {
    constexpr std::chrono::milliseconds kTimeToHandOver{250};
    return deadline - kTimeToHandOver;
}
