#include "Text/SurestLines.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

namespace qv::recognition {
namespace {

// Three times what was read on any card that was measured, and more.
constexpr std::size_t kMostLines = 60;
constexpr std::size_t kMostWords = 200;
constexpr std::size_t kLongestLine = 40;  // words

std::vector<std::size_t> bySureness(const std::vector<TextLine>& lines) {
    std::vector<float> sureness;
    sureness.reserve(lines.size());
    for (const auto& line : lines)
        sureness.push_back(line.confidence());
    std::vector<std::size_t> order(lines.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&sureness](std::size_t a, std::size_t b) { return sureness[a] > sureness[b]; });
    return order;
}

}  // namespace

std::vector<TextLine> surestLines(std::vector<TextLine> lines) {
    std::vector<std::size_t> kept;
    std::size_t words = 0;
    for (const std::size_t i : bySureness(lines)) {
        const std::size_t length = lines[i].words.size();
        if (kept.size() >= kMostLines || length > kLongestLine || words + length > kMostWords) continue;
        words += length;
        kept.push_back(i);
    }
    std::sort(kept.begin(), kept.end());
    std::vector<TextLine> result;
    result.reserve(kept.size());
    for (const std::size_t i : kept)
        result.push_back(std::move(lines[i]));
    return result;
}

}  // namespace qv::recognition
