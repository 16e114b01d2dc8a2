#pragma once

#include <string>
#include <vector>

namespace benchmarksupport {

/// MiB of memory that a program says it held at most, in KiB on its output. Throws `std::runtime_error` when it fails.
double memoryOfProbe(const std::string& program, const std::vector<std::string>& arguments);

}  // namespace benchmarksupport
