#pragma once

#include "QVCardScan/QVBusinessCard.h"

#include <memory>
#include <string>

namespace qvhost {

/// The fields of a card as an aligned table for a terminal: field, text, confidence. They stand in the order in which
/// one reads a contact (name, title, company, …), those of one kind in the card's. A line in words when there is none.
std::string fieldTable(const std::shared_ptr<QVBusinessCard>& card);

}  // namespace qvhost
