#include "QVPlatform/RangeError.h"
#include "QVPlatform/Text.h"
#include "TextUnits.h"

#include <unicode/uchar.h>

#include <array>

namespace qv::Text {

namespace {

// The ASCII characters of the categories P*; the others that are no letters are symbols.
constexpr auto kASCIIPunctuation = [] {
    std::array<bool, 0x80> table{};
    for (const char character : std::string_view("!\"#%&'()*,-./:;?@[\\]_{}")) {
        table[static_cast<unsigned char>(character)] = true;
    }
    return table;
}();

bool hasCategory(char16_t unit, uint32_t categories) {
    return (U_GET_GC_MASK(static_cast<UChar32>(unit)) & categories) != 0;
}

void checkRange(std::u16string_view text, std::size_t start, std::size_t length) {
    if (start <= text.size() && length <= text.size() - start) return;
    throw RangeError("Range {" + std::to_string(start) + ", " + std::to_string(length) +
                     "} out of bounds; string length " + std::to_string(text.size()));
}

}  // namespace

bool isPunctuation(char16_t unit) {
    if (isASCII(unit)) return kASCIIPunctuation[unit];
    return hasCategory(unit, U_GC_P_MASK);
}

bool isWhitespace(char16_t unit) {
    if (isASCII(unit)) return unit == u' ' || unit == u'\t';
    return hasCategory(unit, U_GC_ZS_MASK);
}

bool isNewline(char16_t unit) {
    return (unit >= u'\n' && unit <= u'\r') || unit == u'\u0085' || unit == u'\u2028' || unit == u'\u2029';
}

bool isUppercaseLetter(char16_t unit) {
    if (isASCII(unit)) return isASCIIUpper(unit);
    return hasCategory(unit, U_GC_LU_MASK | U_GC_LT_MASK);
}

std::u16string_view trimWhitespace(std::u16string_view text) {
    while (!text.empty() && isWhitespace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isWhitespace(text.back()))
        text.remove_suffix(1);
    return text;
}

char16_t folded(char16_t unit) {
    if (isASCII(unit)) return isASCIIUpper(unit) ? static_cast<char16_t>(unit + 32) : unit;
    const UChar32 folded = u_foldCase(static_cast<UChar32>(unit), U_FOLD_CASE_DEFAULT);
    return folded <= 0xFFFF ? static_cast<char16_t>(folded) : unit;
}

std::u16string folded(std::u16string_view text) {
    std::u16string result(text);
    for (char16_t& unit : result)
        unit = folded(unit);
    return result;
}

std::optional<std::size_t> findIgnoringCase(std::u16string_view text, std::u16string_view needle, std::size_t start,
                                            std::size_t length) {
    checkRange(text, start, length);
    const std::size_t position = folded(text.substr(start, length)).find(folded(needle));
    if (needle.empty() || position == std::u16string::npos) return std::nullopt;
    return start + position;
}

void replaceRange(std::u16string& text, std::size_t start, std::size_t length, std::u16string_view with) {
    checkRange(text, start, length);
    text.replace(start, length, with);
}

std::string replaceAll(std::string_view text, std::string_view target, std::string_view with) {
    std::string result;
    std::size_t read = 0;
    if (!target.empty()) {
        for (std::size_t found = 0; (found = text.find(target, read)) != std::string_view::npos;) {
            result.append(text, read, found - read).append(with);
            read = found + target.size();
        }
    }
    return result.append(text.substr(read));
}

}  // namespace qv::Text
