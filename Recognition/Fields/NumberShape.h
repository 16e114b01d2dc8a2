#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace qv::recognition {

/// A stretch of a text that is written like a number: digits with the marks that telephone numbers are printed with.
struct NumberRun {
    std::size_t begin = 0;  ///< in bytes of the text
    std::size_t end = 0;
};

/// The runs in a text, each with at least five digits. A "+" starts another run; so do a second bracketed area code and
/// a slash or comma between two whole numbers; a comma before a space ends one.
std::vector<NumberRun> numberRuns(std::string_view text);

bool looksLikeDate(std::string_view number);      ///< 24.12.2024, 2024-12-24
bool looksLikeYears(std::string_view number);     ///< 1990-2020
bool looksLikePostcode(std::string_view number);  ///< 02467-0000
/// Marks that a telephone number has and a house number has not: a leading "+", brackets, at least two groups parted
/// alike.
bool hasPhoneMarks(std::string_view number);

/// A number as it was printed: what the engine reads for a dot, a dash or a bracket in one place only is made like its
/// neighbours.
std::string tidyNumber(std::string_view number);

}  // namespace qv::recognition
