#pragma once

#include "Codes/ContactCode.h"

#include <string_view>
#include <vector>

namespace qv::recognition {

/// What of a vCard is a field of a card: FN or N, ORG (its units are departments), TITLE or ROLE, TEL, EMAIL, URL, ADR,
/// and Skype and Twitter names. Versions 2.1 (quoted-printable, charsets), 3.0 (RFC 2426) and 4.0 (RFC 6350). Of
/// several vCards in one code the first counts.
bool isVCard(std::string_view code);
std::vector<CodeField> readVCard(std::string_view code);

}  // namespace qv::recognition
