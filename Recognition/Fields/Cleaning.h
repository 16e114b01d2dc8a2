#pragma once

#include "Fields/Field.h"

#include <vector>

namespace qv::recognition {

/// What is left of a line when the words of the claims are taken out: the stretches between them, each a line of its
/// own.
std::vector<TextLine> withoutClaims(const TextLine& line, const std::vector<Claim>& claims);

/// A line without what icons and rules leave at its two ends: marks, and single letters that were hardly read. May be
/// empty.
TextLine cleaned(const TextLine& line);

/// Whether a line is worth looking at: at least two letters, read well enough to be text.
bool isText(const TextLine& line);

/// Whether a line is only the label of something else ("E-mail:", "Web", "Tel").
bool isLabelOnly(const TextLine& line);

/// Whether a line is what no field is for: a number of a register or a bank, opening hours, the year of a foundation,
/// a standard's number.
bool isSideNote(const TextLine& line);

}  // namespace qv::recognition
