#pragma once

#include "Export.h"

#include <string>
#include <string_view>

namespace qv {

/// The SHA-256 digest (FIPS 180-4) of the bytes as 64 lower-case hexadecimal digits.
QV_EXPORT std::string lowerHexSHA256(std::string_view bytes);

}  // namespace qv
