#pragma once

#include "QVCardScan/QVBusinessCard.h"

#include <string>

namespace qvhost {

/// What is known of a card beside its fields, a line each, fit for a terminal.
std::string cardFacts(const QVBusinessCard& card);

}  // namespace qvhost
