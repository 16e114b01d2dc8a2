#include "Text/TextLine.h"

#include "Text/Letters.h"

#include <algorithm>
#include <utility>

namespace qv::recognition {
namespace {

// Shares of a capital's height, as in most book and display faces.
constexpr float kSmallLetter = 0.70F;
constexpr float kBelow = 0.28F;

bool anyOf(std::u32string_view text, std::u32string_view letters) {
    return text.find_first_of(letters) != std::u32string_view::npos;
}

bool rises(std::u32string_view text) {
    return anyOf(text, U"bdfhiklt0123456789|/()[]@&#!?") ||
           std::any_of(text.begin(), text.end(), [](char32_t c) { return isCapital(c) || isEastAsian(c); });
}

bool hangs(std::u32string_view text) {
    return anyOf(text, U"gjpqyQ,;()[]@/|çş");
}

float weightOf(const Word& word) {
    return static_cast<float>(std::max(1, length(word.text)));
}

}  // namespace

float typeSize(const Word& word) {
    const auto text = codePoints(word.text);
    const float height = (rises(text) ? 1.F : kSmallLetter) + (hangs(text) ? kBelow : 0.F);
    const bool onlyMarks = std::none_of(text.begin(), text.end(), [](char32_t c) { return isLetter(c) || isDigit(c); });
    return onlyMarks ? word.box.h : word.box.h / height;
}

std::string TextLine::text() const {
    std::string joined;
    for (const auto& word : words)
        joined += joined.empty() ? word.text : ' ' + word.text;
    return joined;
}

float TextLine::confidence() const {
    float sum = 0;
    float letters = 0;
    for (const auto& word : words) {
        sum += word.confidence * weightOf(word);
        letters += weightOf(word);
    }
    return letters > 0 ? sum / letters : 0;
}

TextLine makeLine(std::vector<Word> words) {
    TextLine line;
    std::vector<std::pair<float, float>> sizes;
    float letters = 0;
    for (const auto& word : words) {
        line.box = united(line.box, word.box);
        sizes.emplace_back(typeSize(word), weightOf(word));
        letters += weightOf(word);
    }
    std::sort(sizes.begin(), sizes.end());
    float seen = 0;
    for (const auto& [size, weight] : sizes) {
        line.size = size;
        seen += weight;
        if (seen * 2 >= letters) break;
    }
    line.words = std::move(words);
    return line;
}

}  // namespace qv::recognition
