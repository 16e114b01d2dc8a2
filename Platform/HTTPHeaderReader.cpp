#include "HTTPHeaderReader.h"

#include "HTTPHeaderRules.h"

#include <algorithm>

namespace qv {

namespace {

constexpr std::size_t kLargestHeaders = std::size_t{256} * 1024;

std::string_view trim(std::string_view text) {
    constexpr std::string_view kBlank = " \t";
    const std::size_t first = text.find_first_not_of(kBlank);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlank) - first + 1);
}

/// A line without its end. A carriage return in it could be taken for another line's end further on (RFC 9110, 5.5).
std::string withoutReturns(std::string_view line) {
    std::string clean(line.substr(0, line.find_last_not_of("\r\n") + 1));
    std::replace(clean.begin(), clean.end(), '\r', ' ');
    return clean;
}

}  // namespace

bool HTTPHeaderReader::readLine(std::string_view received) {
    mSize += received.size();
    if (mSize > kLargestHeaders) return false;
    const std::string clean = withoutReturns(received);
    const std::string_view line = clean;
    const std::size_t colon = line.find(':');
    if (line.substr(0, 5) == "HTTP/") {
        mHeaders.clear();
    } else if ((line.starts_with(' ') || line.starts_with('\t')) && !mHeaders.empty()) {
        // A value folded over several lines, which servers of old may still send.
        mHeaders.back().second.append(" ").append(trim(line));
    } else if (colon != std::string_view::npos) {
        mHeaders.emplace_back(lowerCaseASCII(trim(line.substr(0, colon))), trim(line.substr(colon + 1)));
    }
    return true;
}

}  // namespace qv
