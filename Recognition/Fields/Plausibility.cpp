#include "Fields/Plausibility.h"

#include "Fields/Title.h"
#include "Fields/Words/Words.h"
#include "Text/Letters.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace qv::recognition {
namespace {

constexpr std::size_t kLongLine = 9;  // words: more than a card's line mostly holds
constexpr std::size_t kPage = 10;     // long lines: no card is printed so full
constexpr std::size_t kParagraph = 3;
constexpr int kFewLetters = 12;
constexpr float kWellRead = 85;

bool isContact(const Field& field) {
    return field.type != FieldType::Name && field.type != FieldType::Title && field.type != FieldType::Company &&
           field.type != FieldType::Department && field.type != FieldType::Address;
}

struct Prose {
    std::size_t lines = 0;
    bool prevails = false;  ///< most words stand in long lines
};

Prose proseIn(const std::vector<TextLine>& lines) {
    Prose prose;
    std::size_t inLong = 0;
    std::size_t all = 0;
    for (const auto& line : lines) {
        all += line.words.size();
        if (line.words.size() < kLongLine) continue;
        ++prose.lines;
        inLong += line.words.size();
    }
    prose.prevails = inLong * 2 >= all;
    return prose;
}

bool holdsKnownWord(const Field& field) {
    const auto words = foldedWords(field.text);
    return std::any_of(words.begin(), words.end(), [](const auto& word) {
        return word.size() >= 3 &&
               (isTitleWord(word) || words::isGivenName(word) || words::isCompany(word) || words::isLegalForm(word) ||
                words::isDepartment(word) || words::isArea(word) || words::isStreet(word) || words::isCountry(word));
    });
}

/// What textures give: a handful of letters, not well read, that say nothing.
bool isTexture(const std::vector<Field>& fields) {
    int letters = 0;
    for (const auto& field : fields) {
        if (isContact(field) || holdsKnownWord(field) || field.confidence >= kWellRead) return false;
        letters += countLetters(field.text);
    }
    return letters < kFewLetters;
}

}  // namespace

std::vector<Field> plausible(std::vector<Field> fields, const std::vector<TextLine>& lines) {
    const bool hasContact = std::any_of(fields.begin(), fields.end(), isContact);
    const Prose prose = proseIn(lines);
    const bool isPage = prose.prevails && (prose.lines >= kPage || (!hasContact && prose.lines >= kParagraph));
    if (isPage)
        fields.erase(std::remove_if(fields.begin(), fields.end(), [](const Field& field) { return !isContact(field); }),
                     fields.end());
    if (isTexture(fields)) fields.clear();
    return fields;
}

}  // namespace qv::recognition
