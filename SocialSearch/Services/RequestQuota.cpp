#include "Services/RequestQuota.h"

#include "QVPlatform/HTTPDate.h"
#include "QVPlatform/Text.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace {

using Time = std::chrono::system_clock::time_point;
using std::chrono::seconds;

constexpr long kTooManyRequests = 429;
constexpr long kUnavailable = 503;
/// What a refusal means that does not say how long.
constexpr seconds kUsualPause = std::chrono::minutes(1);
/// Whatever a service says, it is asked again the next day.
constexpr seconds kLongestPause = std::chrono::hours(24);

std::optional<std::string_view> headerOf(const qv::HTTPResponse& response, std::string_view name) {
    for (const auto& [key, value] : response.headers) {
        if (key == name) return value;
    }
    return std::nullopt;
}

std::optional<seconds> secondsOf(std::string_view text) {
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    if (text.empty() || !std::all_of(text.begin(), text.end(), isDigit)) return std::nullopt;
    // Far enough for every date, and far from where clocks overflow.
    constexpr std::int64_t kFar = 100'000'000'000;
    return seconds(std::min(qv::Text::integerValue(text), kFar));
}

Time after(Time now, seconds pause) {
    return now + std::min(pause, kLongestPause);
}

/// A moment in seconds since 1970, or one that is as good where the clock does not reach that far.
Time momentAt(seconds sinceBeginning) {
    constexpr seconds kLast{9'000'000'000};
    return Time(std::clamp(sinceBeginning, seconds(0), kLast));
}

std::optional<Time> endOfRetryAfter(const qv::HTTPResponse& response, Time now) {
    const auto text = headerOf(response, "retry-after");
    if (!text) return std::nullopt;
    if (const auto pause = secondsOf(*text)) return after(now, *pause);
    const auto date = qv::dateFromHTTPHeader(*text);
    return date ? std::optional(momentAt(date->time_since_epoch())) : std::nullopt;
}

std::optional<Time> endOfPeriod(const qv::HTTPResponse& response, Time now) {
    const auto reset = secondsOf(headerOf(response, "x-ratelimit-reset").value_or(""));
    if (!reset) return std::nullopt;
    // No period lasts for thirty years: so large a number is a moment.
    constexpr seconds kFirstMoment{1'000'000'000};
    return *reset < kFirstMoment ? after(now, *reset) : momentAt(*reset);
}

/// The end of the pause that an answer asks for; `now` or earlier when it asks for none.
Time endOfPause(const qv::HTTPResponse& response, Time now) {
    const auto retry = endOfRetryAfter(response, now);
    const bool isRefusal = response.status == kTooManyRequests || (response.status == kUnavailable && retry);
    const bool isLast = headerOf(response, "x-ratelimit-remaining") == "0";
    if (!isRefusal && !isLast) return now;
    Time end = std::max(isRefusal ? retry.value_or(now) : now, endOfPeriod(response, now).value_or(now));
    // The service's clock and ours may differ, but a refusal stays one.
    if (isRefusal && end <= now) end = now + kUsualPause;
    return std::min(end, now + kLongestPause);
}

}  // namespace

bool RequestQuota::allowsRequest() const {
    const std::lock_guard lock(mMutex);
    const Time now = mClock();
    return now < mBegin || now >= mEnd;
}

std::optional<seconds> RequestQuota::noteAnswer(const qv::HTTPResponse& response) {
    const std::lock_guard lock(mMutex);
    const Time now = mClock();
    const Time end = endOfPause(response, now);
    const bool isPaused = now >= mBegin && now < mEnd;
    if (end <= now || (isPaused && end <= mEnd)) return std::nullopt;
    mBegin = now;
    mEnd = end;
    return std::chrono::ceil<seconds>(end - now);
}
