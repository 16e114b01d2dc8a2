#include "Fields/Department.h"

#include "Fields/EastAsian.h"
#include "Fields/Title.h"
#include "Fields/Words/Words.h"
#include "Text/Letters.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace qv::recognition {
namespace {

constexpr std::array<std::string_view, 4> kEndings = {"abteilung", "bereich", "institut", "referat"};
constexpr std::array<std::string_view, 14> kOf = {"of", "fur", "for",  "de",  "des", "d'",  "di",
                                                  "do", "da",  "voor", "der", "du",  "del", "und"};

bool isDepartmentWord(const std::string& word) {
    if (words::isDepartment(word)) return true;
    return std::any_of(kEndings.begin(), kEndings.end(),
                       [&](auto ending) { return word.size() > ending.size() + 2 && endsWith(word, ending); });
}

/// "Human Resources", "Einkauf & Logistik", "International Sales": what a department is for, and nothing else.
bool isAreaOnly(const std::vector<std::string>& words) {
    const auto fits = [](const auto& word) { return words::isArea(word) || words::isAreaQualifier(word); };
    const auto says = [](const auto& word) { return word.size() > 3 && words::isArea(word); };
    return words.size() <= 4 && std::all_of(words.begin(), words.end(), fits) &&
           std::any_of(words.begin(), words.end(), says);
}

bool isOf(const std::string& word) {
    return std::find(kOf.begin(), kOf.end(), word) != kOf.end() || startsWith(word, "d'");
}

}  // namespace

float departmentEvidence(const TextLine& line) {
    if (isEastAsianText(line.text())) return eastAsianDepartment(line.text());
    const auto words = foldedWords(line.text());
    if (words.empty() || words.size() > 10 || countDigits(line.text()) > 1) return 0;
    const auto found = std::find_if(words.begin(), words.end(), isDepartmentWord);
    if (found == words.end()) return isAreaOnly(words) ? 0.62F : 0.F;
    const bool hasTitle = std::any_of(words.begin(), words.end(), isTitleWord);
    const bool hasFirm = std::any_of(words.begin(), words.end(),
                                     [](const auto& word) { return words::isLegalForm(word) && word.size() > 2; });
    float sum = found == words.begin() ? 0.6F : 0.5F;
    if (found + 1 != words.end() && isOf(*(found + 1))) sum += 0.25F;
    if (found + 1 == words.end() && words.size() >= 2) sum += 0.15F;
    if (hasTitle && (found != words.begin() || isTitleWord(words.back()))) sum -= 0.4F;
    if (hasFirm) sum -= 0.5F;
    return std::clamp(sum, 0.F, 1.F);
}

}  // namespace qv::recognition
