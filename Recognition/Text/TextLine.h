#pragma once

#include "Text/Word.h"

#include <string>
#include <vector>

namespace qv::recognition {

/// Words that stand side by side on one baseline and belong together. `size` is the height of the type (of a capital)
/// in pixels, whether or not the line holds a capital.
struct TextLine {
    std::vector<Word> words;
    Box box;
    float size = 0;

    /// The words joined with single spaces.
    std::string text() const;
    /// How sure the engine is of the line: the mean over its letters, 0–100.
    float confidence() const;
};

/// The height of a capital in the type this word is set in, judged from its box and from which of its letters rise
/// above or hang below the others.
float typeSize(const Word& word);

/// A line of these words, in their order: box and size follow from them.
TextLine makeLine(std::vector<Word> words);

}  // namespace qv::recognition
