#pragma once

#include "Export.h"

#include <optional>
#include <string>
#include <string_view>

namespace qv {

/// A domain name of the internet as it goes out on the wire: in lower case, and internationalised labels (UTF-8) as
/// "xn--…" (UTS #46, non-transitional, IDNA2008). Nothing for what is no such name: an address ("192.0.2.1", "[::1]"),
/// a single label ("localhost"), an empty or too long label, and characters that host names must not have.
QV_EXPORT std::optional<std::string> asciiDomainName(std::string_view utf8);

}  // namespace qv
