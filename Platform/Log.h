#pragma once

#include "Export.h"
#include "Format.h"

#include <functional>
#include <string>
#include <string_view>

namespace qv {

/// The system log, behind a sink that the host can replace. Without a sink of the host's, messages go to syslog(3) with
/// the priority that their bracketed tag names. Any thread may log; a sink is called on the thread that logs, one call
/// per message, several at once. What it throws is dropped. It may call the library; what that would log meanwhile on
/// the sink's own thread is dropped, so that a sink never calls itself. A sink that blocks holds up whoever logs.
class QV_EXPORT Log {
  public:
    /// Gets one message; on the thread that logs.
    using Sink = std::function<void(std::string_view message)>;

    /// Replaces the sink. An empty function discards everything, before it is even formatted.
    static void setSink(Sink sink);

    /// Back to syslog(3).
    static void useSystemLog();

    /// Whether anybody listens.
    static bool isEnabled();

    /// One message, as it is.
    static void write(std::string_view message);

    /// One message filled by position (see `qv::format`); arguments are described only if anybody listens.
    template <typename First, typename... Rest>
    static void write(std::string_view format, const First& first, const Rest&... rest) {
        if (isEnabled()) write(qv::format(format, first, rest...));
    }
};

}  // namespace qv
