#include "QVPlatform/Text.h"
#include "TextUnits.h"

#include <charconv>
#include <limits>

namespace qv::Text {

namespace {

std::string_view withoutLeadingWhitespace(std::string_view text) {
    std::size_t index = 0;
    for (std::size_t next = 0; next < text.size(); index = next) {
        const UChar32 character = nextCharacter(text, next);
        if (character < 0 || character > 0xFFFF) break;
        const auto unit = static_cast<char16_t>(character);
        if (!isWhitespace(unit) && !isNewline(unit)) break;
    }
    return text.substr(index);
}

bool takeSign(std::string_view& text) {
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) text.remove_prefix(1);
    return isNegative;
}

std::size_t digitCount(std::string_view text) {
    std::size_t count = 0;
    while (count < text.size() && isASCIIDigit(text[count]))
        ++count;
    return count;
}

// Whether a number that no float can hold is too large rather than too small, by the place of its first digit that
// counts: "0.001e9" has it at -2 + 9.
bool isLarge(std::string_view number) {
    const std::size_t whole = digitCount(number);
    const std::size_t first = number.find_first_not_of("0.");
    if (first == std::string_view::npos || !isASCIIDigit(number[first])) return false;
    const auto place = static_cast<std::int64_t>(whole) - static_cast<std::int64_t>(first) + (first > whole ? 1 : 0);
    const std::size_t mark = number.find_first_of("eE");
    if (mark == std::string_view::npos) return place > 0;
    const std::int64_t exponent = integerValue(number.substr(mark + 1));
    return place > 0 ? exponent > -place : exponent > 0 && exponent > -place;
}

}  // namespace

std::int64_t integerValue(std::string_view text) {
    using Limits = std::numeric_limits<std::int64_t>;
    text = withoutLeadingWhitespace(text);
    const bool isNegative = takeSign(text);
    const std::string_view digits = text.substr(0, digitCount(text));
    if (digits.empty()) return 0;
    std::uint64_t magnitude = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), magnitude);
    const bool isBeyond = result.ec != std::errc() || magnitude > static_cast<std::uint64_t>(Limits::max());
    if (isBeyond) return isNegative ? Limits::min() : Limits::max();
    return isNegative ? -static_cast<std::int64_t>(magnitude) : static_cast<std::int64_t>(magnitude);
}

float floatValue(std::string_view text) {
    text = withoutLeadingWhitespace(text);
    const bool isNegative = takeSign(text);
    // Keeps out what the standard reader knows beyond decimal numbers: infinities, and a sign of its own.
    if (text.empty() || (!isASCIIDigit(text.front()) && text.front() != '.')) return 0;
    float value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::general);
    if (result.ec == std::errc::result_out_of_range) {
        const std::string_view number(text.data(), static_cast<std::size_t>(result.ptr - text.data()));
        value = isLarge(number) ? std::numeric_limits<float>::max() : 0;
    }
    return isNegative ? -value : value;
}

}  // namespace qv::Text
