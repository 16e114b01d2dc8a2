#pragma once

namespace benchmarksupport {

void addPreparationRows();
void addPreparationQualityRows();
void addPreparationMemoryRow();

}  // namespace benchmarksupport
