#pragma once

#include "Output/JSON.h"
#include "People/PersonOutcome.h"

namespace qvhost {

/// Adds to an object what was asked for and came of it: `merged` (null, or `{uid, name, where, by}`), `search`
/// (`{outcome, resultType, name, inAddressBook}`) and `saved` (`{outcome, uid, where, error}`); null for what is
/// absent.
void addPersonJSON(JSON::Value& object, const PersonOutcome& person);

}  // namespace qvhost
