#pragma once

#include "Export.h"

#include <chrono>
#include <optional>
#include <string_view>

namespace qv {

/// In whole seconds, because a finer count ends in the year 2262, long before the dates that servers may send.
using HTTPDate = std::chrono::time_point<std::chrono::system_clock, std::chrono::seconds>;

/// The moment that a date in an HTTP header names (RFC 9110, 5.6.7, in any of its three forms). Nothing when the text
/// is no date.
QV_EXPORT std::optional<HTTPDate> dateFromHTTPHeader(std::string_view text);

}  // namespace qv
