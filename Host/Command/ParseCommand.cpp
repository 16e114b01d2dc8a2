#include "Command/ParseCommand.h"

#include "Answer/ResultFile.h"
#include "Answer/ResultRemark.h"
#include "Output/CardFacts.h"
#include "Output/CardJSON.h"
#include "Output/FieldTable.h"
#include "Scan/RecognisedCard.h"
#include "Support/Messages.h"
#include "Support/StandardStreams.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

namespace qvhost {
namespace {

constexpr const char* kFooter =
    "Examples:\n"
    "  qvcardscan parse result/result-front.xml\n"
    "  qvcardscan parse result/result-front.xml --json | jq .fullName\n"
    "  curl --data-binary @card.jpg http://localhost:8080/ | qvcardscan parse -";

std::string readable(const std::shared_ptr<QVBusinessCard>& card) {
    if (!card) return "The answer holds no card.\n";
    return fieldTable(card) + "\n" + cardFacts(*card);
}

}  // namespace

CLI::App* ParseCommand::describe(CLI::App& program) {
    CLI::App* command = program.add_subcommand("parse", "Show what is in a recognition server's answer");
    command->add_option("RESULT.xml", mFile, "File with the answer; - for standard input")->required()->type_name("");
    command->add_flag("--json", mJSON, "Print the card as JSON; null for no card");
    command->footer(kFooter);
    return command;
}

ExitStatus ParseCommand::run() {
    const Result<ResultFile> file = ResultFile::read(mFile);
    if (!file) {
        Messages::say(file.failure().message);
        return file.failure().status;
    }
    if (const auto remark = resultRemark(*file)) Messages::say(*remark);
    const auto card = RecognisedCard::fromResult(file->text);
    return StandardStreams::writeResult(mJSON ? JSON::text(cardJSON(card)) : readable(card));
}

}  // namespace qvhost
