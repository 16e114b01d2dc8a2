#pragma once

#include "QVPlatform/HTTPClient.h"

#include <string>
#include <string_view>

namespace qv {

/// Letters A to Z in lower case, whatever the locale.
std::string lowerCaseASCII(std::string_view text);

/// Whether two header names are the same to HTTP.
bool isSameHeaderName(std::string_view a, std::string_view b);

/// Whether the method and all headers can stand in a request without breaking out of their lines.
bool hasSoundHead(const HTTPRequest& request);

bool hasHeader(const HTTPRequest& request, std::string_view name);

}  // namespace qv
