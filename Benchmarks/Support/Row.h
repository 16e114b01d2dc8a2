#pragma once

#include <functional>
#include <string>

/// The table's rows. Each is a benchmark of its own, so that `--benchmark_filter` chooses among them; its figures are
/// the benchmark's counters, which `./bench` puts together.
namespace benchmarksupport {

struct Row {
    enum class Rule { AtLeast, AtMost };

    /// What the other is: "libvips", "floor"; empty when there is none.
    std::string rival;
    /// Both sides' values, in `unit`; times are processor times of the whole process.
    double ours = 0;
    double other = 0;
    std::string unit = "ms";
    /// Times on the wall's clock in milliseconds; 0 where none is meant.
    double oursOnWall = 0;
    double otherOnWall = 0;
    /// What the limit is about: "ratio" or "difference" of the values, or our "value" itself.
    std::string kind = "ratio";
    double figure = 0;
    Rule rule = Rule::AtMost;
    double limit = 0;
};

/// Measures once and returns a row.
using Measurement = std::function<Row()>;

/// Adds a row; call before the benchmarks are run.
void addRow(const std::string& name, const Measurement& measurement);

}  // namespace benchmarksupport
