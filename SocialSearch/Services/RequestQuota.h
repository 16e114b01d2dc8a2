#pragma once

#include "QVPlatform/HTTPClient.h"

#include <chrono>
#include <functional>
#include <mutex>
#include <optional>

/// When a service may be asked again, by what it said of its limits: `Retry-After` (RFC 9110, 10.2.3) and the service's
/// own `X-RateLimit-Remaining` and `X-RateLimit-Reset` (seconds since 1970, or seconds from now). Any thread may call.
class RequestQuota {
  public:
    using Clock = std::function<std::chrono::system_clock::time_point()>;

    explicit RequestQuota(Clock clock) : mClock(std::move(clock)) {}

    bool allowsRequest() const;

    /// Notes what an answer says. Returns how long no further request is allowed, if that is news.
    std::optional<std::chrono::seconds> noteAnswer(const qv::HTTPResponse& response);

  private:
    using Time = std::chrono::system_clock::time_point;

    const Clock mClock;
    mutable std::mutex mMutex;
    /// The pause; a clock that was set back to before it began ends it.
    Time mBegin;
    Time mEnd;
};
