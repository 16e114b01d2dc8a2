#include "Fields/Cleaning.h"

#include "Fields/Phone.h"
#include "Fields/PhoneLabel.h"
#include "Fields/Words/WordSet.h"
#include "Fields/Words/Words.h"
#include "Text/Letters.h"

#include <algorithm>
#include <utility>

namespace qv::recognition {
namespace {

constexpr float kHardlyRead = 40;
constexpr float kWellRead = 75;
constexpr float kIconGap = 0.75F;
constexpr float kIconHeight = 1.7F;

bool isNoise(const Word& word) {
    const int letters = countLetters(word.text);
    const int digits = countDigits(word.text);
    if (letters + digits == 0) return true;
    if (isEastAsian(codePoints(word.text).front())) return word.confidence < kHardlyRead;
    const bool single = length(trimmed(word.text, ".,:;()[]{}|'\"")) == 1;
    const bool initial = single && letters == 1 && isAllCapitals(word.text) && endsWith(word.text, ".");
    if (single && digits == 0 && !initial) return word.confidence < kWellRead || isAllCapitals(word.text) == false;
    if (word.confidence < 20) return true;
    return letters + digits <= 2 && word.confidence < kHardlyRead;
}

/// A sign before a line that stands further off than a letter, or is larger than the type, was drawn, not set.
bool isIcon(const Word& word, const Word& next, float size) {
    const int signs = countLetters(word.text) + countDigits(word.text);
    const bool apart = next.box.x - word.box.right() > kIconGap * size;
    return (signs <= 1 && apart) || (signs <= 3 && word.box.h > kIconHeight * size);
}

/// "& Co. KG", "& Sons": the second line of a firm's name.
bool beginsRestOfFirm(const std::vector<Word>& line, std::size_t i) {
    if (line[i].text != "&" || i + 1 >= line.size()) return false;
    const std::string next = trimmed(folded(line[i + 1].text), ".,");
    return words::isLegalForm(next) || words::isKin(next);
}

/// Small print between two words of a title or a firm is not noise ("Sales & Leasing"): only the ends are looked at.
std::pair<std::size_t, std::size_t> withoutNoise(const TextLine& line) {
    const auto& words = line.words;
    std::size_t first = 0;
    std::size_t end = words.size();
    const auto isDrawn = [&](std::size_t i) { return i + 1 < end && isIcon(words[i], words[i + 1], line.size); };
    while (first < end && !beginsRestOfFirm(words, first) && (isNoise(words[first]) || isDrawn(first)))
        ++first;
    while (end > first && isNoise(words[end - 1]))
        --end;
    return {first, end};
}

bool hasTime(const std::vector<std::string>& words) {
    const auto isTime = [](const std::string& word) {
        const auto sign = word.find(':');
        return sign != std::string::npos && sign > 0 && countLetters(word) <= 2 && countDigits(word) >= 3 &&
               countDigits(word) <= 8;
    };
    return std::any_of(words.begin(), words.end(), isTime);
}

bool hasYear(const std::vector<std::string>& words) {
    return std::any_of(words.begin(), words.end(), [](const auto& word) {
        return word.size() == 4 && countDigits(word) == 4 && (word[0] == '1' || word[0] == '2');
    });
}

}  // namespace

std::vector<TextLine> withoutClaims(const TextLine& line, const std::vector<Claim>& claims) {
    std::vector<bool> taken(line.words.size(), false);
    for (const auto& claim : claims) {
        for (std::size_t i = claim.first; i < claim.end && i < taken.size(); ++i)
            taken[i] = true;
    }
    std::vector<TextLine> rest;
    std::vector<Word> words;
    for (std::size_t i = 0; i <= line.words.size(); ++i) {
        if (i < line.words.size() && !taken[i]) {
            words.push_back(line.words[i]);
        } else if (!words.empty()) {
            rest.push_back(makeLine(std::exchange(words, {})));
        }
    }
    return rest;
}

TextLine cleaned(const TextLine& line) {
    const auto [first, end] = withoutNoise(line);
    const auto at = [&line](std::size_t i) { return line.words.begin() + static_cast<std::ptrdiff_t>(i); };
    return makeLine(std::vector<Word>(at(first), at(end)));
}

bool isText(const TextLine& line) {
    const std::string text = line.text();
    const int letters = countLetters(text);
    const int digits = countDigits(text);
    if (letters + digits < 2 || line.confidence() < kHardlyRead) return false;
    if (beginsRestOfFirm(line.words, 0)) return true;
    return (letters + digits) * 3 >= length(text) * 2 - static_cast<int>(line.words.size());
}

bool isLabelOnly(const TextLine& line) {
    static const WordSet labels(
        "email mail courriel mel correo correoelectronico posta epost eposta emailadresse mailadresse web webb epost "
        "website internet homepage url www site adresse address adres direccion indirizzo "
        "endereco "
        "skype twitter "
        "facebook linkedin instagram contact kontakt contacto contatti e w");
    if (line.words.size() > 2) return false;
    for (const std::string_view label :
         {"メール", "邮箱", "电邮", "이메일", "网址", "地址", "住所", "주소", "홈페이지"}) {
        if (trimmed(line.text(), " :") == label) return true;
    }
    return labelOf(line).has_value() || labels.has(foldedKey(line.text()));
}

bool isSideNote(const TextLine& line) {
    static const WordSet years(
        "since est established founded seit gegrundet gegr depuis fonde desde dal fondata sinds "
        "anno sedan od");
    const std::string text = line.text();
    const auto words = splitAtSpaces(text);
    const auto first = words.begin();
    const auto last = first + static_cast<std::ptrdiff_t>(std::min<std::size_t>(words.size(), 2));
    const bool registered = std::any_of(first, last, [](const auto& word) { return isRegisterWord(word); });
    if (registered && countDigits(text) >= 5) return true;
    if (words.size() <= 4 && hasYear(words) && years.has(foldedKey(words.front()))) return true;
    return hasTime(words) && countDigits(text) >= 4;
}

}  // namespace qv::recognition
