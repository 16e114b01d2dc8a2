#include "QVPlatform/URL.h"

#include "URLGrammar.h"

#include <algorithm>

namespace qv {

namespace {

/// ASCII only: a locale has no say in a scheme.
char lowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

std::optional<URL> URL::URLWithString(std::string_view text) {
    if (!parseURL(text)) return std::nullopt;
    return URL(std::string(text));
}

std::string URL::scheme() const {
    std::string scheme(parseURL(mText).value_or(URLParts{}).scheme);
    std::transform(scheme.begin(), scheme.end(), scheme.begin(), lowerCase);
    return scheme;
}

std::string URL::host() const {
    std::string_view host = parseURL(mText).value_or(URLParts{}).host;
    if (!host.empty() && host.front() == '[') host = host.substr(1, host.size() - 2);
    return std::string(host);
}

std::string URL::path() const {
    return std::string(parseURL(mText).value_or(URLParts{}).path);
}

}  // namespace qv
