#include "Support/Probe.h"

#include "Support/RunProcess.h"

#include <stdexcept>

double benchmarksupport::memoryOfProbe(const std::string& program, const std::vector<std::string>& arguments) {
    constexpr double kKiBPerMiB = 1024;
    testsupport::ProcessCall probe;
    probe.program = program;
    probe.arguments = arguments;
    const auto result = testsupport::runProcess(probe);
    if (result.status != 0) throw std::runtime_error("the memory probe failed");
    return std::stod(result.output) / kKiBPerMiB;
}
