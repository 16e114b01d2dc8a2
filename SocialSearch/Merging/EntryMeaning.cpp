#include "Merging/EntryMeaning.h"

#include "QVPlatform/Text.h"

namespace {

bool isBlankUnit(char16_t unit) {
    return qv::Text::isWhitespace(unit) || qv::Text::isNewline(unit);
}

}  // namespace

std::string trimmed(std::string_view text) {
    const std::u16string units = qv::Text::utf16(text);
    std::size_t begin = 0;
    std::size_t end = units.size();
    while (begin < end && isBlankUnit(units[begin]))
        ++begin;
    while (begin < end && isBlankUnit(units[end - 1]))
        --end;
    return qv::Text::utf8(std::u16string_view(units).substr(begin, end - begin));
}

bool isBlank(const QVString& text) {
    return !text || trimmed(*text).empty();
}

std::string meaningOfEmail(std::string_view address) {
    return qv::Text::lowercased(trimmed(address));
}

std::string meaningOfHandle(std::string_view handle) {
    std::string meaning = qv::Text::lowercased(trimmed(handle));
    if (!meaning.empty() && meaning.front() == '@') meaning.erase(0, 1);
    return meaning;
}
