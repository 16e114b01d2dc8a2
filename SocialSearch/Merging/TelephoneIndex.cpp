#include "Merging/TelephoneIndex.h"

#include "Merging/EntryMeaning.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t kEndingLength = 4;
constexpr std::size_t kMostCompared = 64;

}  // namespace

bool TelephoneIndex::insert(std::string_view number) {
    PhoneDigits digits = PhoneDigits::fromText(number);
    if (digits.digits.empty()) return mTexts.insert(trimmed(number)).second;
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
