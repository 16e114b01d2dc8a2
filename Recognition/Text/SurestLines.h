#pragma once

#include "Text/TextLine.h"

#include <vector>

namespace qv::recognition {

/// As many of these lines as a card can hold, in their order: the ones read most surely. A line longer than any on a
/// card is left out. What is decided of lines compares them with each other, so their number bounds the time it takes.
std::vector<TextLine> surestLines(std::vector<TextLine> lines);

}  // namespace qv::recognition
