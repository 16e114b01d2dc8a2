#pragma once

#include "QVPlatform/Error.h"
#include "QVPlatform/URL.h"

#include <optional>

/// What a status other than success means to somebody who reads or writes there. Never holds anything that the server
/// wrote, nor credentials.
qv::Error errorOfStatus(long status, const qv::URL& url, bool isWriting);

/// The answer at `url` refers to another origin (or to no address), where credentials do not go.
qv::Error elsewhere(const qv::URL& url, const std::optional<qv::URL>& target);

/// The answer at `url` is no multi-status one.
qv::Error notCardDAV(const qv::URL& url);
