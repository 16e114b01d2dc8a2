#pragma once

#include "Support/ExitStatus.h"

#include <string>
#include <string_view>

/// The program's own streams, written without a buffer in between, so that a full disk or a closed pipe is noticed
/// while there is still somebody to tell.
namespace qvhost::StandardStreams {

/// To be called first: a stream that the caller closed must not be taken by the next file that is opened, and a reader
/// that went away is a failure to write, not the end of the process.
void prepare();

/// Writes the result; says so on standard error when that fails, unless the reader went away. `Done` or `NotWritten`.
[[nodiscard]] ExitStatus writeResult(std::string_view text);

/// Writes whole lines to standard error; there is nowhere to report a failure. Any thread may call.
void writeError(std::string_view text);

/// Keeps a line at the bottom of standard error while something is waited for, below whatever else is written there;
/// an empty one takes it away. Only on a terminal. Any thread may call.
void showStatus(const std::string& line);

}  // namespace qvhost::StandardStreams
