#pragma once

#include "Scan/CardScan.h"

#include <optional>
#include <string>
#include <vector>

namespace qvhost {

/// What a person should know of a scan that failed in nothing and still did not give what was wanted: an answer that is
/// no recognition result, a picture without text, a back that was not read, a language that the server does not have.
/// One sentence or two each; `language` is the one that was asked for, `server` names the server in words.
std::vector<std::string> scanRemarks(const ScanOutcome& outcome, const std::optional<std::string>& language,
                                     const std::string& server);

}  // namespace qvhost
