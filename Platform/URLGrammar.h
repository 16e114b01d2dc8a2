#pragma once

#include <optional>
#include <string_view>

namespace qv {

/// The parts of an address, as views into it. A part that is not there is empty.
struct URLParts {
    std::string_view scheme;
    std::string_view userInfo;
    /// With the brackets of an address literal.
    std::string_view host;
    std::string_view port;
    std::string_view path;
    std::string_view query;
    std::string_view fragment;
};

/// Splits an address by the URI-reference grammar of RFC 3986 (section 4.1); nothing when the text breaks it.
std::optional<URLParts> parseURL(std::string_view text);

}  // namespace qv
