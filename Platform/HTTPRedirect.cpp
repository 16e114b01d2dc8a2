#include "HTTPRedirect.h"

#include "HTTPHeaderRules.h"

#include <curl/curl.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace qv {

namespace {

using CurlURL = std::unique_ptr<CURLU, decltype(&curl_url_cleanup)>;

const std::string* locationOf(const HTTPResponse& response) {
    for (const auto& [name, value] : response.headers) {
        if (name == "location") return &value;
    }
    return nullptr;
}

/// The same reading of an address as the transfer's own, so that what is checked is where the request goes.
CurlURL readURL(const std::string& text) {
    CurlURL url(curl_url(), curl_url_cleanup);
    if (url && curl_url_set(url.get(), CURLUPART_URL, text.c_str(), 0) != CURLUE_OK) url.reset();
    return url;
}

std::string partOf(const CurlURL& url, CURLUPart part) {
    char* text = nullptr;
    if (!url || curl_url_get(url.get(), part, &text, CURLU_DEFAULT_PORT) != CURLUE_OK) return {};
    const std::unique_ptr<char, decltype(&curl_free)> owner(text, curl_free);
    return text;
}

std::optional<URL> resolve(const URL& base, const std::string& location) {
    const CurlURL url = readURL(base.absoluteString());
    if (!url || curl_url_set(url.get(), CURLUPART_URL, location.c_str(), CURLU_URLENCODE) != CURLUE_OK) {
        return std::nullopt;
    }
    char* text = nullptr;
    if (curl_url_get(url.get(), CURLUPART_URL, &text, 0) != CURLUE_OK) return std::nullopt;
    const std::unique_ptr<char, decltype(&curl_free)> owner(text, curl_free);
    return URL::URLWithString(text);
}

bool isSameOrigin(const URL& a, const URL& b) {
    const CurlURL first = readURL(a.absoluteString());
    const CurlURL second = readURL(b.absoluteString());
    const auto same = [&](CURLUPart part) {
        return lowerCaseASCII(partOf(first, part)) == lowerCaseASCII(partOf(second, part));
    };
    return first && second && same(CURLUPART_SCHEME) && same(CURLUPART_HOST) && same(CURLUPART_PORT);
}

bool isAllowed(const URL& from, const URL& to) {
    return isSupportedURL(to) && !(from.scheme() == "https" && to.scheme() != "https");
}

template <std::size_t Count>
void dropHeaders(HTTPRequest& request, const std::array<std::string_view, Count>& names) {
    std::erase_if(request.headers, [&](const auto& header) {
        return std::any_of(names.begin(), names.end(),
                           [&](std::string_view name) { return isSameHeaderName(header.first, name); });
    });
}

void dropCredentials(HTTPRequest& request) {
    dropHeaders(request, std::array<std::string_view, 4>{"Authorization", "Proxy-Authorization", "Cookie", "auth"});
}

/// As browsers do: what was a form's target becomes a page to look at.
bool becomesGET(const std::string& method, long status) {
    if (status == 303) return method != "GET" && method != "HEAD";
    return (status == 301 || status == 302) && method == "POST";
}

void becomeGET(HTTPRequest& request) {
    request.method = "GET";
    request.body.reset();
    dropHeaders(request, std::array<std::string_view, 5>{"Content-Type", "Content-Length", "Content-Encoding",
                                                         "Content-Language", "Content-Location"});
}

}  // namespace

bool isSupportedURL(const URL& url) {
    const std::string scheme = url.scheme();
    return (scheme == "http" || scheme == "https") && !url.host().empty();
}

bool isRedirect(const HTTPResponse& response) {
    constexpr std::array<long, 5> kStatuses = {301, 302, 303, 307, 308};
    return std::find(kStatuses.begin(), kStatuses.end(), response.status) != kStatuses.end() && locationOf(response);
}

std::optional<HTTPRequest> redirectedRequest(HTTPRequest request, const HTTPResponse& response) {
    const std::optional<URL> target = resolve(request.url, *locationOf(response));
    if (!target || !isAllowed(request.url, *target)) return std::nullopt;
    if (!isSameOrigin(request.url, *target)) dropCredentials(request);
    if (becomesGET(request.method, response.status)) becomeGET(request);
    if (request.redirectsOnlyToPublicAddresses) request.onlyPublicAddresses = true;
    request.url = *target;
    return request;
}

}  // namespace qv
