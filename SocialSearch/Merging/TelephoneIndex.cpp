#include "Merging/TelephoneIndex.h"

#include "Merging/EntryMeaning.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t kEndingLength = 4;
constexpr std::size_t kMostCompared = 64;

/// Cards have numbers as URIs, too ("tel:110"); whoever reads one drops the scheme, and it is still the same number.
std::string withoutScheme(std::string_view number) {
    const std::string text = trimmed(number);
    std::string_view rest = text;
    while (rest.starts_with("tel:")) {
        rest.remove_prefix(4);
        rest.remove_prefix(std::min(rest.size(), rest.find_first_not_of(" \t\r\n")));
    }
    return trimmed(rest);
}

}  // namespace

bool TelephoneIndex::insert(std::string_view number) {
    const std::string text = withoutScheme(number);
    PhoneDigits digits = PhoneDigits::fromText(text);
    if (digits.digits.empty()) return mTexts.insert(text).second;
    return insertDigits(std::move(digits));
}

bool TelephoneIndex::insertDigits(PhoneDigits digits) {
    if (!mDigits.insert(digits.digits + "x" + digits.extension).second) return false;
    const std::string& all = digits.digits;
    auto& alike = mByEnding[all.size() > kEndingLength ? all.substr(all.size() - kEndingLength) : all];
    const auto isSame = [&](const PhoneDigits& other) { return other.isSameTelephone(digits); };
    if (std::any_of(alike.begin(), alike.end(), isSame)) return false;
    if (alike.size() < kMostCompared) alike.push_back(std::move(digits));
    return true;
}
