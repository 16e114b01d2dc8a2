#include "HTTPHeaderRules.h"

#include <algorithm>

namespace qv {

namespace {

char lowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// RFC 9110, 5.6.2.
bool isTokenCharacter(char c) {
    const char lower = lowerCase(c);
    return (lower >= 'a' && lower <= 'z') || (c >= '0' && c <= '9') ||
           std::string_view("!#$%&'*+-.^_`|~").find(c) != std::string_view::npos;
}

bool isToken(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), isTokenCharacter);
}

bool isHeaderValue(std::string_view text) {
    return text.find_first_of(std::string_view("\r\n\0", 3)) == std::string_view::npos;
}

}  // namespace

std::string lowerCaseASCII(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), lowerCase);
    return lower;
}

bool isSameHeaderName(std::string_view a, std::string_view b) {
    return lowerCaseASCII(a) == lowerCaseASCII(b);
}

bool hasSoundHead(const HTTPRequest& request) {
    return isToken(request.method) &&
           std::all_of(request.headers.begin(), request.headers.end(),
                       [](const auto& header) { return isToken(header.first) && isHeaderValue(header.second); });
}

bool hasHeader(const HTTPRequest& request, std::string_view name) {
    return std::any_of(request.headers.begin(), request.headers.end(),
                       [&](const auto& header) { return isSameHeaderName(header.first, name); });
}

}  // namespace qv
