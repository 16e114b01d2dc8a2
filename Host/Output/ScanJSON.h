#pragma once

#include "Output/JSON.h"
#include "People/PersonOutcome.h"
#include "Scan/CardScan.h"

namespace qvhost {

/// `{noteUUID, errors, rotation, card, contact}` of one scan; errors are `{domain, code, underlying}`, and `underlying`
/// is null or `{domain, code, description}`. What was asked for about the person follows (see `addPersonJSON`).
JSON::Value scanJSON(const ScanOutcome& outcome, const PersonOutcome& person);

}  // namespace qvhost
