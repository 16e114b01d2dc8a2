#pragma once

#include "Fields/Field.h"

#include <string>
#include <string_view>
#include <vector>

namespace qv::recognition {

/// One thing that a code says about its card's bearer.
struct CodeField {
    FieldType type = FieldType::Name;
    std::string text;
    bool isAnyNumber = false;  ///< a telephone number whose kind the code does not say

    bool operator==(const CodeField&) const = default;
};

/// What a code with a contact says: a vCard (2.1, 3.0, 4.0) or a MECARD; nothing for any other text. At most one name;
/// values without control characters and of bounded length and number, whatever the code holds.
std::vector<CodeField> contactIn(std::string_view code);

}  // namespace qv::recognition
