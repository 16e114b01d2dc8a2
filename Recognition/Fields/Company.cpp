#include "Fields/Company.h"

#include "Fields/EastAsian.h"
#include "Fields/Name.h"
#include "Fields/Title.h"
#include "Fields/Words/Words.h"
#include "Text/Letters.h"

#include <algorithm>
#include <vector>

namespace qv::recognition {
namespace {

std::string initialsOf(const std::vector<std::string>& words) {
    std::string initials;
    for (const auto& word : words) {
        if (!words::isFunction(word)) initials += word.substr(0, 1);
    }
    return initials;
}

/// A short legal form is also a word or a state ("co", "ag", "as"): it counts where it is written like one.
bool isLegalFormHere(const std::string& printed) {
    const std::string key = folded(trimmed(printed, ",;:()"));
    const std::string bare = trimmed(key, ".");
    if (!words::isLegalForm(key) && !words::isLegalForm(bare)) return false;
    const auto points = codePoints(printed);
    return bare.size() > 2 || isCapital(points.front());
}

float byHosts(const std::string& text, const CardFacts& facts) {
    float best = 0;
    for (const auto& label : facts.hostLabels)
        best = std::max(best, hostFit(label, folded(text)));
    return best;
}

float bySize(float size, const CardFacts& facts) {
    if (facts.usualSize <= 0) return 0;
    return 0.2F * std::clamp((size / facts.usualSize - 1.F) / 0.6F, -0.5F, 1.F);
}

/// "& Sons", "et Fils": as good as a legal form.
bool endsWithKin(const std::vector<std::string>& printed) {
    return printed.size() >= 3 && words::isKin(trimmed(folded(printed.back()), ".,")) &&
           words::isConjunction(folded(printed[printed.size() - 2]));
}

float byWords(const std::vector<std::string>& words) {
    float sum = 0;
    const auto count = [&words](auto test) {
        return static_cast<float>(std::count_if(words.begin(), words.end(), test));
    };
    const float firms = count([](const auto& word) { return words::isCompany(word); });
    if (firms > 0) sum += firms > 1 ? 0.45F : 0.35F;
    if (words.size() >= 2 && words::isCompany(words.back())) sum += 0.1F;
    const float titles = count([](const auto& word) { return isTitleWord(word) && !words::isCompany(word); });
    const float functions = count([](const auto& word) { return words::isFunction(word); });
    sum -= 0.4F * std::min(titles, 1.F);
    if (functions * 3 >= static_cast<float>(words.size()) && functions > 0) sum -= 0.2F;
    if (words.size() > 6) sum -= 0.3F;
    return sum;
}

constexpr float kSurelyName = 0.6F;  // with a known given name or an address made from it

TextLine partOf(const TextLine& line, std::size_t first, std::size_t end) {
    const auto at = [&line](std::size_t i) { return line.words.begin() + static_cast<std::ptrdiff_t>(i); };
    return makeLine(std::vector<Word>(at(first), at(end)));
}

/// Where the person begins in "Acme Ltd Jane Doe"; the number of words where none does.
std::size_t personBehindFirm(const TextLine& line, const CardFacts& facts) {
    const auto& words = line.words;
    for (std::size_t i = 1; i + 2 < words.size(); ++i) {
        if (words.size() > i + 4 || !isLegalFormHere(words[i].text)) continue;
        const TextLine rest = partOf(line, i + 1, words.size());
        if (nameEvidence(rest, facts) >= kSurelyName && companyEvidence(rest, facts) < 0.4F) return i + 1;
    }
    return words.size();
}

}  // namespace

std::vector<TextLine> partedAtFirms(const std::vector<TextLine>& lines, const CardFacts& facts) {
    std::vector<TextLine> parted;
    for (const auto& line : lines) {
        const std::size_t cut = personBehindFirm(line, facts);
        parted.push_back(cut < line.words.size() ? partOf(line, 0, cut) : line);
        if (cut < line.words.size()) parted.push_back(partOf(line, cut, line.words.size()));
    }
    return parted;
}

float hostFit(const std::string& label, const std::string& name) {
    const std::string host = foldedKey(label);
    const auto words = foldedWords(name);
    const std::string key = foldedKey(name);
    if (host.size() < 2 || key.size() < 2) return 0;
    if (host == key) return 1;
    if (host.size() >= 4 && key.size() >= 4 && (startsWith(key, host) || startsWith(host, key))) return 0.9F;
    if (host.size() >= 4 && key.size() >= 4 &&
        (key.find(host) != std::string::npos || host.find(key) != std::string::npos))
        return 0.75F;
    if (words.size() >= 2 && host == initialsOf(words)) return 0.8F;
    const bool anyWord = std::any_of(words.begin(), words.end(), [&](const auto& word) {
        return word.size() >= 4 && !words::isFunction(word) && host.find(foldedKey(word)) != std::string::npos;
    });
    if (anyWord) return 0.6F;
    return host.size() >= 5 && editDistance(host, key, 2) <= static_cast<int>(host.size() / 5) ? 0.7F : 0.F;
}

float companyEvidence(const TextLine& line, const CardFacts& facts) {
    const std::string text = line.text();
    if (isEastAsianText(text)) return eastAsianCompany(text) + bySize(line.size, facts);
    const auto printed = splitAtSpaces(text);
    const auto words = foldedWords(text);
    if (words.empty() || countLetters(text) < 2 || countDigits(text) > countLetters(text)) return -1;
    float sum = 0.05F + byWords(words) + bySize(line.size, facts) + 0.65F * byHosts(text, facts);
    if (words.size() >= 2 && std::any_of(printed.begin(), printed.end(), isLegalFormHere)) {
        sum += 0.6F;
    } else if (endsWithKin(printed)) {
        sum += 0.5F;
    }
    if (isAllCapitals(text)) sum += 0.05F;
    const bool givenFirst = words::isGivenName(words.front()) && words.size() >= 2;
    if (givenFirst) sum -= 0.2F;
    if (line.confidence() < 50) sum -= 0.2F;
    return sum;
}

}  // namespace qv::recognition
