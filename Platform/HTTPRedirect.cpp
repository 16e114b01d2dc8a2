#include "HTTPRedirect.h"

#include "HTTPHeaderRules.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>

namespace qv {

namespace {

const std::string* locationOf(const HTTPResponse& response) {
    for (const auto& [name, value] : response.headers) {
        if (name == "location") return &value;
    }
    return nullptr;
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
    const std::optional<URL> target = URL::URLWithString(*locationOf(response), /*relativeToURL=*/request.url);
    if (!target || !isAllowed(request.url, *target)) return std::nullopt;
    if (!request.url.isSameOriginAs(*target)) dropCredentials(request);
    if (becomesGET(request.method, response.status)) becomeGET(request);
    if (request.redirectsOnlyToPublicAddresses) request.onlyPublicAddresses = true;
    request.url = *target;
    return request;
}

}  // namespace qv
