#pragma once

#include <string>
#include <string_view>

/// The encodings that values of vCards are wrapped in.

/// ASCII letters in capitals; every other byte stays.
std::string capitals(std::string_view text);
bool isASCII(std::string_view text);

/// The bytes of a quoted-printable text (RFC 2045) without soft line breaks. What is no escape stays as it is; CR LF
/// becomes LF.
std::string textOfQuotedPrintable(std::string_view text);
/// Quoted-printable lines of at most `width` octets joined by "=" and the line end; the first begins at `column`. LF
/// becomes "=0D=0A", and an UTF-8 sequence stays in one line.
std::string quotedPrintable(std::string_view text, std::size_t column, std::size_t width, std::string_view lineEnd);

/// Percent escapes out of a text; a "%" without two digits stays.
std::string withoutPercentEscapes(std::string_view text);
/// The URI with commas, semicolons, white space, control and non-ASCII bytes as percent escapes.
std::string escapedURI(std::string_view uri);
/// One segment of a path: everything but letters, digits and "-._~" as percent escapes.
std::string escapedSegment(std::string_view text);

/// Length of the UTF-8 sequence that begins at `position`, at least 1, never beyond the text.
std::size_t sequenceLength(std::string_view text, std::size_t position);
