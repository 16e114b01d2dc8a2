#include "Command/ScanCommand.h"

#include "Output/ErrorText.h"
#include "Output/FieldTable.h"
#include "Output/PersonText.h"
#include "Output/ScanJSON.h"
#include "Output/ScanRemarks.h"
#include "Support/Messages.h"
#include "Support/Progress.h"
#include "Support/StandardStreams.h"
#include "Support/TerminalText.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <algorithm>

namespace qvhost {
namespace {

ExitStatus fail(const Failure& failure) {
    Messages::say(failure.message);
    return failure.status;
}

std::string objectionToEmpty(const std::string& text) {
    return text.empty() ? "a name is needed here, not an empty text." : "";
}

constexpr const char* kFooter =
    "Examples:\n"
    "  qvcardscan scan card.jpg\n"
    "  qvcardscan scan front.jpg back.jpg -o result --language de\n"
    "  qvcardscan scan card.jpg --search --save --address-book ~/contacts\n"
    "\n"
    "Exit status: 0 done; 1 errors, nothing recognised, or no answer in time; 2 wrong call, nothing was sent;\n"
    "3 result not written, or contact not saved.";

ExitStatus worst(ExitStatus one, ExitStatus other) {
    return std::max(one, other);
}

}  // namespace

CLI::App* ScanCommand::describe(CLI::App& program) {
    CLI::App* command = program.add_subcommand("scan", "Read a card from photographs of its sides");
    command->footer(kFooter);
    command->add_option("FRONT", mFront, "Photograph of the front (JPEG, PNG, TIFF, WebP)")->required()->type_name("");
    command->add_option("BACK", mBack, "Photograph of the back; read when that is needed")->type_name("");
    command->add_option("-o,--output", mFolder, "Folder for the note, the fields and the pictures")
        ->type_name("DIR")
        ->check(objectionToEmpty);
    command->add_flag("--json", mJSON, "Print one JSON object instead of the table");
    auto* skipNote = command->add_flag("--skip-note", mSkipNote, "Only read the card: no contact, no note");
    mServer.describe(*command);
    mPerson.describe(*command, skipNote);
    return command;
}

ExitStatus ScanCommand::run() {
    const Result<std::unique_ptr<RecognitionServer>> chosen = mServer.open();
    if (!chosen) return fail(chosen.failure());
    const Result<std::vector<CardPicture>> pictures = CardPicture::readAll(files());
    if (!pictures) return fail(pictures.failure());
    const Result<std::unique_ptr<PersonSteps>> steps = mPerson.open();
    if (!steps) return fail(steps.failure());
    if (mFolder) {
        if (const auto failure = ResultFolder(*mFolder).make()) return fail(*failure);
    }
    RecognitionServer& server = **chosen;
    const auto known = *steps ? (*steps)->nextCard() : nullptr;
    const Result<ScanOutcome> outcome = scan(server, *pictures);
    if (!outcome) return fail(outcome.failure());
    const PersonOutcome person = *steps ? (*steps)->run(*outcome, known) : PersonOutcome();
    return report(*outcome, person, *pictures, server.name());
}

std::vector<std::string> ScanCommand::files() const {
    std::vector<std::string> files{mFront};
    if (mBack) files.push_back(*mBack);
    return files;
}

Result<ScanOutcome> ScanCommand::scan(RecognitionServer& server, std::vector<CardPicture> pictures) const {
    const Progress progress("Reading the card with " + server.name() + " …");
    return CardScan(server).run({std::move(pictures), mServer.language(), mSkipNote});
}

ExitStatus ScanCommand::report(const ScanOutcome& outcome, const PersonOutcome& person,
                               const std::vector<CardPicture>& pictures, const std::string& serverName) const {
    sayWhatMatters(outcome, person, serverName);
    const bool writesFolder = mFolder && outcome.hasFields();
    const ExitStatus folder = writesFolder ? writeFolder(outcome, pictures) : ExitStatus::Done;
    const std::string text = resultText(outcome, person, writesFolder && folder == ExitStatus::Done);
    const ExitStatus output = StandardStreams::writeResult(text);
    const bool isWhole = outcome.errors().empty() && outcome.hasFields();
    const ExitStatus scan = isWhole ? ExitStatus::Done : ExitStatus::Incomplete;
    return worst(worst(scan, person.status()), worst(folder, output));
}

void ScanCommand::sayWhatMatters(const ScanOutcome& outcome, const PersonOutcome& person,
                                 const std::string& serverName) const {
    for (const qv::Error& error : outcome.errors())
        Messages::say(ErrorText::message(error, serverName));
    for (const std::string& remark : scanRemarks(outcome, mServer.language(), serverName))
        Messages::say(remark);
    for (const std::string& remark : person.remarks)
        Messages::say(remark);
    if (const std::string failure = saveFailureText(person); !failure.empty()) Messages::say(failure);
    // What lies there may be a good result, and its note is not this card's.
    if (mFolder && !outcome.hasFields())
        Messages::say("Nothing was written to \"" + *mFolder + "\"; what was there is as it was.");
}

ExitStatus ScanCommand::writeFolder(const ScanOutcome& outcome, const std::vector<CardPicture>& pictures) const {
    const auto failure = ResultFolder(*mFolder).write(outcome, Resources(pictures, *outcome.response));
    return failure ? fail(*failure) : ExitStatus::Done;
}

std::string ScanCommand::resultText(const ScanOutcome& outcome, const PersonOutcome& person, bool folderWritten) const {
    if (mJSON) return JSON::text(scanJSON(outcome, person));
    const std::string more =
        personText(person, outcome.response->contact()) + (folderWritten ? folderText(outcome) : std::string());
    return fieldTable(outcome.card) + (more.empty() ? "" : "\n") + more;
}

std::string ScanCommand::folderText(const ScanOutcome& outcome) const {
    const std::filesystem::path folder = *mFolder;
    const bool hasNote = outcome.response->qvmlContent().has_value();
    return (hasNote ? "Note: " : "Written to: ") +
           TerminalText::printable((hasNote ? folder / "note.html" : folder).string()) + "\n";
}

}  // namespace qvhost
