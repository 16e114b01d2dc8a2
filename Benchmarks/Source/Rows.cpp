#include "Support/Rows.h"

#include "Source/SourceRows.h"

void benchmarksupport::addRows() {
    addParserRows();
    addParserMemoryRows();
    addTextRows();
    addNoteRows();
    addPipelineRows();
}
