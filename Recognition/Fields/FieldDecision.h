#pragma once

#include "Fields/Field.h"

#include <string>
#include <vector>

namespace qv::recognition {

/// What the lines of a card say. Every word is used for at most one field; at most one field is a name. `language` is
/// the card's language as in a request ("de"). Text as printed; the order is that of the card, from top to bottom.
std::vector<Field> decideFields(const std::vector<TextLine>& lines, const std::string& language);

}  // namespace qv::recognition
