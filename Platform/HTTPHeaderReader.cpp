#include "HTTPHeaderReader.h"

#include "HTTPHeaderRules.h"

namespace qv {

namespace {

constexpr std::size_t kLargestHeaders = std::size_t{256} * 1024;

std::string_view trim(std::string_view text) {
    constexpr std::string_view kBlank = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlank);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlank) - first + 1);
}

}  // namespace

bool HTTPHeaderReader::readLine(std::string_view line) {
    mSize += line.size();
    if (mSize > kLargestHeaders) return false;
    const std::size_t colon = line.find(':');
    if (line.substr(0, 5) == "HTTP/") {
        mHeaders.clear();
    } else if ((line.front() == ' ' || line.front() == '\t') && !mHeaders.empty()) {
        // A value folded over several lines, which servers of old may still send.
        mHeaders.back().second.append(" ").append(trim(line));
    } else if (colon != std::string_view::npos) {
        mHeaders.emplace_back(lowerCaseASCII(trim(line.substr(0, colon))), trim(line.substr(colon + 1)));
    }
    return true;
}

}  // namespace qv
