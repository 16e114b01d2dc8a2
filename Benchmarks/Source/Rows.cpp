#include "Support/Rows.h"

#include "Source/SourceRows.h"

void benchmarksupport::addRows() {
    addParserRows();
    addTextRows();
    addNoteRows();
    addPipelineRows();
}
