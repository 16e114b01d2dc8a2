#pragma once

#include "Fields/CardFacts.h"
#include "Fields/Field.h"

#include <vector>

namespace qv::recognition {

/// Tells names, titles, departments and firms apart among the lines that nothing else claimed; each line becomes one
/// thing or none, at most one of them a name. Lines of one firm's name that stand above each other become one field.
std::vector<Field> findPersonsAndFirms(const std::vector<TextLine>& lines, const CardFacts& facts);

}  // namespace qv::recognition
