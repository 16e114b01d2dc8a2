#include "QVPlatform/Text.h"

#include "TextUnits.h"

#include <unicode/utf16.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace qv::Text {

namespace {

constexpr UChar32 kReplacementCharacter = 0xFFFD;

void appendUTF16(std::u16string& text, UChar32 character) {
    if (U_IS_BMP(character)) {
        text += static_cast<char16_t>(character);
    } else {
        text += static_cast<char16_t>(U16_LEAD(character));
        text += static_cast<char16_t>(U16_TRAIL(character));
    }
}

void appendUTF8(std::string& text, UChar32 character) {
    char bytes[U8_MAX_LENGTH];
    std::size_t count = 0;
    U8_APPEND_UNSAFE(bytes, count, character);
    text.append(bytes, count);
}

bool isStrictUTF8(std::string_view text) {
    std::size_t index = asciiPrefixLength(text);
    while (index < text.size()) {
        if (nextCharacter(text, index) < 0) return false;
    }
    return true;
}

}  // namespace

std::u16string utf16(std::string_view utf8) {
    std::size_t index = asciiPrefixLength(utf8);
    std::u16string text(utf8.begin(), utf8.begin() + static_cast<std::ptrdiff_t>(index));
    text.reserve(utf8.size());
    while (index < utf8.size()) {
        const UChar32 character = nextCharacter(utf8, index);
        appendUTF16(text, character < 0 ? kReplacementCharacter : character);
    }
    return text;
}

std::string utf8(std::u16string_view utf16) {
    std::string text;
    text.reserve(utf16.size());
    for (std::size_t index = 0; index < utf16.size();) {
        UChar32 character = 0;
        U16_NEXT(utf16.data(), index, utf16.size(), character);
        if (character < 0x80) {
            text += static_cast<char>(character);
        } else {
            appendUTF8(text, U_IS_SURROGATE(character) ? kReplacementCharacter : character);
        }
    }
    return text;
}

std::optional<std::string> stringFromUTF8(const Data& bytes) {
    std::string text(bytes.begin(), bytes.end());
    if (!isStrictUTF8(text)) return std::nullopt;
    return text;
}

std::optional<std::string> stringWithContentsOfFile(const std::string& path) {
    // Anything but a plain file (a device, a pipe) may never end.
    std::error_code failure;
    if (!std::filesystem::is_regular_file(path, failure)) return std::nullopt;
    std::ifstream file(path, std::ios::binary);
    if (!file) return std::nullopt;
    std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (file.bad() || !isStrictUTF8(text)) return std::nullopt;
    return text;
}

}  // namespace qv::Text
