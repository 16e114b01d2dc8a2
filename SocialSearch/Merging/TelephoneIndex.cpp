#include "Merging/TelephoneIndex.h"

#include "Merging/EntryMeaning.h"

bool TelephoneIndex::insert(std::string_view number) {
    constexpr std::size_t kEndingLength = 4;
    PhoneDigits digits = PhoneDigits::fromText(number);
    if (digits.digits.empty()) return mTexts.insert(trimmed(number)).second;
    const std::string& all = digits.digits;
    std::string ending = all.size() > kEndingLength ? all.substr(all.size() - kEndingLength) : all;
    const auto [begin, end] = mByEnding.equal_range(ending);
    for (auto entry = begin; entry != end; ++entry) {
        if (entry->second.isSameTelephone(digits)) return false;
    }
    mByEnding.emplace(std::move(ending), std::move(digits));
    return true;
}
