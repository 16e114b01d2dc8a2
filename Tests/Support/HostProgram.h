#pragma once

#include "Support/RunProcess.h"

#include <string>
#include <string_view>
#include <vector>

namespace testsupport {

/// The program `qvcardscan` as it was built, without any of its variables in the environment.
ProcessCall hostCall(std::vector<std::string> arguments);

/// Runs it with these arguments.
ProcessResult runHost(std::vector<std::string> arguments);

/// A file of the host's test data.
std::string hostData(std::string_view name);

/// The program that stands in for the recognition server.
std::string fakeRecognizer();

}  // namespace testsupport
