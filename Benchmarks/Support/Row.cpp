#include "Support/Row.h"

#include <benchmark/benchmark.h>

#include <exception>

namespace benchmarksupport {

static void report(benchmark::State& state, const Row& row) {
    state.SetLabel(row.rival + "|" + row.unit + "|" + row.kind + "|" +
                   (row.rule == Row::Rule::AtLeast ? "at least" : "at most"));
    state.SetIterationTime(row.oursOnWall / 1000);
    state.counters["ours"] = row.ours;
    state.counters["other"] = row.other;
    state.counters["ours_on_wall"] = row.oursOnWall;
    state.counters["other_on_wall"] = row.otherOnWall;
    state.counters["figure"] = row.figure;
    state.counters["limit"] = row.limit;
}

void addRow(const std::string& name, const Measurement& measurement) {
    const auto run = [measurement](benchmark::State& state) {
        for (auto iteration : state) {
            static_cast<void>(iteration);
            try {
                report(state, measurement());
            } catch (const std::exception& failure) {
                state.SkipWithError(failure.what());
                return;
            }
        }
    };
    benchmark::RegisterBenchmark(name.c_str(), run)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
}

}  // namespace benchmarksupport
