#pragma once

#include "Fields/Field.h"

#include <vector>

namespace qv::recognition {

/// The web links in a line: with a scheme, with "www", or a bare host name that ends in a known top-level domain. Text
/// as printed but for what the engine broke (a lost dot after "www" or before "com", a space inside). The label before
/// a link belongs to its claim. A link to a twitter profile is claimed as such.
std::vector<Claim> findLinks(const TextLine& line);

}  // namespace qv::recognition
