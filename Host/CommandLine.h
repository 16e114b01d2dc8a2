#pragma once

#include "Support/ExitStatus.h"

namespace qvhost {

/// Reads the program's arguments and does what they ask for.
ExitStatus runCommandLine(int argumentCount, const char* const* arguments);

}  // namespace qvhost
