#pragma once

#include "Data.h"
#include "Error.h"
#include "Export.h"
#include "URL.h"

#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace qv {

/// Domain of the transport errors an `HTTPResponse` carries; codes are libcurl's, or one of `HTTPErrorCode`.
inline constexpr std::string_view kURLErrorDomain = "QVURLErrorDomain";

/// Transport errors that this client makes itself (negative, apart from libcurl's).
enum class HTTPErrorCode : long {
    UnsupportedURL = -1,  ///< relative, without a host, or neither http nor https; nothing was sent
    InvalidHeader =
        -2,  ///< CR, LF or NUL in a header value, a header name or method that is no token; nothing was sent
    AnswerTooLarge = -3,    ///< the body passed `maximumBodySize`, or the headers passed 256 KiB
    TooManyRedirects = -4,  ///< more redirects than allowed, or one to an address that is not allowed
};

/// What a cached answer may be used for. This client has no cache; the value is kept for those that do.
enum class CachePolicy { UseProtocolCachePolicy = 0, ReturnCacheDataElseLoad = 2 };

/// What to ask of whom, and what the answer may cost.
struct HTTPRequest {
    /// The HTTP method.
    std::string method = "GET";
    /// Absolute, http or https.
    URL url;
    /// Sent in this order, after the client's own. The length of the body is the client's business.
    std::vector<std::pair<std::string, std::string>> headers{};
    /// Absent: no body; present and empty: a body of zero bytes. POST, PUT and PATCH always have one.
    std::optional<Data> body{};
    /// See `CachePolicy`.
    CachePolicy cachePolicy = CachePolicy::UseProtocolCachePolicy;
    /// Redirects are off unless this is set; then at most 5, each checked again, and headers that carry credentials
    /// ("Authorization", "Cookie", "auth") go to the first origin only. A POST answered by 301, 302 or 303 goes on as
    /// GET, and so does anything but HEAD after 303; 307 and 308 repeat the request. https never leads back to http.
    bool followsRedirects = false;
    /// Seconds without any progress after which the call ends (libcurl's code 28); 0 is no limit. Names, connections
    /// and their handshakes have as long in all.
    long stallSeconds = 60;
    /// Seconds for the whole call, redirects included; 0 is no limit. An answer that comes byte by byte makes progress
    /// all the time.
    long totalSeconds = 600;
    /// The moment at which the whole call ends at the latest, redirects included; absent is no limit.
    std::optional<std::chrono::steady_clock::time_point> deadline{};
    /// Bytes; a larger answer ends the call with `AnswerTooLarge`.
    std::size_t maximumBodySize = 16U * 1024 * 1024;
    /// Connects to addresses of the public internet only (`isPublicAddress`), whatever name or redirect leads there.
    /// Anything else fails like a server that cannot be reached.
    bool onlyPublicAddresses = false;
    /// The same for what redirects lead to, however far; the request's own address is the caller's choice.
    bool redirectsOnlyToPublicAddresses = false;
};

/// What came back.
struct HTTPResponse {
    /// 0 when no answer arrived.
    long status = 0;
    /// Names in lower case, in the order received.
    std::vector<std::pair<std::string, std::string>> headers;
    /// Absent when the transport failed or the answer's body had no bytes.
    std::optional<Data> body;
    /// What went wrong below HTTP; any status is a success here. A readable text, which holds neither headers nor a
    /// password, is under `kErrorDescriptionKey`.
    std::optional<Error> error;
};

/// Sends requests over http and https only (HTTP/1.1), certificates checked, no proxy and no passwords from the
/// environment. Blocks the calling thread. Each thread keeps its connections open between calls; any thread may call. A
/// kept connection that the server has closed meanwhile is replaced, and the request sent again on the new one.
class QV_EXPORT HTTPClient {
  public:
    /// `sendSynchronousRequest:` Never throws; failures are in the response.
    static HTTPResponse sendSynchronousRequest(const HTTPRequest& request);
};

}  // namespace qv
