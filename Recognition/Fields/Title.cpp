#include "Fields/Title.h"

#include "Fields/EastAsian.h"
#include "Fields/Words/Words.h"
#include "Text/Letters.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace qv::recognition {
namespace {

constexpr std::array<std::string_view, 28> kEndings = {
    "leiter",      "leiterin",     "manager",     "managerin", "meister",    "meisterin", "ingenieur",
    "ingenieurin", "berater",      "beraterin",   "techniker", "anwalt",     "anwaltin",  "arzt",
    "arztin",      "assistent",    "assistentin", "referent",  "referentin", "direktor",  "direktorin",
    "entwickler",  "entwicklerin", "kauffrau",    "kaufmann",  "fuhrer",     "fuhrerin",  "beauftragter"};

/// "Sales/Marketing", "Gründer|CEO": a word that holds several.
std::vector<std::string> wordsOf(const std::string& text) {
    std::string spaced = text;
    std::replace_if(
        spaced.begin(), spaced.end(), [](char c) { return c == '/' || c == '|' || c == '-' || c == ','; }, ' ');
    return foldedWords(spaced);
}

}  // namespace

bool isTitleWord(const std::string& word) {
    if (words::isTitle(word)) return true;
    return std::any_of(kEndings.begin(), kEndings.end(),
                       [&](auto ending) { return word.size() > ending.size() + 2 && endsWith(word, ending); });
}

float titleEvidence(const TextLine& line) {
    if (isEastAsianText(line.text())) return eastAsianTitle(line.text());
    const auto words = wordsOf(line.text());
    if (words.empty() || words.size() > 10 || countDigits(line.text()) > 1) return 0;
    const auto titles = std::count_if(words.begin(), words.end(), isTitleWord);
    const auto qualifiers = std::count_if(words.begin(), words.end(), [](const auto& word) {
        return words::isTitleQualifier(word) && !isTitleWord(word);
    });
    const auto firms = std::count_if(words.begin(), words.end(),
                                     [](const auto& word) { return words::isLegalForm(word) && word.size() > 2; });
    const auto known = static_cast<float>(titles + qualifiers) / static_cast<float>(words.size());
    // "CEO, Acme Ltd" says first what she does, "Acme Engineers Ltd" does not.
    if (firms > 0) return isTitleWord(words.front()) ? 0.6F : titles > 0 ? 0.3F : 0.F;
    if (titles == 0) return qualifiers > 0 ? 0.25F * known : 0.F;
    const bool startsDepartment =
        words::isDepartment(words.front()) && !isTitleWord(words.front()) && !isTitleWord(words.back());
    return std::clamp(0.55F + 0.4F * known - (startsDepartment ? 0.4F : 0.F), 0.F, 1.F);
}

}  // namespace qv::recognition
