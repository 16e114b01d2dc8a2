#pragma once

#include "Answer/ResultFile.h"

#include <optional>
#include <string>

namespace qvhost {

/// Why an answer holds no card, or not all of one: it is empty, no XML, XML that breaks off, or no recognition result.
/// Nothing for a whole result, whether or not it has fields.
std::optional<std::string> resultRemark(const ResultFile& file);

}  // namespace qvhost
