#pragma once

#include "Output/JSON.h"
#include "QVCardScan/QVVeltoContact.h"

#include <memory>

namespace qvhost {

/// A contact by its property names; null for no contact. Entries are `{label, text}`; pictures stand as the hashes
/// under which a note refers to them.
JSON::Value contactJSON(const std::shared_ptr<QVVeltoContact>& contact);

}  // namespace qvhost
