#include "Support/Rows.h"

#include "Platform/PreparationRows.h"
#include "Support/Vips.h"

void benchmarksupport::addRows() {
    vips::start();
    addPreparationRows();
    addPreparationQualityRows();
    addPreparationMemoryRow();
}
