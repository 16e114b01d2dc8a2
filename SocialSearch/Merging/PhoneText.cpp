#include "Merging/PhoneText.h"

#include "QVPlatform/Text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

/// So many digits need no letters to be a whole number.
constexpr std::ptrdiff_t kDigitsOfAWholeNumber = 7;

/// Digits of other scripts as the ASCII ones.
char16_t asciiDigit(char16_t unit) {
    constexpr std::array<char16_t, 16> kZeros = {u'\u0660', u'\u06F0', u'\u0966', u'\u09E6', u'\u0A66', u'\u0AE6',
                                                 u'\u0B66', u'\u0BE6', u'\u0C66', u'\u0CE6', u'\u0D66', u'\u0E50',
                                                 u'\u0ED0', u'\u1040', u'\u17E0', u'\uFF10'};
    for (const char16_t zero : kZeros) {
        if (unit >= zero && unit <= zero + 9) return static_cast<char16_t>(u'0' + (unit - zero));
    }
    return unit == u'\uFF0B' ? u'+' : unit;
}

/// Without words in brackets: "(office)".
std::u16string withoutBracketedWords(std::u16string_view text) {
    std::u16string kept;
    for (std::size_t open = 0; (open = text.find(u'(')) != std::u16string_view::npos;) {
        const std::size_t close = text.find(u')', open);
        if (close == std::u16string_view::npos) break;
        const std::u16string_view inside = text.substr(open, close - open);
        const bool isNumber = std::any_of(inside.begin(), inside.end(), isPhoneDigit);
        kept += text.substr(0, isNumber ? close + 1 : open);
        text.remove_prefix(close + 1);
    }
    return kept.append(text);
}

/// Without the words that stand around a number and say what it is, as "Tel.:". A letter right before a digit may be a
/// misread one, and letters of a number that would be too short without them are dialled.
std::u16string withoutRemarks(std::u16string text) {
    if (std::count_if(text.begin(), text.end(), isPhoneDigit) < kDigitsOfAWholeNumber) return text;
    text = withoutBracketedWords(text);
    const std::size_t begin = text.find_first_of(u"+0123456789");
    if (begin != 0 && begin != std::u16string::npos && !phoneKeyOf(text[begin - 1])) text.erase(0, begin);
    return text;
}

}  // namespace

bool isPhoneDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

std::optional<char> phoneKeyOf(char16_t unit) {
    constexpr std::string_view kKeys = "22233344455566677778889999";
    if (isPhoneDigit(unit)) return static_cast<char>(unit);
    if (unit >= u'a' && unit <= u'z') return kKeys[static_cast<std::size_t>(unit - u'a')];
    return std::nullopt;
}

std::u16string readablePhoneText(std::string_view text) {
    std::u16string units = qv::Text::lowercased(qv::Text::utf16(text));
    std::transform(units.begin(), units.end(), units.begin(), asciiDigit);
    units = withoutRemarks(std::move(units));
    while (!units.empty() && !phoneKeyOf(units.back()))
        units.pop_back();
    return units;
}
