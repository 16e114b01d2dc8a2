#include "Text/WordMerge.h"

#include "Text/Letters.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace qv::recognition {
namespace {

constexpr float kSamePlace = 0.4F;  // share of the smaller box that two readings of a word have in common
constexpr float kWorthAdding = 60;
constexpr float kPlain = 75;
constexpr float kStroke = 15;
constexpr float kAddress = 60;

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

/// Some languages' models know no "@" and write letters in its place, and are sure of them.
bool holdsAddress(const std::string& text) {
    const auto at = text.find('@');
    return at != std::string::npos && at > 0 && text.find('.', at) != std::string::npos;
}

/// Strokes of a drawing that the engine took for signs at a word's edge speak against the rest of its reading.
float trust(const Word& word) {
    static constexpr std::string_view strokes = "\\|_~`{}=";
    const bool touched = strokes.find(word.text.front()) != std::string_view::npos ||
                         strokes.find(word.text.back()) != std::string_view::npos;
    return word.confidence - (touched ? kStroke : 0.F) + (holdsAddress(word.text) ? kAddress : 0.F);
}

void addReading(Word& word, const std::string& text) {
    if (text != word.text && std::find(word.others.begin(), word.others.end(), text) == word.others.end())
        word.others.push_back(text);
}

float meanTrust(const std::vector<Word>& words, const std::vector<std::size_t>& which) {
    float sum = 0;
    float letters = 0;
    for (const std::size_t i : which) {
        const auto count = static_cast<float>(std::max(1, length(words[i].text)));
        sum += trust(words[i]) * count;
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

void mergeInto(std::vector<Word>& words, const Word& word, float margin) {
    const auto others = inPlaceOf(words, word);
    if (others.empty()) {
        if (word.confidence >= kWorthAdding && signs(word.text) >= 2) words.push_back(word);
        return;
    }
    if (signs(word.text) == 0 || !coversAlike(around(words, others), word.box)) return;
    if (trust(word) <= meanTrust(words, others) + margin) {
        if (others.size() == 1) addReading(words[others.front()], word.text);
        return;
    }
    Word better = word;
    if (others.size() == 1) {
        for (const auto& reading : words[others.front()].others)
            addReading(better, reading);
        addReading(better, words[others.front()].text);
    }
    eraseAll(words, others);
    words.push_back(std::move(better));
}

}  // namespace

std::vector<Word> merged(std::vector<Word> first, const std::vector<Word>& second, float margin) {
    for (const auto& word : second)
        mergeInto(first, word, margin);
    return first;
}

int plainLetters(const std::vector<Word>& words) {
    int sum = 0;
    for (const auto& word : words) {
        const int count = signs(word.text);
        const bool speaks = count >= 3 || (count == 2 && isEastAsian(codePoints(word.text).front()));
        if (speaks && word.confidence >= kPlain && count * 4 >= length(word.text) * 3) sum += count;
    }
    return sum;
}

}  // namespace qv::recognition
