#pragma once

#include "Page/PageRequest.h"

#include <string>
#include <utility>
#include <vector>

namespace qvhost {

/// The headers of an answer: its own, and those that tell a browser what it may do with it. The page runs no script and
/// no style but its own files', is shown in nobody's frame, is kept nowhere and tells nobody where it was; a note runs
/// no script at all.
std::vector<std::pair<std::string, std::string>> pageHeaders(const PageAnswer& answer);

}  // namespace qvhost
