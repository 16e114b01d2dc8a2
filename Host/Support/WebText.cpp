#include "Support/WebText.h"

#include "QVPlatform/Text.h"

namespace qvhost::WebText {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

void append(std::string& text, char c) {
    switch (c) {
        case '&':
            text += "&amp;";
            return;
        case '<':
            text += "&lt;";
            return;
        case '>':
            text += "&gt;";
            return;
        case '"':
            text += "&quot;";
            return;
        case '\'':
            text += "&#39;";
            return;
        default:
            break;
    }
    const auto byte = static_cast<unsigned char>(c);
    const bool isControl = (byte < 0x20 && c != '\n' && c != '\t' && c != '\r') || byte == 0x7F;
    if (isControl) {
        text += kReplacement;
    } else {
        text += c;
    }
}

}  // namespace

std::string escaped(std::string_view text) {
    std::string result;
    for (const char c : qv::Text::utf8(qv::Text::utf16(text)))
        append(result, c);
    return result;
}

std::string address(const std::filesystem::path& path) {
    constexpr std::string_view kPlain = "-._~/";
    constexpr const char* kDigits = "0123456789ABCDEF";
    std::string result;
    for (const char c : path.string()) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        if (isLetter || kPlain.find(c) != std::string_view::npos) {
            result += c;
        } else {
            result.append({'%', kDigits[byte >> 4], kDigits[byte & 15]});
        }
    }
    return result;
}

}  // namespace qvhost::WebText
