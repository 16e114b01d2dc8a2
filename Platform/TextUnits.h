#pragma once

#include <unicode/utf8.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

/// Small steps over bytes and code units, shared by the text rules. Internal to the platform.
namespace qv::Text {

constexpr bool isASCII(char32_t unit) {
    return unit < 0x80;
}
constexpr bool isASCIIUpper(char32_t unit) {
    return unit >= U'A' && unit <= U'Z';
}
constexpr bool isASCIILower(char32_t unit) {
    return unit >= U'a' && unit <= U'z';
}
constexpr bool isASCIIDigit(char character) {
    return character >= '0' && character <= '9';
}

/// How many bytes at the beginning are ASCII; eight at a time.
inline std::size_t asciiPrefixLength(std::string_view text) {
    std::size_t index = 0;
    for (std::uint64_t word = 0; index + sizeof word <= text.size(); index += sizeof word) {
        std::memcpy(&word, text.data() + index, sizeof word);
        if ((word & 0x8080808080808080U) != 0) break;
    }
    while (index < text.size() && static_cast<unsigned char>(text[index]) < 0x80)
        ++index;
    return index;
}

/// The character that begins at `index`, which moves behind it; negative where the bytes are no strict UTF-8.
inline UChar32 nextCharacter(std::string_view text, std::size_t& index) {
    UChar32 character = 0;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
    U8_NEXT(text.data(), index, text.size(), character);
#pragma GCC diagnostic pop
    return character;
}

}  // namespace qv::Text
