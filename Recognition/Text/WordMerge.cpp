#include "Text/WordMerge.h"

#include "Text/Letters.h"

#include <algorithm>

namespace qv::recognition {
namespace {

constexpr float kSamePlace = 0.4F;  // share of the smaller box that two readings of a word have in common
constexpr float kWorthAdding = 60;
constexpr float kSurer = 6;
constexpr float kPlain = 75;

int signs(const std::string& text) {
    return countLetters(text) + countDigits(text);
}

bool samePlace(const Word& a, const Word& b) {
    return overlapArea(a.box, b.box) > kSamePlace * std::min(a.box.area(), b.box.area());
}

std::vector<std::size_t> inPlaceOf(const std::vector<Word>& words, const Word& word) {
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (samePlace(words[i], word)) found.push_back(i);
    }
    return found;
}

float meanConfidence(const std::vector<Word>& words, const std::vector<std::size_t>& which) {
    float sum = 0;
    float letters = 0;
    for (const std::size_t i : which) {
        const auto count = static_cast<float>(std::max(1, length(words[i].text)));
        sum += words[i].confidence * count;
        letters += count;
    }
    return letters > 0 ? sum / letters : 0;
}

Box around(const std::vector<Word>& words, const std::vector<std::size_t>& which) {
    Box box;
    for (const std::size_t i : which)
        box = united(box, words[i].box);
    return box;
}

bool coversAlike(const Box& a, const Box& b) {
    return overlapX(a, b) > 0.75F * std::max(a.w, b.w);
}

void eraseAll(std::vector<Word>& words, const std::vector<std::size_t>& which) {
    for (auto i = which.rbegin(); i != which.rend(); ++i)
        words.erase(words.begin() + static_cast<std::ptrdiff_t>(*i));
}

void mergeInto(std::vector<Word>& words, const Word& word) {
    const auto others = inPlaceOf(words, word);
    if (others.empty()) {
        if (word.confidence >= kWorthAdding && signs(word.text) >= 2) words.push_back(word);
        return;
    }
    const bool surer = word.confidence > meanConfidence(words, others) + kSurer;
    if (!surer || signs(word.text) == 0 || !coversAlike(around(words, others), word.box)) return;
    eraseAll(words, others);
    words.push_back(word);
}

}  // namespace

std::vector<Word> merged(std::vector<Word> first, const std::vector<Word>& second) {
    for (const auto& word : second)
        mergeInto(first, word);
    return first;
}

int plainLetters(const std::vector<Word>& words) {
    int sum = 0;
    for (const auto& word : words) {
        const int count = signs(word.text);
        if (count >= 3 && word.confidence >= kPlain && count * 4 >= length(word.text) * 3) sum += count;
    }
    return sum;
}

}  // namespace qv::recognition
