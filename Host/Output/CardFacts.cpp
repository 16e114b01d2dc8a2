#include "Output/CardFacts.h"

#include "Support/TerminalText.h"

#include <string_view>

namespace qvhost {
namespace {

std::string line(std::string_view label, const std::string& value) {
    std::string text(label);
    text.resize(12, ' ');
    return text + TerminalText::printable(value) + "\n";
}

std::string joined(const QVStringArray& texts) {
    std::string list;
    for (const std::string& text : texts ? *texts : std::vector<std::string>())
        list.append(list.empty() ? "" : ", ").append(text);
    return list.empty() ? "-" : list;
}

}  // namespace

std::string cardFacts(const QVBusinessCard& card) {
    return line("Full name", card.fullName().value_or("-")) + line("Emails", joined(card.emails())) +
           line("Phones", joined(card.phoneNumbers())) + line("Title", card.hasTitleField() ? "yes" : "no") +
           line("Score", std::to_string(card.score())) +
           line("Rotation", std::to_string(card.rotationByDegrees()) + " degrees") +
           line("Language", card.language().value_or("-")) +
           line("Size", std::to_string(card.cardWidth()) + " x " + std::to_string(card.cardHeight()));
}

}  // namespace qvhost
