#include "Output/ScanRemarks.h"

#include "QVPlatform/Text.h"
#include "Support/TerminalText.h"

namespace qvhost {
namespace {

/// "de" of "de-AT".
std::string primaryTag(const std::string& language) {
    return qv::Text::lowercased(language.substr(0, language.find('-')));
}

/// Servers name languages as they like; only two letters against two other letters tell something.
bool isAnotherLanguage(const std::string& asked, const std::string& answered) {
    constexpr std::size_t kLetters = 2;
    return asked.size() == kLetters && answered.size() == kLetters && asked != answered;
}

std::optional<std::string> remarkOnLanguage(const ScanOutcome& outcome, const std::optional<std::string>& language) {
    if (!language || !outcome.card || !outcome.card->language()) return std::nullopt;
    const std::string answered = primaryTag(*outcome.card->language());
    if (!isAnotherLanguage(primaryTag(*language), answered)) return std::nullopt;
    return "The card was read as \"" + TerminalText::printable(answered) + "\", because the server does not have \"" +
           *language + "\". Install its recognition data (on Debian a package tesseract-ocr-…), or ask for another.";
}

}  // namespace

std::vector<std::string> scanRemarks(const ScanOutcome& outcome, const std::optional<std::string>& language,
                                     const std::string& server) {
    std::vector<std::string> remarks;
    if (outcome.errors().empty() && !outcome.card) {
        remarks.push_back("The answer of " + server + " is no recognition result. Check its address.");
    } else if (outcome.errors().empty() && !outcome.hasFields()) {
        remarks.emplace_back(
            "Nothing could be read in the picture. Take it again with the whole card in view, sharp and evenly lit.");
    }
    if (outcome.leftBackUnread())
        remarks.emplace_back("The back was not read: the front alone has an e-mail address and a title.");
    if (auto remark = remarkOnLanguage(outcome, language)) remarks.push_back(std::move(*remark));
    return remarks;
}

}  // namespace qvhost
