#pragma once

namespace benchmarksupport {

/// Milliseconds of processor time that the threads of this process have spent in preparing pictures so far.
double preparationSoFar();

}  // namespace benchmarksupport
