#pragma once

#include "QVPlatform/Data.h"

#include <string>

namespace qvhost {

/// Base64 with padding and without line breaks (RFC 4648, section 4).
std::string base64(const qv::Data& bytes);

}  // namespace qvhost
