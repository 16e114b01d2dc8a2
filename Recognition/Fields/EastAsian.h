#pragma once

#include <string>
#include <string_view>

namespace qv::recognition {

/// What lines in Chinese, Japanese and Korean script are. These scripts write words without spaces, so the words that
/// tell are looked for at a line's end or anywhere in it. Each function gives 0 to 1 for how much the line looks like
/// the thing; `eastAsianName` gives −1 for what cannot be a name.

/// Whether most letters of a text are of these scripts, and there are at least two.
bool isEastAsianText(std::string_view text);

float eastAsianName(std::string_view text);
float eastAsianTitle(std::string_view text);
float eastAsianDepartment(std::string_view text);
float eastAsianCompany(std::string_view text);
float eastAsianAddress(std::string_view text);

}  // namespace qv::recognition
