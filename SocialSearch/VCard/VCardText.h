#pragma once

#include "QVSocialSearch/QVVCardProperty.h"

#include <string>
#include <string_view>
#include <vector>

/// How vCards escape texts. 3.0 and 4.0 put a backslash before commas, semicolons and backslashes and write line ends
/// as "\n"; 2.1 knows it for semicolons (and backslashes, by those who need it), and encodes line ends otherwise.

std::string escapedText(QVVCardVersion version, std::string_view text);
/// An escape that nobody defined stays, but "\:", which older writers use.
std::string unescapedText(QVVCardVersion version, std::string_view value);

std::vector<std::string> splitAt(std::string_view text, char separator);
/// The parts between those separators that have no backslash before them, still escaped; at least one.
/// No structured value has as many as 64: the last one of so many is all the rest.
std::vector<std::string> splitAtUnescaped(std::string_view value, char separator);
