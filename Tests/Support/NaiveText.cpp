#include "Support/NaiveText.h"

#include <stdexcept>

namespace testsupport {

namespace {

constexpr std::u16string_view kCapitalSigma = u"\u03A3";

// The nearest character in the given direction that is not passed over is a cased letter.
bool hasCasedNeighbour(const NaiveText& text, std::size_t index, int step) {
    for (auto place = static_cast<std::ptrdiff_t>(index) + step;
         place >= 0 && place < static_cast<std::ptrdiff_t>(text.size()); place += step) {
        const NaiveCharacter& neighbour = *text[static_cast<std::size_t>(place)];
        if (!neighbour.ignorable) return neighbour.cased;
    }
    return false;
}

std::u16string_view lowerAt(const NaiveText& text, std::size_t index) {
    const bool isFinalSigma =
        text[index]->text == kCapitalSigma && hasCasedNeighbour(text, index, -1) && !hasCasedNeighbour(text, index, +1);
    return isFinalSigma ? u"\u03C2" : text[index]->lower;
}

bool isStart(const NaiveText& text, std::size_t index) {
    if (index == 0) return true;
    const NaiveCharacter& before = *text[index - 1];
    return before.kind == NaiveCharacter::kSpace || before.kind == NaiveCharacter::kNewline || before.text == u"-" ||
           before.text == u"'";
}

}  // namespace

NaiveText naiveText(std::u16string_view text) {
    NaiveText result;
    while (!text.empty()) {
        const std::size_t before = text.size();
        for (const NaiveCharacter& character : kNaiveAlphabet) {
            if (!text.starts_with(character.text)) continue;
            result.push_back(&character);
            text.remove_prefix(character.text.size());
            break;
        }
        if (text.size() == before) throw std::invalid_argument("a character outside of the alphabet");
    }
    return result;
}

std::u16string naiveJoined(const NaiveText& text) {
    std::u16string result;
    for (const NaiveCharacter* character : text)
        result += character->text;
    return result;
}

std::u16string naiveLowercased(const NaiveText& text) {
    std::u16string result;
    for (std::size_t index = 0; index < text.size(); ++index)
        result += lowerAt(text, index);
    return result;
}

std::u16string naiveCapitalized(const NaiveText& text) {
    std::u16string result;
    for (std::size_t index = 0; index < text.size(); ++index) {
        result += isStart(text, index) ? text[index]->title : lowerAt(text, index);
    }
    return result;
}

std::vector<std::u16string> naivePieces() {
    std::vector<std::u16string> pieces;
    for (const NaiveCharacter& character : kNaiveAlphabet)
        pieces.emplace_back(character.text);
    return pieces;
}

}  // namespace testsupport
