#pragma once

#include "Output/JSON.h"
#include "Scan/CardScan.h"

namespace qvhost {

/// `{noteUUID, errors, rotation, card, contact}` of one scan; errors are `{domain, code, underlying}`, and `underlying`
/// is null or `{domain, code, description}`.
JSON::Value scanJSON(const ScanOutcome& outcome);

}  // namespace qvhost
