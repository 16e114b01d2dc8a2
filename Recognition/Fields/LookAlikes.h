#pragma once

#include <string_view>

namespace qv::recognition {

/// Whether two texts of equal length differ in at most two characters, and only in such as an engine takes for each
/// other (0 and o, 1 and l, rn is not among them). Equal texts are not look-alikes.
bool areLookAlikes(std::string_view a, std::string_view b);

}  // namespace qv::recognition
