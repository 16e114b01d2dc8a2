#pragma once

#include "Codes/ContactCode.h"
#include "Fields/Field.h"
#include "Picture/Box.h"

#include <vector>

namespace qv::recognition {

/// Print and code as one list: what the code says is sure and takes the place of what was read of the same thing, which
/// gives it its place on the card; what was not read is added with the code's own place. A code has one name, firm and
/// title: what was read otherwise goes. Other numbers and addresses that only the print has stay.
std::vector<Field> withCode(std::vector<Field> read, const std::vector<CodeField>& code, const Box& codeBox);

}  // namespace qv::recognition
