#pragma once

#include "QVPlatform/HTTPClient.h"

#include <optional>

namespace qv {

/// Whether the client speaks with such an address at all: http or https, and a host.
bool isSupportedURL(const URL& url);

/// Whether the answer sends the client elsewhere.
bool isRedirect(const HTTPResponse& response);

/// The request that follows from `request` and the redirect that answered it; nothing when it leads to an address that
/// is not allowed.
std::optional<HTTPRequest> redirectedRequest(HTTPRequest request, const HTTPResponse& response);

}  // namespace qv
