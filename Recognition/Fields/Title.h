#pragma once

#include "Text/TextLine.h"

#include <string>

namespace qv::recognition {

/// How much a line looks like what a person does in a firm, 0 to 1; 0.5 and more is a likely title.
float titleEvidence(const TextLine& line);

/// Whether a folded word names an occupation, also as the end of a compound ("gebietsverkaufsleiter").
bool isTitleWord(const std::string& word);

}  // namespace qv::recognition
