#include "Source/SourceRows.h"
#include "Support/Probe.h"
#include "Support/Row.h"

#include <string>

namespace benchmarksupport {

namespace {

/// An answer twice as long may take two and a half times the memory.
void addRowOf(const std::string& what, const std::string& kind, std::size_t half) {
    addRow("memory: parse " + what, [kind, half] {
        const auto memory = [&](std::size_t count) {
            return memoryOfProbe(QV_BENCHMARK_PARSE_PROBE, {kind, std::to_string(count)});
        };
        const double alone = memory(0);
        Row row;
        row.rival = "half of it";
        row.unit = "MiB";
        row.ours = memory(2 * half) - alone;
        row.other = memory(half) - alone;
        row.figure = row.ours / row.other;
        row.limit = 2.5;
        return row;
    });
}

}  // namespace

void addParserMemoryRows() {
    addRowOf("a million bare items", "items", 500'000);
    addRowOf("8 MiB in one-byte chunks", "chunks", std::size_t{4} << 20);
}

}  // namespace benchmarksupport
