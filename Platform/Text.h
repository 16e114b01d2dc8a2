#pragma once

#include "Data.h"
#include "Export.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Text rules that do not depend on a locale. What speaks of characters, lengths and ranges runs on UTF-16 code units.
/// Every function may be called from any thread.
namespace qv::Text {

/// Unpaired surrogates and malformed bytes become U+FFFD.
QV_EXPORT std::u16string utf16(std::string_view utf8);
/// The way back: unpaired surrogates become U+FFFD.
QV_EXPORT std::string utf8(std::u16string_view utf16);

/// The bytes as text when they are strict UTF-8 (no overlong forms, no surrogates, no cut tail); a leading BOM stays.
QV_EXPORT std::optional<std::string> stringFromUTF8(const Data& bytes);

/// Unicode general categories of one code unit (a surrogate belongs to none of these).
QV_EXPORT bool isPunctuation(char16_t unit);      ///< Pc Pd Ps Pe Pi Pf Po
QV_EXPORT bool isWhitespace(char16_t unit);       ///< Zs and TAB
QV_EXPORT bool isNewline(char16_t unit);          ///< LF VT FF CR U+0085 U+2028 U+2029
QV_EXPORT bool isUppercaseLetter(char16_t unit);  ///< Lu Lt

/// Without white space (Zs, TAB) at both ends.
QV_EXPORT std::u16string_view trimWhitespace(std::u16string_view text);

/// Each word's first character in title case and the others in lower case, full mappings, final sigma included. A
/// letter also starts afresh directly after a hyphen-minus or an apostrophe. Words end at white space and line ends.
QV_EXPORT std::u16string capitalized(std::u16string_view text);

/// Full lower-casing, no locale.
QV_EXPORT std::u16string lowercased(std::u16string_view text);
/// The same over UTF-8.
QV_EXPORT std::string lowercased(std::string_view utf8);
/// The same over UTF-8.
QV_EXPORT std::string capitalized(std::string_view utf8);

/// One-to-one case folding, unit by unit; the length stays. Supplementary characters stay as they are.
QV_EXPORT char16_t folded(char16_t unit);
/// The same for every unit of a text.
QV_EXPORT std::u16string folded(std::u16string_view text);

/// Position of `needle` in the `length` units of `text` from `start`, by one-to-one case folding of code units; nothing
/// when it is not there. Throws `RangeError` when the range leaves the text.
QV_EXPORT std::optional<std::size_t> findIgnoringCase(std::u16string_view text, std::u16string_view needle,
                                                      std::size_t start, std::size_t length);

/// Replaces `length` units from `start`. Throws `RangeError` when the range leaves the text.
QV_EXPORT void replaceRange(std::u16string& text, std::size_t start, std::size_t length, std::u16string_view with);

/// Every occurrence of `target`, literally, left to right without overlap; one pass.
QV_EXPORT std::string replaceAll(std::string_view text, std::string_view target, std::string_view with);

/// Lenient numbers: leading white space, a sign, the longest numeric prefix; no prefix is 0. Overflow stops at the
/// type's end. Never the C locale's.
QV_EXPORT std::int64_t integerValue(std::string_view text);
/// The same for a decimal number.
QV_EXPORT float floatValue(std::string_view text);

/// The whole of a file as UTF-8 text; nothing when it cannot be read or is not UTF-8.
QV_EXPORT std::optional<std::string> stringWithContentsOfFile(const std::string& path);

}  // namespace qv::Text
