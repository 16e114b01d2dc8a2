#pragma once

#include "Data.h"
#include "Error.h"
#include "Export.h"
#include "URL.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace qv {

/// Domain of the transport errors an `HTTPResponse` carries; codes are libcurl's, or one of `HTTPErrorCode`.
inline constexpr std::string_view kURLErrorDomain = "QVURLErrorDomain";

/// Transport errors that this client makes itself (negative, apart from libcurl's).
enum class HTTPErrorCode : long {
    UnsupportedURL = -1,    ///< relative, or neither http nor https
    InvalidHeader = -2,     ///< CR, LF or NUL in a header name or value
    AnswerTooLarge = -3,    ///< the body passed `maximumBodySize`
    TooManyRedirects = -4,  ///< more redirects than allowed, or one to an address that is not allowed
};

/// What a cached answer may be used for. This client has no cache; the value is kept for those that do.
enum class CachePolicy { UseProtocolCachePolicy = 0, ReturnCacheDataElseLoad = 2 };

struct HTTPRequest {
    std::string method = "GET";
    URL url;
    /// Sent in this order, after the client's own.
    std::vector<std::pair<std::string, std::string>> headers;
    /// Absent: no body; present and empty: a body of zero bytes.
    std::optional<Data> body;
    CachePolicy cachePolicy = CachePolicy::UseProtocolCachePolicy;
    /// Redirects are off unless this is set; then at most 5, each checked again, and headers that carry credentials
    /// ("Authorization", "Cookie", "auth") go to the first origin only.
    bool followsRedirects = false;
    /// Seconds without any progress after which the call ends.
    long stallSeconds = 60;
    /// Seconds for the whole call; 0 is no limit.
    long totalSeconds = 0;
    /// Bytes; a larger answer ends the call with `AnswerTooLarge`.
    std::size_t maximumBodySize = 16U * 1024 * 1024;
};

struct HTTPResponse {
    long status = 0;
    /// Names in lower case, in the order received.
    std::vector<std::pair<std::string, std::string>> headers;
    /// Absent when the transport failed or the answer's body had no bytes.
    std::optional<Data> body;
    /// What went wrong below HTTP; any status is a success here.
    std::optional<Error> error;
};

/// Sends requests over http and https only, certificates checked, no proxy from the environment. Blocks the calling
/// thread. Each thread keeps one connection handle alive between calls; any thread may call.
class QV_EXPORT HTTPClient {
  public:
    /// `sendSynchronousRequest:` Never throws; failures are in the response.
    static HTTPResponse sendSynchronousRequest(const HTTPRequest& request);
};

}  // namespace qv
