#include "HTTPHeaderRules.h"
#include "QVPlatform/URL.h"

#include <curl/curl.h>

#include <memory>

// libcurl's own reading of addresses, so that what is checked is where a request goes.

namespace qv {

namespace {

using CurlURL = std::unique_ptr<CURLU, decltype(&curl_url_cleanup)>;

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

}  // namespace

std::optional<URL> URL::URLWithString(const std::string& text, const URL& relativeToURL) {
    const CurlURL url = readURL(relativeToURL.absoluteString());
    if (!url || curl_url_set(url.get(), CURLUPART_URL, text.c_str(), CURLU_URLENCODE) != CURLUE_OK) {
        return std::nullopt;
    }
    char* resolved = nullptr;
    if (curl_url_get(url.get(), CURLUPART_URL, &resolved, 0) != CURLUE_OK) return std::nullopt;
    const std::unique_ptr<char, decltype(&curl_free)> owner(resolved, curl_free);
    return URLWithString(resolved);
}

bool URL::isSameOriginAs(const URL& other) const {
    const CurlURL first = readURL(mText);
    const CurlURL second = readURL(other.mText);
    const auto same = [&](CURLUPart part) {
        return lowerCaseASCII(partOf(first, part)) == lowerCaseASCII(partOf(second, part));
    };
    return first && second && same(CURLUPART_SCHEME) && same(CURLUPART_HOST) && same(CURLUPART_PORT);
}

}  // namespace qv
