#include "QVPlatform/Text.h"
#include "TextUnits.h"

#include <unicode/casemap.h>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace qv::Text {

namespace {

constexpr UChar32 kCapitalIWithDot = 0x0130;
constexpr UChar32 kCapitalSigma = 0x03A3;
// No character has a title-case mapping of more than three.
constexpr int32_t kLongestMapping = 8;

UChar32 characterAt(std::u16string_view text, std::size_t& index) {
    UChar32 character = 0;
    U16_NEXT(text.data(), index, text.size(), character);
    return character;
}

UChar32 characterBefore(std::u16string_view text, std::size_t& index) {
    UChar32 character = 0;
    U16_PREV(text.data(), std::size_t{0}, index, character);
    return character;
}

// A character may be both cased and ignorable; ignorable counts first.
bool isIgnorable(UChar32 character) {
    return u_hasBinaryProperty(character, UCHAR_CASE_IGNORABLE);
}

bool followsCasedLetter(std::u16string_view text, std::size_t index) {
    while (index > 0) {
        const UChar32 character = characterBefore(text, index);
        if (!isIgnorable(character)) return u_hasBinaryProperty(character, UCHAR_CASED);
    }
    return false;
}

bool precedesCasedLetter(std::u16string_view text, std::size_t index) {
    while (index < text.size()) {
        const UChar32 character = characterAt(text, index);
        if (!isIgnorable(character)) return u_hasBinaryProperty(character, UCHAR_CASED);
    }
    return false;
}

void append(std::u16string& result, UChar32 character) {
    if (U_IS_BMP(character)) {
        result += static_cast<char16_t>(character);
    } else {
        result += static_cast<char16_t>(U16_LEAD(character));
        result += static_cast<char16_t>(U16_TRAIL(character));
    }
}

// The character at `start` (which ends at `end`) of `text` in lower case. Without a locale the full mapping differs
// from the one-to-one mapping for two characters only.
void appendLower(std::u16string& result, UChar32 character, std::u16string_view text, std::size_t start,
                 std::size_t end) {
    if (isASCII(static_cast<char32_t>(character))) {
        result += static_cast<char16_t>(isASCIIUpper(static_cast<char32_t>(character)) ? character + 32 : character);
    } else if (character == kCapitalIWithDot) {
        result += u"i\u0307";
    } else if (character == kCapitalSigma && followsCasedLetter(text, start) && !precedesCasedLetter(text, end)) {
        result += u'\u03C2';
    } else {
        append(result, u_tolower(character));
    }
}

void appendTitle(std::u16string& result, UChar32 character) {
    if (isASCII(static_cast<char32_t>(character))) {
        result += static_cast<char16_t>(isASCIILower(static_cast<char32_t>(character)) ? character - 32 : character);
        return;
    }
    std::u16string source;
    append(source, character);
    char16_t mapped[kLongestMapping];
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length =
        icu::CaseMap::toTitle("", U_TITLECASE_WHOLE_STRING | U_TITLECASE_NO_BREAK_ADJUSTMENT, nullptr, source.data(),
                              static_cast<int32_t>(source.size()), mapped, kLongestMapping, nullptr, status);
    if (U_FAILURE(status)) {
        append(result, u_totitle(character));
    } else {
        result.append(mapped, static_cast<std::size_t>(length));
    }
}

bool startsAfresh(char16_t unit) {
    return unit == u'-' || unit == u'\'' || isWhitespace(unit) || isNewline(unit);
}

}  // namespace

std::u16string capitalized(std::u16string_view text) {
    std::u16string result;
    result.reserve(text.size());
    bool atStart = true;
    for (std::size_t index = 0; index < text.size();) {
        const std::size_t start = index;
        const UChar32 character = characterAt(text, index);
        if (atStart) {
            appendTitle(result, character);
        } else {
            appendLower(result, character, text, start, index);
        }
        atStart = U_IS_BMP(character) && startsAfresh(static_cast<char16_t>(character));
    }
    return result;
}

std::u16string lowercased(std::u16string_view text) {
    std::u16string result;
    result.reserve(text.size());
    for (std::size_t index = 0; index < text.size();) {
        const std::size_t start = index;
        const UChar32 character = characterAt(text, index);
        appendLower(result, character, text, start, index);
    }
    return result;
}

std::string lowercased(std::string_view utf8) {
    if (asciiPrefixLength(utf8) != utf8.size()) return Text::utf8(lowercased(utf16(utf8)));
    std::string result(utf8);
    for (char& character : result) {
        if (character >= 'A' && character <= 'Z') character = static_cast<char>(character + 32);
    }
    return result;
}

std::string capitalized(std::string_view utf8) {
    return Text::utf8(capitalized(utf16(utf8)));
}

}  // namespace qv::Text
