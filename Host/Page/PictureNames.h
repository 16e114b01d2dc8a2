#pragma once

#include "Output/JSON.h"
#include "Page/PageRequest.h"

#include <string>
#include <vector>

/// The names of files that were dropped on the page.
namespace qvhost::PictureNames {

/// The sides of cards among such names (see `CardPairs`): for each card the positions of its one or two names, in the
/// order of the first ones.
std::vector<std::vector<std::size_t>> paired(const std::vector<std::string>& names);

/// The answer to `{"names": […]}`: `{"cards": [[0, 1], …]}`.
JSON::Value pairs(const PageRequest& request);

/// A name as it may be shown: its last part, of a length that fits.
std::string shown(const std::string& name);

}  // namespace qvhost::PictureNames
