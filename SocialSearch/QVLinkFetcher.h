#pragma once

#include "QVPlatform/Data.h"
#include "QVPlatform/Export.h"
#include "QVSocialSearch/QVSocialSearchTypes.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>

/// What a link out of a profile may lead to.
struct QVLinkPolicy {
    /// Whether links may lead to the own machine or network. Off, because a profile that others wrote must not make
    /// the host fetch from there.
    bool allowsPrivateAddresses = false;
    /// Bytes; a larger answer is none.
    std::size_t maximumSize = 16U * 1024 * 1024;
    /// Seconds for the whole fetch, redirects included; at least 1.
    long totalSeconds = 10;
};

/// Fetches what links out of profiles lead to (pictures, vCards): http and https only, at most 5 redirects, each held
/// to the same policy. Any thread may call.
class QV_EXPORT QVLinkFetcher {
  public:
    /// The contents of the link; blocks. Absent for an absent link, one that is no http or https address or not
    /// allowed, and when the fetch fails, brings no bytes or any status but 200.
    static std::optional<qv::Data> contentsOfLink(const QVString& link);

    /// What deadlines are told by.
    using Clock = std::chrono::steady_clock;
    /// The same, over at `deadline` if that comes before the policy's time. A host's own fetcher is not told of it.
    static std::optional<qv::Data> contentsOfLink(const QVString& link, Clock::time_point deadline);

    /// What links may lead to now.
    static QVLinkPolicy policy();
    /// Replaces the policy, for fetches that begin from now on.
    static void setPolicy(QVLinkPolicy policy);

    /// Fetches a link; absent when there is nothing. Called on any thread.
    using Fetcher = std::function<std::optional<qv::Data>(const std::string& link)>;
    /// The host's own way to fetch, in place of this one and its policy; an empty function brings this one back. What
    /// it throws is logged and counts as nothing fetched.
    static void setFetcher(Fetcher fetcher);
};
