#include "Platform/PreparationRows.h"
#include "Support/Inputs.h"
#include "Support/Photograph.h"
#include "Support/Probe.h"
#include "Support/Row.h"
#include "Support/TestImages.h"

#include <algorithm>
#include <string>

namespace benchmarksupport {

namespace {

constexpr double kBytesPerMiB = 1024 * 1024;
constexpr double kMostAboveSmall = 16;  // MiB

/// The most memory that a process holds that prepares the input, in MiB.
double memoryFor(const Input& input) {
    return memoryOfProbe(QV_BENCHMARK_MEMORY_PROBE, {pathOfInput(input).string()});
}

Row memoryOf(const Input& large) {
    const Input small{"16 x 16", "jpeg-16x16.jpg", [] { return makeJPEG(photographOfCard(16, 16), {}); }};
    Row row;
    row.rival = "file + 16 x 16";
    row.unit = "MiB";
    row.kind = "difference";
    row.ours = memoryFor(large);
    row.other = memoryFor(small) + static_cast<double>(readInput(large).size()) / kBytesPerMiB;
    row.figure = row.ours - row.other;
    row.limit = kMostAboveSmall;
    return row;
}

}  // namespace

void addPreparationMemoryRow() {
    const auto large = std::find_if(inputs().begin(), inputs().end(),
                                    [](const Input& input) { return input.file == "jpeg-420-48.jpg"; });
    addRow("memory: " + large->name, [large] { return memoryOf(*large); });
}

}  // namespace benchmarksupport
