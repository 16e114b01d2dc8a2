#pragma once

#include <fstream>
#include <string>

namespace benchmarksupport {

/// The most memory that this process ever held, in KiB; 0 when the system does not tell. For programs that are measured
/// and therefore load nothing else of this folder.
inline long peakMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.rfind("VmHWM:", 0) == 0) return std::stol(line.substr(6));
    }
    return 0;
}

}  // namespace benchmarksupport
