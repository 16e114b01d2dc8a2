#pragma once

namespace benchmarksupport {

void addParserRows();
void addParserMemoryRows();
void addTextRows();
void addNoteRows();
void addPipelineRows();

}  // namespace benchmarksupport
