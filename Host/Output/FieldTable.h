#pragma once

#include "QVCardScan/QVBusinessCard.h"

#include <memory>
#include <string>

namespace qvhost {

/// The fields of a card as an aligned table for a terminal: field, text, confidence. Long and many-lined texts go on in
/// their column; nothing in them can act on the terminal. A line in words when there is no field.
std::string fieldTable(const std::shared_ptr<QVBusinessCard>& card);

}  // namespace qvhost
