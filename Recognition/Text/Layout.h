#pragma once

#include "Text/TextLine.h"

#include <vector>

namespace qv::recognition {

/// Lines from geometry alone: words on one baseline, close to each other and of like size, form a line; a wide gap, a
/// bullet or bar between words, or a jump in type size starts another. Letter-spaced words come back whole. The order
/// is that of reading: from top to bottom, from left to right in a row.
std::vector<TextLine> arrange(std::vector<Word> words);

/// Whether a word is only a mark that separates what stands on its two sides ("|", "•").
bool isSeparator(const Word& word);

/// Whether two lines are one above the other in the same column: the lower one begins, ends or is centred where the
/// upper one does, and no more than a line's height lies between them. `upper` has to be the higher one.
bool followsInColumn(const TextLine& upper, const TextLine& lower);

}  // namespace qv::recognition
