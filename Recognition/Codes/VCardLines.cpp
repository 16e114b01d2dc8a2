#include "Codes/VCardLines.h"

#include "Text/Letters.h"

#include <unicode/ucnv.h>
#include <unicode/unistr.h>

#include <algorithm>

namespace qv::recognition {
namespace {

constexpr std::size_t kMostProperties = 200;
constexpr std::size_t kLongestCharset = 24;

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

std::string fromQuotedPrintable(std::string_view text) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '=' && i + 2 < text.size() ? hexDigit(text[i + 1]) : -1;
        const int low = high >= 0 ? hexDigit(text[i + 2]) : -1;
        if (low < 0) {
            bytes += text[i];
        } else {
            bytes += static_cast<char>(high * 16 + low);
            i += 2;
        }
    }
    return bytes;
}

bool isUTF8(const std::string& bytes) {
    return codePoints(bytes).find(U'\uFFFD') == std::u32string::npos;
}

/// Bytes in a named charset as UTF-8; an unknown name, or none, is taken for what such bytes mostly are.
std::string decoded(const std::string& bytes, const std::string& charset) {
    if (isUTF8(bytes)) return bytes;
    const std::string name = charset.empty() || charset.size() > kLongestCharset ? "windows-1252" : charset;
    UErrorCode status = U_ZERO_ERROR;
    UConverter* converter = ucnv_open(name.c_str(), &status);
    if (U_FAILURE(status) != 0) {
        status = U_ZERO_ERROR;
        converter = ucnv_open("windows-1252", &status);
    }
    if (U_FAILURE(status) != 0) return {};
    const icu::UnicodeString text(bytes.data(), static_cast<int32_t>(bytes.size()), converter, status);
    ucnv_close(converter);
    std::string utf8;
    return U_FAILURE(status) != 0 ? std::string() : text.toUTF8String(utf8);
}

/// Whether the line is cut by quoted-printable: it ends with "=", and says so before its colon.
bool continues(std::string_view line) {
    return endsWith(line, "=") && folded(line.substr(0, line.find(':'))).find("quoted") != std::string::npos;
}

std::vector<std::string> unfolded(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const auto end = std::min(text.find_first_of("\r\n"), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(text.size(), end + 1));
        if (line.empty()) continue;
        if (!lines.empty() && continues(lines.back())) {
            lines.back().pop_back();
            lines.back() += line;
        } else if (!lines.empty() && (line.front() == ' ' || line.front() == '\t')) {
            lines.back() += line.substr(1);
        } else {
            lines.emplace_back(line);
        }
    }
    return lines;
}

/// The end of the head: the first colon outside quotes.
std::size_t headEnd(std::string_view line) {
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '"') quoted = !quoted;
        if (line[i] == ':' && !quoted) return i;
    }
    return std::string_view::npos;
}

std::vector<std::string> splitAt(std::string_view text, char sign) {
    std::vector<std::string> parts(1);
    for (const char c : text) {
        if (c == sign) {
            parts.emplace_back();
        } else {
            parts.back() += c;
        }
    }
    return parts;
}

VCardProperty propertyOf(const std::string& line) {
    const auto colon = headEnd(line);
    if (colon == std::string::npos) return {};
    const auto head = splitAt(folded(line.substr(0, colon)), ';');
    VCardProperty property;
    property.name = head.front().substr(head.front().rfind('.') + 1);
    std::string charset;
    bool quotedPrintable = false;
    for (std::size_t i = 1; i < head.size(); ++i) {
        const auto equals = head[i].find('=');
        const std::string key = equals == std::string::npos ? "type" : head[i].substr(0, equals);
        const std::string value = trimmed(equals == std::string::npos ? head[i] : head[i].substr(equals + 1), "\"");
        if (key == "charset") charset = value;
        if (value == "quoted-printable") quotedPrintable = true;
        if (key == "type") {
            for (const auto& type : splitAt(value, ','))
                property.types.push_back(type);
        }
    }
    const std::string value = line.substr(colon + 1);
    property.value = decoded(quotedPrintable ? fromQuotedPrintable(value) : value, charset);
    return property;
}

}  // namespace

bool VCardProperty::has(std::string_view type) const {
    return std::find(types.begin(), types.end(), type) != types.end();
}

std::vector<VCardProperty> vCardProperties(std::string_view text) {
    std::vector<VCardProperty> properties;
    for (const auto& line : unfolded(text)) {
        VCardProperty property = propertyOf(line);
        if (property.name == "end" || properties.size() >= kMostProperties) break;
        if (!property.name.empty()) properties.push_back(std::move(property));
    }
    return properties;
}

std::vector<std::string> vCardParts(std::string_view value) {
    std::vector<std::string> parts(1);
    for (std::size_t i = 0; i < value.size(); ++i) {
        const bool escaped = value[i] == '\\' && i + 1 < value.size();
        if (!escaped && value[i] == ';') {
            parts.emplace_back();
            continue;
        }
        if (escaped) ++i;
        const bool isBreak = escaped && (value[i] == 'n' || value[i] == 'N');
        parts.back() += isBreak ? "\n" : std::string(1, value[i]);
    }
    return parts;
}

std::string vCardText(std::string_view value) {
    std::string text;
    for (const auto& part : vCardParts(value))
        text += (text.empty() ? "" : ";") + part;
    return text;
}

}  // namespace qv::recognition
