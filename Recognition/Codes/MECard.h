#pragma once

#include "Codes/ContactCode.h"

#include <string_view>
#include <vector>

namespace qv::recognition {

/// The MECARD form of a contact ("MECARD:N:Doe,Jane;TEL:…;;"), as its Japanese inventor published it, with the ORG and
/// TITLE that generators add.
bool isMECard(std::string_view code);
std::vector<CodeField> readMECard(std::string_view code);

}  // namespace qv::recognition
