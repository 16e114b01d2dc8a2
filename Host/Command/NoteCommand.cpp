#include "Command/NoteCommand.h"

#include "Answer/ResultFile.h"
#include "Answer/ResultRemark.h"
#include "QVCardScan/QVVeltoContact.h"
#include "QVCardScan/QVVeltoNoteGenerator.h"
#include "Scan/RecognisedCard.h"
#include "Support/Messages.h"
#include "Support/StandardStreams.h"

#include <CLI/CLI.hpp>

namespace qvhost {
namespace {

constexpr const char* kFooter =
    "Examples:\n"
    "  qvcardscan note result/result-front.xml result/result-back.xml > note.qvml\n"
    "  qvcardscan note result/result-front.xml --contact-info > block.html";

ExitStatus fail(const Failure& failure) {
    Messages::say(failure.message);
    return failure.status;
}

}  // namespace

CLI::App* NoteCommand::describe(CLI::App& program) {
    CLI::App* command = program.add_subcommand("note", "Print the contact note for a recognition server's answers");
    command->add_option("RESULT.xml", mFront, "File with the answer for the front; - for standard input")
        ->required()
        ->type_name("");
    command->add_option("RESULT2.xml", mBack, "File with the answer for the back")->type_name("");
    command->add_flag("--contact-info", mContactInfo, "Print the smaller block for display outside of a note");
    command->footer(kFooter);
    return command;
}

ExitStatus NoteCommand::run() {
    const Result<std::vector<ResultFile>> files = readAll();
    if (!files) return fail(files.failure());
    for (const ResultFile& file : *files)
        if (const auto remark = resultRemark(file)) Messages::say(*remark);
    const QVString back = mBack ? QVString(files->back().text) : std::nullopt;
    const auto card = RecognisedCard::fromResults(files->front().text, back);
    if (!card) return fail({ExitStatus::Incomplete, "There is no card in what was given: no note was made."});
    const auto contact = QVVeltoContact::initWithCard(card);
    const QVString note = QVVeltoNoteGenerator().noteFromContactInfo(contact, /*producingFullNote=*/!mContactInfo);
    if (note) return StandardStreams::writeResult(*note);
    return fail({ExitStatus::Incomplete,
                 "The note's template could not be read; --verbose names the path where it was "
                 "expected. Install the program again."});
}

Result<std::vector<ResultFile>> NoteCommand::readAll() const {
    // Standard input ends once.
    if (mFront == "-" && mBack == "-")
        return Failure{ExitStatus::WrongCall, "Only one of the two results can come from standard input."};
    std::vector<ResultFile> files;
    for (const std::string& file : mBack ? std::vector{mFront, *mBack} : std::vector{mFront}) {
        Result<ResultFile> read = ResultFile::read(file);
        if (!read) return read.failure();
        files.push_back(*std::move(read));
    }
    return files;
}

}  // namespace qvhost
