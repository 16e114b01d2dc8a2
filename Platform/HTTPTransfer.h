#pragma once

#include "HTTPHeaderReader.h"
#include "QVPlatform/HTTPClient.h"

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

namespace qv {

/// A transport error with its readable text.
Error makeHTTPError(long code, std::string description);
Error makeHTTPError(HTTPErrorCode code, std::string description);

/// One exchange over libcurl; redirects are not followed. The request's head has been checked already.
class HTTPTransfer {
  public:
    using Clock = std::chrono::steady_clock;

    /// `request` must outlive the transfer. Without an `end` the exchange takes as long as it goes on.
    HTTPTransfer(const HTTPRequest& request, std::optional<Clock::time_point> end);

    HTTPResponse run();

    /// What libcurl tells while it works; false ends the transfer.
    bool receiveHeader(const char* bytes, std::size_t size);
    bool receiveBody(const char* bytes, std::size_t size);
    bool noteProgress(std::int64_t bytesMoved);
    void noteConnected();

  private:
    std::optional<Error> perform();
    Error describe(long code, const char* detail) const;

    const HTTPRequest& mRequest;
    const std::optional<Clock::time_point> mEnd;
    HTTPHeaderReader mHeaderReader;
    long mStatus = 0;
    Data mBody;
    bool mTooLarge = false;
    bool mStalled = false;
    bool mConnected = false;
    std::int64_t mBytesMoved = 0;
    Clock::time_point mLastProgress;
};

}  // namespace qv
