#include "Merging/PhoneDigits.h"

#include "Merging/PhoneText.h"

#include <algorithm>
#include <array>

namespace {

/// A shorter rest is too little to call two numbers the same.
constexpr std::size_t kShortestSubscriber = 4;
/// From this length on, digits without "+" may begin with the code of a country.
constexpr std::size_t kShortestWithCountryCode = 11;
constexpr std::size_t kLongestExtension = 7;

std::string keysOf(std::u16string_view text) {
    std::string keys;
    for (const char16_t unit : text) {
        if (const auto key = phoneKeyOf(unit)) keys.push_back(*key);
    }
    return keys;
}

bool endsWith(std::u16string_view text, std::u16string_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

/// Cuts the extension off the end: digits behind a word or sign that announces one.
std::string takeExtension(std::u16string_view& text) {
    constexpr std::array<std::u16string_view, 8> kMarks = {u"extension", u"extn", u"ext", u"durchwahl",
                                                           u"x",         u"#",    u",",   u";"};
    std::size_t begin = text.size();
    while (begin > 0 && isPhoneDigit(text[begin - 1]))
        --begin;
    const std::u16string_view digits = text.substr(begin);
    if (digits.empty() || digits.size() > kLongestExtension) return {};
    std::u16string_view before = text.substr(0, begin);
    while (!before.empty() && std::u16string_view(u" .:=").find(before.back()) != std::u16string_view::npos)
        before.remove_suffix(1);
    for (const auto mark : kMarks) {
        if (!endsWith(before, mark)) continue;
        const auto number = before.substr(0, before.size() - mark.size());
        if (std::none_of(number.begin(), number.end(), isPhoneDigit)) return {};
        text = number;
        return keysOf(digits);
    }
    return {};
}

bool takePrefix(std::string& digits, std::string_view prefix, std::size_t leastRest) {
    if (digits.size() < prefix.size() + leastRest || digits.compare(0, prefix.size(), prefix) != 0) return false;
    digits.erase(0, prefix.size());
    return true;
}

/// How many digits the country's code has; the codes are such that none begins another (ITU-T E.164).
std::size_t countryCodeLength(std::string_view digits) {
    constexpr std::string_view kTwoDigitCodes =
        "20 27 30 31 32 33 34 36 39 40 41 43 44 45 46 47 48 49 51 52 53 54 55 56 57 58 60 61 62 63 64 65 66 81 82 84 "
        "86 90 91 92 93 94 95 98 ";
    if (digits.empty() || digits[0] == '0') return 0;
    if (digits[0] == '1' || digits[0] == '7') return 1;
    const std::string two = std::string(digits.substr(0, 2)) + " ";
    return kTwoDigitCodes.find(two) != std::string_view::npos ? 2 : 3;
}

std::string_view withoutCountryCode(std::string_view digits) {
    const std::size_t length = countryCodeLength(digits);
    return length == 0 || digits.size() <= length ? std::string_view() : digits.substr(length);
}

/// Whether `longer` is `shorter` behind what is dialled first inside a country: 0 in most, 1 in North America, 8 in
/// what uses the code 7, 06 in Hungary.
bool isTrunkPrefixApart(std::string_view longer, std::string_view shorter) {
    constexpr std::size_t kLengthWhereDigitLeads = 10;
    if (shorter.size() < kShortestSubscriber || longer.size() <= shorter.size()) return false;
    const std::size_t length = longer.size() - shorter.size();
    if (longer.substr(length) != shorter) return false;
    const std::string_view prefix = longer.substr(0, length);
    if (prefix == "0" || prefix == "06") return true;
    return (prefix == "1" || prefix == "8") && shorter.size() == kLengthWhereDigitLeads;
}

bool isSameNational(std::string_view a, std::string_view b) {
    return (a == b && !a.empty()) || isTrunkPrefixApart(a, b) || isTrunkPrefixApart(b, a);
}

/// Whether `international` begins with a country's code and goes on as `national` does.
bool isCountryCodeApart(std::string_view international, std::string_view national) {
    const std::string_view rest = withoutCountryCode(international);
    return rest.size() >= kShortestSubscriber && isSameNational(rest, national);
}

}  // namespace

PhoneDigits PhoneDigits::fromText(std::string_view text) {
    PhoneDigits number;
    const std::u16string units = readablePhoneText(text);
    std::u16string_view view = units;
    if (std::none_of(view.begin(), view.end(), isPhoneDigit)) return number;
    number.extension = takeExtension(view);
    const bool hasPlus = view.find(u'+') != std::u16string_view::npos;
    std::u16string main(view);
    if (const auto trunk = main.find(u"(0)"); hasPlus && trunk != std::u16string::npos) main.erase(trunk, 3);
    number.digits = keysOf(main);
    number.isInternational =
        hasPlus || takePrefix(number.digits, "00", kShortestSubscriber) || takePrefix(number.digits, "011", 9);
    return number;
}

bool PhoneDigits::isSameTelephone(const PhoneDigits& other) const {
    if (extension != other.extension || digits.empty() || other.digits.empty()) return false;
    if (digits == other.digits) return true;
    if (isInternational && other.isInternational) {
        const std::size_t length = countryCodeLength(digits);
        return length > 0 && length == countryCodeLength(other.digits) &&
               digits.compare(0, length, other.digits, 0, length) == 0 &&
               isSameNational(withoutCountryCode(digits), withoutCountryCode(other.digits));
    }
    const auto mayHaveCode = [](const PhoneDigits& number) {
        return number.isInternational || number.digits.size() >= kShortestWithCountryCode;
    };
    if (!isInternational && !other.isInternational && isSameNational(digits, other.digits)) return true;
    return (mayHaveCode(*this) && isCountryCodeApart(digits, other.digits)) ||
           (mayHaveCode(other) && isCountryCodeApart(other.digits, digits));
}
