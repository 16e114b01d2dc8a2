#include "QVCardScan/QVCardScanResultFormatter.h"
#include "QVCardScanHonorificRepair.h"
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

std::u16string withHonorificDots(std::u16string text) {
    QVCardScanHonorificRepair repair(std::move(text));
    repair.restoreAll();
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
