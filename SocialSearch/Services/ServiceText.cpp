#include "Services/ServiceText.h"

#include "Merging/EntryMeaning.h"
#include "QVPlatform/Text.h"

#include <algorithm>

namespace {

/// Bytes.
constexpr std::size_t kLongest = 1000;

bool breaksLine(char16_t unit) {
    return unit < u' ' || (unit >= 0x7F && unit < 0xA0) || qv::Text::isNewline(unit);
}

}  // namespace

QVString lineOf(const qv::JSON& value) {
    const QVString text = value.string();
    if (!text || text->size() > kLongest) return std::nullopt;
    std::u16string units = qv::Text::utf16(*text);
    std::replace_if(units.begin(), units.end(), breaksLine, u' ');
    std::string line = trimmed(qv::Text::utf8(units));
    if (line.empty()) return std::nullopt;
    return line;
}
