#pragma once

#include "Text/Letters.h"
#include "Text/TextLine.h"

#include <string>
#include <vector>

namespace qv::recognition {

/// A line as if it had been read: words side by side, `size` pixels high and about as wide as printed ones.
inline TextLine lineAt(const std::string& text, float x, float y, float size = 30, float confidence = 95) {
    std::vector<Word> words;
    for (const auto& part : splitAtSpaces(text)) {
        const float width = static_cast<float>(length(part)) * size * 0.7F;
        words.push_back({part, {x, y, width, size}, confidence, {}});
        x += width + size * 0.4F;
    }
    return makeLine(words);
}

inline TextLine lineOf(const std::string& text) {
    return lineAt(text, 100, 100);
}

inline std::vector<Word> wordsOf(const std::vector<TextLine>& lines) {
    std::vector<Word> words;
    for (const auto& line : lines)
        words.insert(words.end(), line.words.begin(), line.words.end());
    return words;
}

}  // namespace qv::recognition
