#include "Fields/Name.h"

#include "Fields/EastAsian.h"
#include "Fields/Words/Words.h"
#include "Text/Letters.h"

#include <algorithm>
#include <vector>

namespace qv::recognition {
namespace {

constexpr float kImpossible = -1;
constexpr std::string_view kPunctuation = ".,;:()\"";

/// The words of a line told apart into what a name is made of.
struct Parts {
    std::vector<std::string> core;  ///< as printed
    int honorifics = 0;
    int postNominals = 0;
    int particles = 0;
};

Parts partsOf(const std::string& text) {
    Parts parts;
    for (const auto& word : splitAtSpaces(text)) {
        const std::string key = folded(trimmed(word, kPunctuation));
        if (key.empty()) continue;
        const bool initial = length(key) == 1;
        if (!initial && words::isHonorific(key) && parts.core.empty()) {
            ++parts.honorifics;
        } else if (!initial && words::isPostNominal(key) && !parts.core.empty()) {
            ++parts.postNominals;
        } else if (!initial && words::isParticle(key) && folded(word) == word) {
            ++parts.particles;
        } else {
            parts.core.push_back(trimmed(word, kPunctuation));
        }
    }
    return parts;
}

bool isNameWord(const std::string& word) {
    const auto points = codePoints(word);
    return std::all_of(points.begin(), points.end(),
                       [](char32_t c) { return isLetter(c) || c == U'-' || c == U'\'' || c == U'’' || c == U'.'; });
}

bool startsSmall(const std::string& word) {
    const auto points = codePoints(word);
    return isLetter(points.front()) && !isCapital(points.front()) && !isEastAsian(points.front());
}

float byCount(std::size_t words) {
    static constexpr float shares[] = {kImpossible, 0.F, 0.35F, 0.3F, 0.1F};
    return words < std::size(shares) ? shares[words] : kImpossible;
}

float byCapitals(const std::vector<std::string>& words) {
    const auto small = static_cast<std::size_t>(std::count_if(words.begin(), words.end(), startsSmall));
    if (small == 0) return 0.1F;
    return small == words.size() ? -0.1F : -0.4F;
}

float byGivenName(const std::vector<std::string>& words) {
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string key = folded(words[i]);
        const auto known = words::isGivenName(key) || words::isGivenName(key.substr(0, key.find('-')));
        if (known) return i == 0 ? 0.35F : 0.2F;
    }
    return 0;
}

/// Words that speak against a name, unless they are also given names ("Mark", "Grace").
float byForeignWords(const std::vector<std::string>& words) {
    float sum = 0;
    for (const auto& word : words) {
        const std::string key = folded(word);
        if (words::isGivenName(key) || length(key) == 1) continue;
        if (words::isTitle(key) || words::isLegalForm(key)) sum -= 0.5F;
        if (words::isDepartment(key) || words::isFunction(key)) sum -= 0.3F;
        if (words::isCompany(key) || words::isTitleQualifier(key)) sum -= 0.3F;
        if (words::isCountry(key) || words::isStreet(key) || words::isAddress(key)) sum -= 0.2F;
    }
    return sum;
}

float bySize(float size, const CardFacts& facts) {
    if (facts.usualSize <= 0) return 0;
    const float above = std::clamp((size / facts.usualSize - 1.F) / 0.5F, -0.5F, 1.F);
    return 0.2F * above + (size >= 0.95F * facts.largestSize ? 0.08F : 0.F);
}

float byEmail(const std::string& name, const CardFacts& facts) {
    const bool made = std::any_of(facts.emailLocals.begin(), facts.emailLocals.end(),
                                  [&](const auto& local) { return isLocalOfName(local, name); });
    return made ? 0.5F : 0.F;
}

float byHost(const std::vector<std::string>& words, const CardFacts& facts) {
    std::string joined;
    for (const auto& word : words)
        joined += foldedKey(word);
    const bool same = std::any_of(facts.hostLabels.begin(), facts.hostLabels.end(),
                                  [&](const auto& label) { return foldedKey(label) == joined; });
    return same ? -0.15F : 0.F;
}

/// A name in its own script stands beside its Latin spelling on many cards, and is the one that is meant.
constexpr float kOwnScript = 0.45F;

float inOwnScript(const TextLine& line, const CardFacts& facts) {
    const float name = eastAsianName(line.text());
    return name < 0 ? kImpossible : name + bySize(line.size, facts) + (name > 0.4F ? kOwnScript : 0.F);
}

std::string joinedFolded(const std::vector<std::string>& words) {
    std::string name;
    for (const auto& word : words)
        name += (name.empty() ? "" : " ") + folded(word);
    return name;
}

}  // namespace

bool isLocalOfName(const std::string& local, const std::string& name) {
    const std::string key = foldedKey(local);
    std::vector<std::string> words;
    for (const auto& word : foldedWords(name))
        words.push_back(foldedKey(word));
    if (words.empty() || key.size() < 2) return false;
    const std::string& first = words.front();
    const std::string& last = words.back();
    const bool holdsLast = last.size() >= 3 && key.find(last) != std::string::npos;
    if (words.size() == 1) return holdsLast;
    if (holdsLast && (key == last || key.find(first.substr(0, 1)) != std::string::npos)) return true;
    if (key == first || (first.size() >= 3 && key == first + last.substr(0, 1))) return true;
    if (first.size() >= 4 && startsWith(first, key) && key.size() >= 4) return true;
    std::string initials;
    for (const auto& word : words)
        initials += word.substr(0, 1);
    return key.size() >= 2 && key == initials;
}

float nameEvidence(const TextLine& line, const CardFacts& facts) {
    if (isEastAsianText(line.text())) return inOwnScript(line, facts);
    const Parts parts = partsOf(line.text());
    if (!std::all_of(parts.core.begin(), parts.core.end(), isNameWord)) return kImpossible;
    const float count = byCount(parts.core.size());
    if (count <= kImpossible || countLetters(line.text()) < 3) return kImpossible;
    float sum = count + byCapitals(parts.core) + byGivenName(parts.core) + byForeignWords(parts.core);
    sum += bySize(line.size, facts) + byEmail(joinedFolded(parts.core), facts) + byHost(parts.core, facts);
    if (parts.honorifics > 0) sum += 0.35F;
    if (parts.postNominals > 0) sum += 0.25F;
    if (parts.particles > 0) sum += 0.1F;
    if (line.confidence() < 60) sum -= line.confidence() < 48 ? 0.6F : 0.2F;
    return sum;
}

}  // namespace qv::recognition
