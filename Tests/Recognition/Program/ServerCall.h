#pragma once

#include "Support/RunProcess.h"

#include <string>
#include <utility>
#include <vector>

namespace qv::recognition {

/// The server's program, called in a way that it refuses: it would go on for ever otherwise.
inline testsupport::ProcessResult callServer(std::vector<std::string> arguments) {
    testsupport::ProcessCall call;
    call.program = std::string(QV_BINARY_DIR) + "/bin/qvcardrecod";
    call.arguments = std::move(arguments);
    return testsupport::runProcess(call);
}

}  // namespace qv::recognition
