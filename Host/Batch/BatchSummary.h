#pragma once

#include "Batch/BatchInputs.h"
#include "Batch/BatchRun.h"

#include <cstddef>
#include <filesystem>
#include <string>

namespace qvhost {

/// What came of a batch, in lines for a terminal: counts, a line for each failure, remarks once, where the lists are,
/// how to go on.
std::string summary(const BatchOutcome& outcome, const BatchInputs& inputs, std::size_t finished,
                    const std::filesystem::path& folder);

/// Why there is no picture at all among what was named.
Failure nothingToRead(const BatchInputs& inputs);

}  // namespace qvhost
