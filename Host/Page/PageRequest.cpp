#include "Page/PageRequest.h"

#include <charconv>

namespace qvhost {
namespace {

/// The character that two hexadecimal digits stand for; nothing malformed is resolved.
bool appendEscape(std::string& text, std::string_view digits) {
    unsigned code = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), code, 16);
    if (digits.size() != 2 || error != std::errc() || end != digits.data() + 2) return false;
    text += static_cast<char>(code);
    return true;
}

std::string withoutEscapes(std::string_view escaped) {
    std::string text;
    for (std::size_t i = 0; i < escaped.size(); ++i) {
        if (escaped[i] == '%' && appendEscape(text, escaped.substr(i + 1, 2))) {
            i += 2;
        } else {
            text += escaped[i];
        }
    }
    return text;
}

}  // namespace

std::string PageRequest::parameter(std::string_view name) const {
    std::string_view query = target;
    query.remove_prefix(path().size());
    while (!query.empty()) {
        // "?" before the first, "&" before the others.
        query.remove_prefix(1);
        const std::string_view entry = query.substr(0, query.find('&'));
        if (entry.starts_with(name) && entry.substr(name.size()).starts_with('='))
            return withoutEscapes(entry.substr(name.size() + 1));
        query.remove_prefix(entry.size());
    }
    return "";
}

}  // namespace qvhost
