#include "QVPlatform/HTTPClient.h"

#include "HTTPHeaderRules.h"
#include "HTTPRedirect.h"
#include "HTTPTransfer.h"

#include <curl/curl.h>

#include <algorithm>
#include <utility>

namespace qv {

namespace {

constexpr int kMostRedirects = 5;

HTTPResponse failure(HTTPErrorCode code, std::string description) {
    HTTPResponse response;
    response.error = makeHTTPError(code, std::move(description));
    return response;
}

std::optional<HTTPTransfer::Clock::time_point> endOf(const HTTPRequest& request) {
    if (request.totalSeconds <= 0) return request.deadline;
    // A year is as good as for ever, and far from where clocks overflow.
    constexpr long kYear = 366L * 24 * 60 * 60;
    const auto end = HTTPTransfer::Clock::now() + std::chrono::seconds(std::min(request.totalSeconds, kYear));
    return std::min(end, request.deadline.value_or(end));
}

// The caller's request is copied, with its body, only where a redirect changes it.
HTTPResponse followRedirects(const HTTPRequest& first) {
    const auto end = endOf(first);
    std::optional<HTTPRequest> redirected;
    for (int redirects = 0;; ++redirects) {
        const HTTPRequest& request = redirected ? *redirected : first;
        HTTPResponse response = HTTPTransfer(request, end).run();
        if (response.error || !request.followsRedirects || !isRedirect(response)) return response;
        if (redirects == kMostRedirects) {
            return failure(HTTPErrorCode::TooManyRedirects, "The server redirects too often");
        }
        auto next = redirectedRequest(redirected ? *std::move(redirected) : first, response);
        if (!next) {
            return failure(HTTPErrorCode::TooManyRedirects, "The server redirects to an address that is not allowed");
        }
        redirected = std::move(next);
    }
}

HTTPResponse send(const HTTPRequest& request) {
    if (!isSupportedURL(request.url)) {
        return failure(HTTPErrorCode::UnsupportedURL, "The address is not a complete http or https address");
    }
    if (!hasSoundHead(request)) {
        return failure(HTTPErrorCode::InvalidHeader, "The request has a method or header that HTTP does not allow");
    }
    return followRedirects(request);
}

}  // namespace

HTTPResponse HTTPClient::sendSynchronousRequest(const HTTPRequest& request) {
    try {
        return send(request);
    } catch (...) {
        HTTPResponse response;
        response.error = Error{std::string(kURLErrorDomain), CURLE_OUT_OF_MEMORY, {}};
        return response;
    }
}

}  // namespace qv
