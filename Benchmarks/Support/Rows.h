#pragma once

namespace benchmarksupport {

/// Adds the program's rows, in the order of the table. Each benchmark program defines it.
void addRows();

}  // namespace benchmarksupport
