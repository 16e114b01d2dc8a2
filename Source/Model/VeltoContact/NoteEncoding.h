#pragma once

#include "QVCardScan/QVCardScanTypes.h"

#include <string>
#include <string_view>

/// The texts of a note, encoded for the places where they stand. Stateless.
namespace qvnote {

/// The five characters of markup as entities; everything else stays.
std::string escapedMarkup(std::string_view text);

/// Percent-escaped UTF-8, except for the unreserved characters (RFC 3986, section 2.3).
std::string escapedURLArgument(std::string_view text);

/// The map search for an address, its words joined by single spaces; escaped for an attribute.
std::string mapLink(std::string_view address);

/// The label cell of a row. The name is not escaped: it is markup of the caller's.
std::string labelCell(const QVString& name);

}  // namespace qvnote
