#include "Text/Layout.h"

#include "Text/Letters.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace qv::recognition {
namespace {

constexpr float kSameRow = 0.5F;    // share of the smaller height that two words of a row have in common
constexpr float kWideGap = 1.55F;   // in type sizes: further apart than this is another line
constexpr float kWideSpace = 2.0F;  // in letters' widths, likewise
constexpr float kIdeographicSpace = 0.3F;
constexpr float kKoreanSpace = 0.16F;
constexpr float kTopJump = 0.15F;
constexpr float kSizeJump = 1.45F;     // from one word to the next, within a line
constexpr float kColumnEdge = 0.9F;    // in type sizes
constexpr float kLineDistance = 1.9F;  // in type sizes, from one line's bottom to the next line's top

using Row = std::vector<Word>;

bool inRow(const Row& row, const Word& word) {
    const auto& last = row.back();
    const float common = overlapY(last.box, word.box);
    return common >= kSameRow * std::min(last.box.h, word.box.h) && common >= 0.3F * std::max(last.box.h, word.box.h);
}

float gap(const Word& left, const Word& right) {
    return right.box.x - left.box.right();
}

/// The row whose last word stands closest to the left of this one.
Row* closestRow(std::vector<Row>& rows, const Word& word) {
    Row* closest = nullptr;
    for (auto& row : rows) {
        if (!inRow(row, word)) continue;
        if (closest == nullptr || std::abs(gap(row.back(), word)) < std::abs(gap(closest->back(), word)))
            closest = &row;
    }
    return closest;
}

std::vector<Row> rowsOf(std::vector<Word> words) {
    std::sort(words.begin(), words.end(), [](const Word& a, const Word& b) { return a.box.x < b.box.x; });
    std::vector<Row> rows;
    for (auto& word : words) {
        if (Row* row = closestRow(rows, word)) {
            row->push_back(std::move(word));
        } else {
            rows.push_back({std::move(word)});
        }
    }
    return rows;
}

bool isSpaced(const Row& row) {
    const auto single = std::count_if(row.begin(), row.end(), [](const Word& word) { return length(word.text) == 1; });
    return row.size() >= 4 && single * 5 >= static_cast<std::ptrdiff_t>(row.size()) * 4;
}

/// The gap that parts words in a row of single letters: well above the usual one.
float letterGap(const Row& row) {
    std::vector<float> gaps;
    for (std::size_t i = 1; i < row.size(); ++i)
        gaps.push_back(gap(row[i - 1], row[i]));
    std::nth_element(gaps.begin(), gaps.begin() + static_cast<std::ptrdiff_t>(gaps.size() / 2), gaps.end());
    return gaps[gaps.size() / 2];
}

void append(Word& word, const Word& letter) {
    const auto count = static_cast<float>(length(word.text));
    word.confidence = (word.confidence * count + letter.confidence) / (count + 1);
    word.text += letter.text;
    word.box = united(word.box, letter.box);
}

Row closedUp(const Row& row) {
    const float usual = letterGap(row);
    const float size = typeSize(row.front());
    Row closed;
    for (std::size_t i = 0; i < row.size(); ++i) {
        const bool continues = i > 0 && gap(row[i - 1], row[i]) < std::max(usual * 1.7F, usual + size * 0.4F);
        if (continues) {
            append(closed.back(), row[i]);
        } else {
            closed.push_back(row[i]);
        }
    }
    return closed;
}

/// Old-style figures, marks and lone letters say little about the size of the type around them.
bool showsSize(const Word& word) {
    const auto points = codePoints(word.text);
    const auto letters = std::count_if(points.begin(), points.end(), isLetter);
    return letters >= 2 && letters + 1 >= static_cast<std::ptrdiff_t>(points.size());
}

/// Letter-spaced type has wide spaces, too.
float advance(const Word& word) {
    const int letters = length(word.text);
    return letters >= 3 ? word.box.w / static_cast<float>(letters) : 0;
}

bool parts(const Word& left, const Word& right) {
    const float sizeLeft = typeSize(left);
    const float sizeRight = typeSize(right);
    const float wide =
        std::max(kWideGap * std::max(sizeLeft, sizeRight), kWideSpace * std::min(advance(left), advance(right)));
    if (gap(left, right) > wide) return true;
    // An underline makes a word's box higher at the bottom only; larger type is higher at the top.
    const bool tops = std::abs(left.box.y - right.box.y) > kTopJump * std::max(sizeLeft, sizeRight);
    return tops && showsSize(left) && showsSize(right) &&
           std::max(sizeLeft, sizeRight) > kSizeJump * std::min(sizeLeft, sizeRight);
}

/// Chinese and Japanese are written without spaces, and the engine parts them where it likes; Korean has spaces, but
/// narrow ones are the engine's.
bool continuesScript(const Word& left, const Word& right) {
    const auto last = codePoints(left.text).back();
    const auto first = codePoints(right.text).front();
    if (!isEastAsian(last) || !isEastAsian(first)) return false;
    const float space = isHangul(last) || isHangul(first) ? kKoreanSpace : kIdeographicSpace;
    return gap(left, right) < space * std::max(typeSize(left), typeSize(right));
}

Row withoutScriptGaps(const Row& row) {
    Row joined;
    for (const auto& word : row) {
        if (!joined.empty() && continuesScript(joined.back(), word)) {
            append(joined.back(), word);
        } else {
            joined.push_back(word);
        }
    }
    return joined;
}

void addLines(const Row& row, std::vector<TextLine>& lines) {
    std::vector<Word> current;
    const auto finish = [&] {
        if (!current.empty()) lines.push_back(makeLine(std::exchange(current, {})));
    };
    const Row whole = withoutScriptGaps(row);
    for (const auto& word : isSpaced(whole) ? closedUp(whole) : whole) {
        if (isSeparator(word)) {
            finish();
            continue;
        }
        if (!current.empty() && parts(current.back(), word)) finish();
        current.push_back(word);
    }
    finish();
}

bool readsBefore(const TextLine& a, const TextLine& b) {
    return a.box.y != b.box.y ? a.box.y < b.box.y : a.box.x < b.box.x;
}

}  // namespace

bool isSeparator(const Word& word) {
    static const std::vector<std::string> marks = {"|", "•", "·", "»", "«", "||", "¦", "●",
                                                   "■", "▪", "*", "~", "/", "\\", "—", "–"};
    return std::find(marks.begin(), marks.end(), word.text) != marks.end();
}

std::vector<TextLine> arrange(std::vector<Word> words) {
    std::vector<TextLine> lines;
    for (const auto& row : rowsOf(std::move(words)))
        addLines(row, lines);
    std::stable_sort(lines.begin(), lines.end(), readsBefore);
    return lines;
}

bool followsInColumn(const TextLine& upper, const TextLine& lower) {
    const float size = std::max(upper.size, lower.size);
    const float distance = lower.box.y - upper.box.bottom();
    if (distance > kLineDistance * std::min(upper.size, lower.size) || distance < -0.5F * size) return false;
    const float edge = kColumnEdge * size;
    return std::abs(upper.box.x - lower.box.x) < edge || std::abs(upper.box.right() - lower.box.right()) < edge ||
           std::abs(upper.box.centreX() - lower.box.centreX()) < edge;
}

}  // namespace qv::recognition
