#pragma once

#include "Export.h"

#include <string_view>

namespace qv {

/// Whether a numeric address (IPv4 with dots, or IPv6) is one of the public internet: not the own machine, link, site
/// or provider, not reserved, and no group of receivers. An IPv6 address that carries an IPv4 one is judged by that.
/// False for anything else. Source: the special-purpose registries of IANA (RFC 6890 and its updates).
QV_EXPORT bool isPublicAddress(std::string_view numericAddress);

}  // namespace qv
