#include "VCard/VCardText.h"

#include "QVPlatform/Text.h"

namespace {

constexpr std::size_t kMaximumParts = 64;

bool isEscaped(QVVCardVersion version, char c) {
    return c == '\\' || c == ';' || (c == ',' && version != QVVCardVersion::V21);
}

/// What a backslash and `c` stand for; nothing when they are no escape.
std::optional<char> meaningOfEscape(QVVCardVersion version, char c) {
    if (c == '\\' || c == ';' || c == ',' || c == ':') return c;
    if ((c == 'n' || c == 'N') && version != QVVCardVersion::V21) return '\n';
    return std::nullopt;
}

}  // namespace

std::string escapedText(QVVCardVersion version, std::string_view text) {
    const bool writesLineEnds = version != QVVCardVersion::V21;
    std::string value;
    for (const char c : qv::Text::replaceAll(qv::Text::replaceAll(text, "\r\n", "\n"), "\r", "\n")) {
        if (isEscaped(version, c)) value += '\\';
        if (c == '\n' && writesLineEnds) {
            value += "\\n";
        } else if (c != '\0') {
            value += c;
        }
    }
    return value;
}

std::string unescapedText(QVVCardVersion version, std::string_view value) {
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        const bool isEscape = value[i] == '\\' && i + 1 < value.size();
        const std::optional<char> meaning = isEscape ? meaningOfEscape(version, value[i + 1]) : std::nullopt;
        text += meaning.value_or(value[i]);
        if (meaning) ++i;
    }
    return text;
}

std::vector<std::string> splitAt(std::string_view text, char separator) {
    std::vector<std::string> parts;
    for (;;) {
        const std::size_t end = text.find(separator);
        parts.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos) return parts;
        text.remove_prefix(end + 1);
    }
}

std::vector<std::string> splitAtUnescaped(std::string_view value, char separator) {
    std::vector<std::string> parts(1);
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] == separator && parts.size() < kMaximumParts) {
            parts.emplace_back();
            continue;
        }
        parts.back() += value[i];
        if (value[i] == '\\' && i + 1 < value.size()) parts.back() += value[++i];
    }
    return parts;
}
