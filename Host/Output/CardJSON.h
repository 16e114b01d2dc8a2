#pragma once

#include "Output/JSON.h"
#include "QVCardScan/QVBusinessCard.h"

#include <memory>

namespace qvhost {

/// A card with all that the library knows of it; null for no card.
JSON::Value cardJSON(const std::shared_ptr<QVBusinessCard>& card);

}  // namespace qvhost
