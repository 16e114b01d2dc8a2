#pragma once

#include "Fields/Field.h"

#include <vector>

namespace qv::recognition {

/// The fields that are left when the picture as a whole is looked at: of a page of running text only addresses of the
/// internet and telephone numbers, of a few badly read letters nothing. A card with only a name or a firm stays as it
/// is.
std::vector<Field> plausible(std::vector<Field> fields, const std::vector<TextLine>& lines);

}  // namespace qv::recognition
