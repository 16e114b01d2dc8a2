#pragma once

namespace qvhost::HostLog {

/// Where the library's log goes: nowhere, so that card text stays out of the system log and off the terminal; to
/// standard error when `wanted`, or when the environment variable QVCARDSCAN_LOG is set and not 0.
void install(bool wanted);

/// Whether it goes to standard error.
bool isWanted();

}  // namespace qvhost::HostLog
