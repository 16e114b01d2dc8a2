#pragma once

#include "Output/JSON.h"
#include "Page/CardPile.h"

namespace qvhost::PileJSON {

/// A card for the list: `{id, revision, state, title, subtitle, problem, pictures, saving}`.
JSON::Value summary(const PileCard& card);

/// A card with all that the page shows of it: the above, and `{sides, fields, remarks, saved}`.
JSON::Value whole(const PileCard& card);

}  // namespace qvhost::PileJSON
