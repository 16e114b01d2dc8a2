#include "Batch/BatchSummary.h"

#include "Support/TerminalText.h"

#include <utility>

namespace qvhost {
namespace {

using TerminalText::printable;

constexpr std::size_t kMostFailures = 50;
constexpr std::size_t kMostRemarks = 10;

std::string count(std::size_t number, const std::string& one, const std::string& many) {
    return std::to_string(number) + " " + (number == 1 ? one : many);
}

std::string counts(const BatchOutcome& outcome, std::size_t finished) {
    std::string text = count(outcome.read, "card", "cards") + " read";
    if (finished > 0) text += ", " + std::to_string(finished) + " finished before";
    if (!outcome.failed.empty()) text += ", " + std::to_string(outcome.failed.size()) + " failed";
    if (outcome.left > 0) text += ", " + std::to_string(outcome.left) + " left";
    return text + ".\n";
}

std::string failures(const BatchOutcome& outcome) {
    std::string text;
    for (std::size_t i = 0; i < outcome.failed.size() && i < kMostFailures; ++i)
        text += "  " + printable(outcome.failed[i].file) + ": " + printable(outcome.failed[i].why) + "\n";
    if (outcome.failed.size() > kMostFailures)
        text += "  … and " + std::to_string(outcome.failed.size() - kMostFailures) + " more; see the page.\n";
    return text.empty() ? "" : "Failed:\n" + text;
}

/// What is so of many cards is said once.
std::string remarks(const BatchOutcome& outcome) {
    std::string text;
    std::size_t said = 0;
    for (const auto& [remark, cards] : outcome.remarks) {
        if (said++ == kMostRemarks) return "Remarks:\n" + text + "  … and more; see the page.\n";
        text += "  " + count(cards, "card", "cards") + ": " + printable(remark) + "\n";
    }
    return text.empty() ? "" : "Remarks:\n" + text;
}

std::string passedOver(const BatchInputs& inputs) {
    std::string text;
    if (inputs.skipped > 0)
        text +=
            count(inputs.skipped, "file that is no picture was", "files that are no pictures were") + " passed over.\n";
    if (inputs.repeated > 0)
        text += count(inputs.repeated, "picture was there twice and is", "pictures were there twice and are") +
                " read once.\n";
    return text;
}

std::string howToGoOn(const BatchOutcome& outcome) {
    if (outcome.left > 0) return "What was finished is kept. To go on, run the same command with --resume.\n";
    return outcome.failed.empty() ? "" : "To try what failed once more, run the same command with --resume.\n";
}

}  // namespace

std::string summary(const BatchOutcome& outcome, const BatchInputs& inputs, std::size_t finished,
                    const std::filesystem::path& folder) {
    return counts(outcome, finished) + failures(outcome) + remarks(outcome) + passedOver(inputs) +
           "Contacts: " + printable((folder / "contacts.csv").string()) + ", " +
           printable((folder / "contacts.vcf").string()) + "\nPage: " + printable((folder / "index.html").string()) +
           "\n" + howToGoOn(outcome);
}

Failure nothingToRead(const BatchInputs& inputs) {
    std::string message = "There is no picture to read";
    for (std::size_t i = 0; i < inputs.mistakes.size() && i < kMostFailures; ++i)
        message += (i == 0 ? ": \"" : "; \"") + inputs.mistakes[i].file.string() + "\" " + inputs.mistakes[i].message;
    return {ExitStatus::WrongCall, std::move(message) + ". Give folders or files with photographs of cards."};
}

}  // namespace qvhost
