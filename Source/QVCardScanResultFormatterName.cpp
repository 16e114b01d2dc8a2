#include "QVCardScan/QVCardScanResultFormatter.h"
#include "QVCardScanHonorifics.h"
#include "QVPlatform/Text.h"

#include <algorithm>

namespace {

using qv::Text::utf16;
using qv::Text::utf8;

constexpr char16_t kSpace = u' ';

bool isRemovable(char16_t unit) {
    return unit != u'&' && unit != u'-' && unit != u'\'' && qv::Text::isPunctuation(unit);
}

// Collapsing every pair until no pair is left turns each run of spaces into one; so does one pass.
template <typename Text>
void collapseSpaces(Text& text) {
    std::size_t kept = 0;
    for (const auto unit : text) {
        if (unit == ' ' && kept > 0 && text[kept - 1] == ' ') continue;
        text[kept++] = unit;
    }
    text.resize(kept);
}

std::u16string sanitized(std::u16string text) {
    text.erase(std::remove_if(text.begin(), text.end(), isRemovable), text.end());
    text = std::u16string(qv::Text::trimWhitespace(text));
    collapseSpaces(text);
    return text;
}

// A name in which the dots of one honorific after the other are restored. It is kept folded beside, so that the
// searches compare units only.
class HonorificRepair {
  public:
    explicit HonorificRepair(std::u16string text) : mText(std::move(text)), mFolded(qv::Text::folded(mText)) {}

    void restore(const QVCardScanHonorific& honorific);
    std::u16string takeText() { return std::move(mText); }

  private:
    bool isBounded(std::size_t position, std::size_t length) const {
        const std::size_t end = position + length;
        return (position == 0 || mText[position - 1] == kSpace) && (end == mText.size() || mText[end] == kSpace);
    }

    std::u16string mText;
    std::u16string mFolded;
};

// The search after a replacement begins at the running total of the lengths put in (`shift`), not behind the text just
// put in. That text begins at or behind the place where the previous search began, so of everything before its end only
// it can match; where it does, its dot breaks the right bound and ends the key. The result is built beside the source,
// which keeps a name of a thousand 'PhD' linear.
void HonorificRepair::restore(const QVCardScanHonorific& honorific) {
    const std::u16string key = qv::Text::folded(honorific.key);
    const bool valueHoldsKey = qv::Text::folded(honorific.value).find(key) != std::u16string::npos;
    std::u16string result;
    std::size_t read = 0;
    std::size_t shift = 0;
    for (std::size_t match = 0; (match = mFolded.find(key, read)) != std::u16string::npos;) {
        if (!isBounded(match, key.size())) break;
        result.append(mText, read, match - read);
        const std::size_t replaced = result.size();
        result.append(honorific.value);
        read = match + key.size();
        shift += honorific.value.size();
        if (valueHoldsKey && shift <= replaced) break;
    }
    if (read == 0) return;
    mText = result.append(mText, read);
    mFolded = qv::Text::folded(mText);
}

std::u16string withHonorificDots(std::u16string text) {
    HonorificRepair repair(std::move(text));
    for (const QVCardScanHonorific& honorific : QVCardScanHonorifics)
        repair.restore(honorific);
    return repair.takeText();
}

std::u16string withInitialDots(const std::u16string& text) {
    std::u16string result;
    result.reserve(text.size() + 8);
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(kSpace, start), text.size());
        result.append(text, start, end - start);
        if (end - start == 1 && qv::Text::isUppercaseLetter(text[start])) result += u'.';
        if (end < text.size()) result += kSpace;
        start = end + 1;
    }
    return result;
}

}  // namespace

QVString QVCardScanResultFormatter::normalizedNameForName(const QVString& name) {
    if (!name) return std::nullopt;
    std::u16string text = sanitized(utf16(*name));
    text = qv::Text::capitalized(std::u16string_view(text));
    text = withHonorificDots(std::move(text));
    return utf8(withInitialDots(text));
}

QVString QVCardScanResultFormatter::sanitizeNameString(const QVString& string) {
    if (!string) return std::nullopt;
    return utf8(sanitized(utf16(*string)));
}

QVString QVCardScanResultFormatter::stripDoubleSpaceFrom(const QVString& string) {
    if (!string) return std::nullopt;
    std::string text = *string;
    collapseSpaces(text);
    return text;
}

QVString QVCardScanResultFormatter::recoverMiddleNameDotString(const QVString& string) {
    if (!string) return std::nullopt;
    return utf8(withInitialDots(utf16(*string)));
}
