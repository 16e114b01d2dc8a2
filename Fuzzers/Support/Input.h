#pragma once

#include "QVPlatform/Data.h"
#include "QVPlatform/Text.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// How the fuzzers read what they are given, so that seeds stay files that people can read.
namespace fuzzing {

inline std::string textOf(const std::uint8_t* bytes, std::size_t count) {
    return {reinterpret_cast<const char*>(bytes), count};
}

inline qv::Data dataOf(std::string_view text) {
    return {text.begin(), text.end()};
}

/// The parts between bytes 0x1E ("record separator"), at least one.
inline std::vector<std::string> partsOf(std::string_view text, char separator = '\x1E') {
    std::vector<std::string> parts;
    std::size_t begin = 0;
    for (std::size_t end = 0; (end = text.find(separator, begin)) != std::string_view::npos; begin = end + 1)
        parts.emplace_back(text.substr(begin, end - begin));
    parts.emplace_back(text.substr(begin));
    return parts;
}

inline bool isUTF8(std::string_view text) {
    return qv::Text::stringFromUTF8(dataOf(text)).has_value();
}

/// Whether XML can hold the text: UTF-8 of its production Char.
inline bool isXMLText(std::string_view text) {
    if (!isUTF8(text)) return false;
    for (const char16_t unit : qv::Text::utf16(text)) {
        const bool isControl = unit < 0x20 && unit != '\t' && unit != '\n' && unit != '\r';
        if (isControl || unit == 0xFFFE || unit == 0xFFFF) return false;
    }
    return true;
}

}  // namespace fuzzing
