#pragma once

namespace benchmarksupport {

void addParserRows();
void addTextRows();
void addNoteRows();
void addPipelineRows();

}  // namespace benchmarksupport
