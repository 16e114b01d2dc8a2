#include "URLGrammar.h"

#include <arpa/inet.h>

#include <algorithm>
#include <array>
#include <string>

namespace qv {

namespace {

constexpr std::string_view kSubDelimiters = "!$&'()*+,;=";

bool isAlpha(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isHexDigit(char c) {
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool contains(std::string_view set, char c) {
    return set.find(c) != std::string_view::npos;
}

bool isUnreserved(char c) {
    return isAlpha(c) || isDigit(c) || contains("-._~", c);
}

/// Unreserved characters, sub-delimiters, whole percent escapes, and what `more` holds.
bool isMadeOf(std::string_view text, std::string_view more) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%') {
            if (text.size() - i < 3 || !isHexDigit(text[i + 1]) || !isHexDigit(text[i + 2])) return false;
            i += 2;
        } else if (!isUnreserved(text[i]) && !contains(kSubDelimiters, text[i]) && !contains(more, text[i])) {
            return false;
        }
    }
    return true;
}

bool isScheme(std::string_view text) {
    const auto follows = [](char c) { return isAlpha(c) || isDigit(c) || contains("+-.", c); };
    return !text.empty() && isAlpha(text.front()) && std::all_of(text.begin(), text.end(), follows);
}

bool isIPv6Address(std::string_view text) {
    std::array<unsigned char, 16> address{};
    return text.find('\0') == std::string_view::npos &&
           ::inet_pton(AF_INET6, std::string(text).c_str(), address.data()) == 1;
}

/// "v" hexadecimal digits "." and at least one more character.
bool isFutureAddress(std::string_view text) {
    const std::size_t dot = text.find('.');
    if (dot == std::string_view::npos || dot < 2 || (text[0] != 'v' && text[0] != 'V')) return false;
    const std::string_view version = text.substr(1, dot - 1);
    const std::string_view rest = text.substr(dot + 1);
    return std::all_of(version.begin(), version.end(), isHexDigit) && !rest.empty() && !contains(rest, '%') &&
           isMadeOf(rest, ":");
}

bool isHost(std::string_view text) {
    if (text.empty() || text.front() != '[') return isMadeOf(text, "");
    if (text.size() < 2 || text.back() != ']') return false;
    const std::string_view literal = text.substr(1, text.size() - 2);
    return isIPv6Address(literal) || isFutureAddress(literal);
}

/// Cuts `text` before the first of `delimiters` and returns what stood before it.
std::string_view takeUntil(std::string_view& text, std::string_view delimiters) {
    const std::string_view taken = text.substr(0, text.find_first_of(delimiters));
    text.remove_prefix(taken.size());
    return taken;
}

/// The part that `mark` introduces, without the mark, up to the first of `delimiters`.
std::string_view takePart(std::string_view& text, char mark, std::string_view delimiters) {
    if (text.empty() || text.front() != mark) return {};
    text.remove_prefix(1);
    return takeUntil(text, delimiters);
}

bool takeScheme(std::string_view& text, URLParts& parts) {
    const std::size_t end = text.find_first_of(":/?#");
    // Without a scheme the first path segment has no colon, so a colon here ends a scheme or is wrong.
    if (end == std::string_view::npos || text[end] != ':') return true;
    parts.scheme = text.substr(0, end);
    text.remove_prefix(end + 1);
    return isScheme(parts.scheme);
}

bool splitAuthority(std::string_view authority, URLParts& parts) {
    if (const std::size_t at = authority.find('@'); at != std::string_view::npos) {
        parts.userInfo = authority.substr(0, at);
        authority.remove_prefix(at + 1);
    }
    const std::size_t bracket = authority.rfind(']');
    const std::size_t colon = authority.find(':', bracket == std::string_view::npos ? 0 : bracket);
    parts.host = authority.substr(0, colon);
    if (colon != std::string_view::npos) parts.port = authority.substr(colon + 1);
    return isMadeOf(parts.userInfo, ":") && isHost(parts.host) &&
           std::all_of(parts.port.begin(), parts.port.end(), isDigit);
}

bool takeAuthority(std::string_view& text, URLParts& parts) {
    if (text.substr(0, 2) != "//") return true;
    text.remove_prefix(2);
    return splitAuthority(takeUntil(text, "/?#"), parts);
}

}  // namespace

std::optional<URLParts> parseURL(std::string_view text) {
    URLParts parts;
    if (text.empty() || !takeScheme(text, parts) || !takeAuthority(text, parts)) return std::nullopt;
    parts.path = takeUntil(text, "?#");
    parts.query = takePart(text, '?', "#");
    parts.fragment = takePart(text, '#', "");
    const bool sound = isMadeOf(parts.path, ":@/") && isMadeOf(parts.query, ":@/?") && isMadeOf(parts.fragment, ":@/?");
    return sound ? std::optional(parts) : std::nullopt;
}

}  // namespace qv
