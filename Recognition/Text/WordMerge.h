#pragma once

#include "Text/Word.h"

#include <vector>

namespace qv::recognition {

/// Two readings of the same picture as one. Where both have a word in one place the surer one stays; where one reading
/// has a word broken up or glued together, the way that was read more surely; what only `second` has is added when it
/// was read well. The reading that is not taken stays beside the word. `margin` is by how much the second reading has
/// to be surer: more where its engine does not know the card's language.
std::vector<Word> merged(std::vector<Word> first, const std::vector<Word>& second, float margin = 6);

/// How much was plainly read: letters and digits in words of some length that the engine is sure of. Tells a picture
/// that stands upright from one that does not.
int plainLetters(const std::vector<Word>& words);

}  // namespace qv::recognition
