#include "Command/NoteCommand.h"

#include "QVCardScan/QVVeltoContact.h"
#include "QVCardScan/QVVeltoNoteGenerator.h"
#include "Scan/RecognisedCard.h"
#include "Support/FileReading.h"
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
    const Result<std::string> front = readResultText(mFront);
    if (!front) return fail(front.failure());
    const Result<std::string> back = mBack ? readResultText(*mBack) : Result<std::string>(std::string());
    if (!back) return fail(back.failure());
    const auto card = RecognisedCard::fromResults(*front, *back);
    if (!card) return fail({ExitStatus::Incomplete, "There is no card in what was given: no note was made."});
    const auto contact = QVVeltoContact::initWithCard(card);
    const QVString note = QVVeltoNoteGenerator().noteFromContactInfo(contact, /*producingFullNote=*/!mContactInfo);
    if (note) return StandardStreams::writeResult(*note);
    return fail({ExitStatus::Incomplete,
                 "The note's template could not be read; --verbose names the path where it was "
                 "expected. Install the program again."});
}

}  // namespace qvhost
