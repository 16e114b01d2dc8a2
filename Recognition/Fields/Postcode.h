#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace qv::recognition {

/// How plainly a line of an address shows a post code: 0 (none) to 1 (a shape that nothing else has, beside a place).
/// `words` are the line's words as printed.
float postcodeEvidence(const std::vector<std::string>& words);

/// Whether the word at `index` begins what can hardly be anything but a post code.
bool startsPostcode(const std::vector<std::string>& words, std::size_t index);

/// ISO code of the country whose post codes look like the one in the line, where the shape alone tells; else empty.
std::string postcodeCountry(const std::vector<std::string>& words);

}  // namespace qv::recognition
