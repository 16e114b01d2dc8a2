#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qvhost {

/// The known name that somebody who typed `word` most likely meant: one that `word` begins, or one that a few slips of
/// the finger (letters wrong, missing, too many or exchanged) away. Nothing when none is near. Long words cost nothing.
std::optional<std::string> nearMiss(std::string_view word, const std::vector<std::string>& names);

}  // namespace qvhost
