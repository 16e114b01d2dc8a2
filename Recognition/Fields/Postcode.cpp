#include "Fields/Postcode.h"

#include "Fields/Words/Words.h"
#include "Text/Letters.h"

#include <algorithm>
#include <string_view>

namespace qv::recognition {
namespace {

/// Whether a word has a shape: 9 stands for a digit, A for a letter, everything else for itself.
bool hasShape(std::string_view word, std::string_view shape) {
    if (word.size() != shape.size()) return false;
    for (std::size_t i = 0; i < word.size(); ++i) {
        const char c = word[i];
        const bool digit = c >= '0' && c <= '9';
        const bool letter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
        if (shape[i] == '9' ? !digit : shape[i] == 'A' ? !letter : c != shape[i]) return false;
    }
    return true;
}

std::string bare(const std::string& word) {
    return trimmed(word, ".,;:()");
}

bool isPlace(const std::vector<std::string>& words, std::size_t i) {
    if (i >= words.size()) return false;
    const auto points = codePoints(words[i]);
    return countLetters(words[i]) >= 2 && countDigits(words[i]) == 0 && isCapital(points.front());
}

bool isBritish(const std::string& first, const std::string& second) {
    const bool inward = hasShape(second, "9AA");
    if (!inward || !isAllCapitals(first)) return false;
    for (const std::string_view shape : {"A9", "A99", "AA9", "AA99", "A9A", "AA9A"}) {
        if (hasShape(first, shape)) return true;
    }
    return false;
}

bool isCountryPrefixed(const std::string& word) {
    for (const std::string_view shape : {"A-99999", "A-9999", "AA-9999", "AA-99999", "AA-999", "A-999"}) {
        if (hasShape(word, shape) && isAllCapitals(word)) return true;
    }
    return false;
}

bool isState(const std::vector<std::string>& words, std::size_t i) {
    if (i >= words.size()) return false;
    const std::string word = bare(words[i]);
    return words::isState(folded(word)) && (word.size() > 3 || isAllCapitals(word));
}

float evidenceAt(const std::vector<std::string>& words, std::size_t i) {
    const std::string word = bare(words[i]);
    const std::string next = i + 1 < words.size() ? bare(words[i + 1]) : std::string();
    const bool five = hasShape(word, "99999");
    if ((five || hasShape(word, "99999-9999")) && i > 0 && isState(words, i - 1)) return 1.F;
    if (isBritish(word, next) || (hasShape(word, "A9A") && hasShape(next, "9A9"))) return 1.F;
    if (isCountryPrefixed(word)) return isPlace(words, i + 1) ? 1.F : 0.5F;
    const bool dutch = hasShape(word, "9999") && hasShape(next, "AA") && isAllCapitals(next);
    if (dutch) return isPlace(words, i + 2) || (i > 0 && isPlace(words, i - 1)) ? 0.8F : 0.4F;
    if (hasShape(word, "9999AA") && isAllCapitals(word)) return 0.8F;
    if (hasShape(word, "9999") && i > 0 && isState(words, i - 1)) return 0.8F;
    if (five && isPlace(words, i + 1)) return 0.85F;
    if (hasShape(word, "99-999") || hasShape(word, "9999-999")) return isPlace(words, i + 1) ? 0.9F : 0.5F;
    if (hasShape(word, "99999-999")) return isPlace(words, i + 1) ? 0.9F : 0.6F;
    if (hasShape(word, "99999-9999")) return 0.6F;
    if (hasShape(word, "999-9999")) return i > 0 && countLetters(words[i - 1]) >= 3 ? 0.6F : 0.F;
    if (startsWith(word, "〒")) return 0.9F;
    if (hasShape(word, "999") && hasShape(next, "99") && isPlace(words, i + 2)) return 0.6F;
    if (hasShape(word, "9999") && isPlace(words, i + 1)) return 0.45F;
    const bool last = i + 1 == words.size() && i > 0 && countLetters(words[i - 1]) >= 2;
    if (last && (five || hasShape(word, "999999"))) return 0.6F;
    return 0;
}

}  // namespace

float postcodeEvidence(const std::vector<std::string>& words) {
    float best = 0;
    for (std::size_t i = 0; i < words.size(); ++i)
        best = std::max(best, evidenceAt(words, i));
    return best;
}

bool startsPostcode(const std::vector<std::string>& words, std::size_t index) {
    // Short local numbers have the Japanese shape, too.
    return evidenceAt(words, index) >= 0.6F && !hasShape(bare(words[index]), "999-9999");
}

std::string postcodeCountry(const std::vector<std::string>& words) {
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string word = bare(words[i]);
        const std::string next = i + 1 < words.size() ? bare(words[i + 1]) : std::string();
        if (isBritish(word, next)) return "GB";
        if (hasShape(word, "A9A") && hasShape(next, "9A9")) return "CA";
        if (hasShape(word, "99999-9999") || (hasShape(word, "99999") && i > 0 && isState(words, i - 1))) return "US";
        if (hasShape(word, "9999") && i > 0 && isState(words, i - 1)) return "AU";
        if (hasShape(word, "9999") && hasShape(next, "AA") && isAllCapitals(next)) return "NL";
        if (hasShape(word, "99-999") && isPlace(words, i + 1)) return "PL";
        if (hasShape(word, "9999-999") && isPlace(words, i + 1)) return "PT";
    }
    return {};
}

}  // namespace qv::recognition
