#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Text from outside, made fit for a terminal.
namespace qvhost::TerminalText {

/// The text with everything that would command a terminal or turn its writing direction shown as an escape ("\x1b",
/// "\u202e"). Line breaks and tabs count as such too; malformed UTF-8 becomes U+FFFD.
std::string printable(std::string_view text);

/// The same, but line breaks stay.
std::string printableLines(std::string_view text);

/// Columns that printable text takes: two for wide characters, none for marks that combine.
std::size_t displayWidth(std::string_view text);

/// Printable lines of at most `width` columns each, broken at spaces where that is possible. White space at the end of
/// the text is dropped; there is always at least one line.
std::vector<std::string> wrapped(std::string_view text, std::size_t width);

}  // namespace qvhost::TerminalText
