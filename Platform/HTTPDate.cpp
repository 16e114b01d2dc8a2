#include "QVPlatform/HTTPDate.h"

#include <curl/curl.h>

#include <string>

namespace qv {

std::optional<HTTPDate> dateFromHTTPHeader(std::string_view text) {
    // No form is longer, and all of them end in a year or in "GMT": numbers alone are no date.
    constexpr std::size_t kLongest = 64;
    if (text.size() > kLongest || text.find(':') == std::string_view::npos) return std::nullopt;
    const std::time_t seconds = curl_getdate(std::string(text).c_str(), nullptr);
    if (seconds == -1) return std::nullopt;
    return HTTPDate(std::chrono::seconds(seconds));
}

}  // namespace qv
