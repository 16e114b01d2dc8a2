#pragma once

#include "Data.h"
#include "Export.h"

#include <string>

namespace qv {

/// The MD5 digest (RFC 1321) of the bytes as 32 lower-case hexadecimal digits. It names resources; it protects nothing.
QV_EXPORT std::string lowerHexMD5(const Data& data);

}  // namespace qv
