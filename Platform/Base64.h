#pragma once

#include "Data.h"
#include "Export.h"

#include <optional>
#include <string>
#include <string_view>

namespace qv {

/// Base64 with padding and without line ends (RFC 4648, section 4).
QV_EXPORT std::string base64(const Data& bytes);

/// The bytes of a Base64 text. White space is skipped, padding may be missing, and digits at the end that make no whole
/// byte are dropped; nothing when anything else is in the text.
QV_EXPORT std::optional<Data> dataFromBase64(std::string_view text);

}  // namespace qv
