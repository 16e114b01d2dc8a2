#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The bodies of requests. Texts are escaped for XML; characters that XML cannot hold at all become blanks, and bytes
/// that are not UTF-8 U+FFFD.

/// PROPFIND: what tells the way to address books.
std::string wayBody();
/// PROPFIND: what tells a collection's cards apart.
std::string listBody();
/// REPORT: cards with a property (its name in capitals) that contains a text, without regard to case.
std::string queryBody(std::string_view property, std::string_view text);
/// REPORT: the cards at these references.
std::string multigetBody(const std::vector<std::string>& hrefs);
