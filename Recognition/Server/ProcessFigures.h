#pragma once

#include <optional>

namespace qv::recognition {

/// What this process takes of its machine; each is absent where the system does not tell.
struct ProcessFigures {
    std::optional<double> heapBytes;  ///< memory that was asked for and not given back
    std::optional<double> residentBytes;
    std::optional<double> virtualBytes;
    std::optional<double> processorSeconds;
    std::optional<double> startTime;  ///< seconds since the beginning of 1970
    std::optional<double> openFiles;
    std::optional<double> mostFiles;
};

ProcessFigures processFigures();

}  // namespace qv::recognition
