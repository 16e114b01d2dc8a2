#include "VCard/VCardEncoding.h"

#include "QVPlatform/Text.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

int hexValue(char digit) {
    if (digit >= '0' && digit <= '9') return digit - '0';
    if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
    if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
    return -1;
}

bool isAlphanumeric(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

/// `mark` and two digits become one byte; every other byte stays.
std::string unescaped(std::string_view text, char mark) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == mark && i + 2 < text.size() ? hexValue(text[i + 1]) : -1;
        const int low = high >= 0 ? hexValue(text[i + 2]) : -1;
        if (low >= 0) {
            bytes += static_cast<char>(high * 16 + low);
            i += 2;
        } else {
            bytes += text[i];
        }
    }
    return bytes;
}

std::string escapedByte(char mark, char byte) {
    const auto value = static_cast<unsigned char>(byte);
    return {mark, kHexDigits[value >> 4], kHexDigits[value & 15]};
}

template <typename Keeps>
std::string percentEscaped(std::string_view text, Keeps keeps) {
    std::string escaped;
    for (const char c : text)
        escaped += keeps(c) ? std::string(1, c) : escapedByte('%', c);
    return escaped;
}

std::string quotedPrintableUnit(std::string_view sequence) {
    if (sequence == "\n") return "=0D=0A";
    if (sequence.size() == 1 && sequence[0] > ' ' && sequence[0] <= '~' && sequence[0] != '=')
        return std::string(sequence);
    if (sequence == " ") return " ";
    std::string unit;
    for (const char byte : sequence)
        unit += escapedByte('=', byte);
    return unit;
}

}  // namespace

std::string capitals(std::string_view text) {
    std::string result(text);
    for (char& c : result) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return result;
}

bool isASCII(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::string textOfQuotedPrintable(std::string_view text) {
    return qv::Text::replaceAll(unescaped(text, '='), "\r\n", "\n");
}

std::string quotedPrintable(std::string_view text, std::size_t column, std::size_t width, std::string_view lineEnd) {
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = sequenceLength(text, i);
        std::string unit = quotedPrintableUnit(text.substr(i, length));
        i += length;
        // A blank at the end of a line is lost on the way.
        if (unit == " " && i == text.size()) unit = "=20";
        if (column + unit.size() + 1 > width) {
            result.append("=").append(lineEnd);
            column = 0;
        }
        result += unit;
        column += unit.size();
    }
    return result;
}

std::string withoutPercentEscapes(std::string_view text) {
    return unescaped(text, '%');
}

std::string escapedURI(std::string_view uri) {
    return percentEscaped(uri, [](char c) { return c > ' ' && c <= '~' && c != ',' && c != ';'; });
}

std::string escapedSegment(std::string_view text) {
    return percentEscaped(text,
                          [](char c) { return isAlphanumeric(c) || c == '-' || c == '.' || c == '_' || c == '~'; });
}

std::size_t sequenceLength(std::string_view text, std::size_t position) {
    const auto isContinuation = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; };
    std::size_t end = position + 1;
    while (end < text.size() && end - position < 4 && isContinuation(text[end]))
        ++end;
    return end - position;
}
