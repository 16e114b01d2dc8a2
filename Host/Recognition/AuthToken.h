#pragma once

#include "Support/Result.h"

#include <optional>
#include <string>

namespace qvhost::AuthToken {

/// The environment variable that may hold the token.
inline constexpr const char* kVariable = "QVCARDSCAN_TOKEN";

/// The secret for a server: the one line of the file, else the environment variable. The token itself is never part of
/// a failure's message.
Result<std::string> read(const std::optional<std::string>& file);

}  // namespace qvhost::AuthToken
