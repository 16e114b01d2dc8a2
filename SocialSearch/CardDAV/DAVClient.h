#pragma once

#include "CardDAV/DAVAuthorization.h"
#include "QVPlatform/HTTPClient.h"
#include "QVPlatform/URL.h"

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

struct DAVRequest {
    std::string method;
    qv::URL url;
    std::vector<std::pair<std::string, std::string>> headers{};
    std::string body{};
};

struct DAVAnswer {
    /// 0 when there is no answer.
    long status = 0;
    /// Where the answer came from, after redirects.
    qv::URL url;
    std::string body{};
    std::string ETag{};
    /// Why there is no answer that counts: `isUnanswered` when none came whole, `isLost` when the request may have
    /// arrived all the same, `isTooLarge` when the answer would not have ended.
    std::optional<qv::Error> failure{};
    bool isUnanswered = false;
    bool isLost = false;
    bool isTooLarge = false;

    bool isSuccess() const { return !failure && status >= 200 && status < 300; }
    /// The error that the answer means to a reader or a writer. Only for an answer that is no success.
    qv::Error error(bool isWriting) const;
};

/// One operation's conversation with one server: everything that it sends goes to the origin of the server's address,
/// and all of it together has an end, in time and in bytes.
class DAVClient {
  public:
    DAVClient(qv::URL server, DAVAuthorization& authorization, long totalSeconds);

    const qv::URL& server() const { return mServer; }

    /// Sends a request and follows redirects within the origin. Whoever asks for an answer that is larger than
    /// `maximumSize` gets none.
    DAVAnswer send(DAVRequest request, std::size_t maximumSize);

  private:
    using Clock = std::chrono::steady_clock;

    DAVAnswer exchange(const DAVRequest& request, std::size_t maximumSize);
    qv::HTTPResponse transfer(const DAVRequest& request, std::size_t maximumSize);
    /// Where a redirect leads; sets the answer's failure when that is elsewhere.
    std::optional<qv::URL> target(DAVAnswer& answer, const qv::HTTPResponse& response) const;
    long secondsLeft() const;

    const qv::URL mServer;
    DAVAuthorization& mAuthorization;
    const Clock::time_point mEnd;
    std::size_t mBytesLeft;
    std::optional<qv::URL> mRedirect;
};
