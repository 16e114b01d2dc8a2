#include "Support/NearMiss.h"

#include <algorithm>
#include <cstddef>

namespace qvhost {
namespace {

constexpr std::size_t kLongestName = 40;

/// A letter's case and the hyphens of an option are what is forgotten most easily.
std::string letters(std::string_view name) {
    std::string result;
    for (const char c : name) {
        if (c == '-' || c == '_') continue;
        result += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return result;
}

/// Letters to change, drop, add or exchange with their neighbour until one word is the other.
std::size_t slips(std::string_view from, std::string_view to) {
    std::vector<std::vector<std::size_t>> cost(from.size() + 1, std::vector<std::size_t>(to.size() + 1));
    for (std::size_t i = 0; i <= from.size(); ++i) {
        for (std::size_t k = 0; k <= to.size(); ++k) {
            if (i == 0 || k == 0) {
                cost[i][k] = i + k;
                continue;
            }
            const std::size_t changed = cost[i - 1][k - 1] + (from[i - 1] == to[k - 1] ? 0 : 1);
            cost[i][k] = std::min({changed, cost[i - 1][k] + 1, cost[i][k - 1] + 1});
            if (i > 1 && k > 1 && from[i - 1] == to[k - 2] && from[i - 2] == to[k - 1])
                cost[i][k] = std::min(cost[i][k], cost[i - 2][k - 2] + 1);
        }
    }
    return cost[from.size()][to.size()];
}

bool isBeginning(const std::string& word, const std::string& name) {
    return word.size() >= 2 && name.starts_with(word);
}

}  // namespace

std::optional<std::string> nearMiss(std::string_view word, const std::vector<std::string>& names) {
    if (word.size() > kLongestName) return std::nullopt;
    const std::string typed = letters(word);
    std::optional<std::string> best;
    // A third of the letters wrong is no slip any more.
    std::size_t fewest = typed.size() / 3 + 1;
    for (const std::string& name : names) {
        const std::string meant = letters(name);
        const std::size_t count = isBeginning(typed, meant) ? 0 : slips(typed, meant);
        if (meant.size() < 2 || count >= fewest) continue;
        fewest = count;
        best = name;
    }
    return best;
}

}  // namespace qvhost
