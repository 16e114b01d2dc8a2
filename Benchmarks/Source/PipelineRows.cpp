#include "Source/SourceRows.h"

namespace benchmarksupport {
void addPipelineRows() {
}
}  // namespace benchmarksupport
