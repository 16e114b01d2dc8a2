#include "QVCardScanHonorificRepair.h"

#include "QVPlatform/Text.h"

#include <vector>

namespace {

constexpr char16_t kSpace = u' ';

}  // namespace

// A row of the table, made ready once for every search.
struct QVCardScanHonorificRepair::FoldedHonorific {
    explicit FoldedHonorific(const QVCardScanHonorific& honorific)
        : key(qv::Text::folded(honorific.key)),
          value(honorific.value),
          valueHoldsKey(qv::Text::folded(value).find(key) != std::u16string::npos) {}

    std::u16string key;
    std::u16string_view value;
    bool valueHoldsKey;
};

QVCardScanHonorificRepair::QVCardScanHonorificRepair(std::u16string text) : mText(std::move(text)) {
    fold();
}

void QVCardScanHonorificRepair::restoreAll() {
    static const std::vector<FoldedHonorific> table(QVCardScanHonorifics.begin(), QVCardScanHonorifics.end());
    for (const FoldedHonorific& honorific : table) {
        if (mayHold(honorific)) restore(honorific);
    }
}

std::size_t QVCardScanHonorificRepair::pairAt(std::u16string_view text, std::size_t index) {
    return (text[index] & 31U) * 32U + (text[index + 1] & 31U);
}

void QVCardScanHonorificRepair::fold() {
    mFolded = qv::Text::folded(mText);
    mPairs.reset();
    for (std::size_t index = 0; index + 1 < mFolded.size(); ++index)
        mPairs[pairAt(mFolded, index)] = true;
}

bool QVCardScanHonorificRepair::mayHold(const FoldedHonorific& honorific) const {
    const std::u16string_view key = honorific.key;
    for (std::size_t index = 0; index + 1 < key.size(); ++index) {
        if (!mPairs[pairAt(key, index)]) return false;
    }
    return true;
}

bool QVCardScanHonorificRepair::isBounded(std::size_t position, std::size_t length) const {
    const std::size_t end = position + length;
    return (position == 0 || mText[position - 1] == kSpace) && (end == mText.size() || mText[end] == kSpace);
}

// The search after a replacement begins at the running total of the lengths put in (`shift`), not behind the text just
// put in. That text begins at or behind the place where the previous search began, so of everything before its end only
// it can match; where it does, its dot breaks the right bound and ends the key. The result is built beside the source,
// which keeps a name of a thousand 'PhD' linear.
void QVCardScanHonorificRepair::restore(const FoldedHonorific& honorific) {
    std::u16string result;
    std::size_t read = 0;
    std::size_t shift = 0;
    for (std::size_t match = 0; (match = mFolded.find(honorific.key, read)) != std::u16string::npos;) {
        if (!isBounded(match, honorific.key.size())) break;
        result.append(mText, read, match - read);
        const std::size_t replaced = result.size();
        result.append(honorific.value);
        read = match + honorific.key.size();
        shift += honorific.value.size();
        if (honorific.valueHoldsKey && shift <= replaced) break;
    }
    if (read == 0) return;
    mText = result.append(mText, read);
    fold();
}
