#include "Command/BatchCommand.h"

#include "Batch/BatchSummary.h"
#include "Batch/Interruption.h"
#include "Support/Messages.h"
#include "Support/StandardStreams.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <thread>
#include <utility>

namespace qvhost {
namespace {

/// The library sends so many cards at once; more readers would wait.
constexpr unsigned kSentAtOnce = 3;
constexpr int kMostJobs = 64;

constexpr const char* kFooter =
    "Examples:\n"
    "  qvcardscan batch photos -o cards\n"
    "  qvcardscan batch *.jpg -o cards --save --language de\n"
    "  qvcardscan batch photos -o cards --resume\n"
    "\n"
    "Exit status: 0 done; 1 some failed; 2 wrong call; 3 not written; 130 stopped.";

std::string objectionToEmpty(const std::string& text) {
    return text.empty() ? "a name is needed here, not an empty text." : "";
}

std::string objectionToJobs(const std::string& text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isOne = error == std::errc() && end == text.data() + text.size() && number >= 1 && number <= kMostJobs;
    return isOne ? "" : "a number from 1 to " + std::to_string(kMostJobs) + " is needed here.";
}

int usualJobs() {
    return static_cast<int>(std::clamp(std::thread::hardware_concurrency(), 1U, kSentAtOnce));
}

ExitStatus fail(const Failure& failure) {
    Messages::say(failure.message);
    return failure.status;
}

}  // namespace

CLI::App* BatchCommand::describe(CLI::App& program) {
    CLI::App* command = program.add_subcommand("batch", "Read a pile of cards from folders or files");
    command->footer(kFooter);
    command->add_option("DIR|FILE", mNames, "Folders, photographs (x-front with x-back, x_1 with x_2)")
        ->required()
        ->type_name("")
        ->check(objectionToEmpty);
    command->add_option("-o,--output", mFolder, "Folder for cards, contacts.csv, .vcf and index.html")
        ->required()
        ->type_name("OUT")
        ->check(objectionToEmpty);
    command->add_flag("--resume", mResumes, "Go on with the batch in OUT; finished cards stay");
    command->add_flag("--pairs", mTakesPairsInOrder, "Every two pictures are a front and its back");
    CLI::Option* jobs = command->add_option("--jobs", mJobs, "Cards read at the same time (default: up to 3)");
    jobs->type_name("N")->check(objectionToJobs);
    command->add_flag("--json", mJSON, "Print a JSON object for each card, one a line");
    mServer.describe(*command);
    jobs->excludes(mServer.server());
    mPerson.describe(*command, nullptr);
    return command;
}

ExitStatus BatchCommand::run() {
    const BatchInputs inputs = BatchInputs::gather(mNames);
    const Result<std::unique_ptr<RecognitionServer>> server = mServer.open(mJobs.value_or(usualJobs()));
    if (!server) return fail(server.failure());
    if (inputs.pictures.empty()) return fail(nothingToRead(inputs));
    const auto folder = BatchFolder::open(mFolder, mResumes, {mServer.language(), mTakesPairsInOrder});
    if (!folder) return fail(folder.failure());
    const Result<std::unique_ptr<PersonSteps>> steps = mPerson.open();
    if (!steps) return fail(steps.failure());
    if (*steps) (*steps)->stopShowingProgress();
    return read(inputs, **folder, **server, steps->get());
}

std::vector<BatchCard> BatchCommand::cardsIn(const BatchInputs& inputs, const BatchFolder& folder) const {
    return folder.settings().takesPairsInOrder ? CardPairs::byOrder(inputs.pictures)
                                               : CardPairs::byName(inputs.pictures);
}

BatchWishes BatchCommand::wishes(const BatchFolder& folder, const PersonSteps* steps) const {
    BatchWishes wishes{folder.settings().language, false, false, ""};
    if (steps == nullptr) return wishes;
    wishes.comparesContacts = steps->comparesContacts();
    wishes.searches = steps->searches();
    if (steps->savesIn() != nullptr) wishes.savesIn = steps->savesIn()->name;
    return wishes;
}

ExitStatus BatchCommand::read(const BatchInputs& inputs, const BatchFolder& folder, RecognitionServer& server,
                              PersonSteps* steps) const {
    const Interruption interruption;
    BatchPlan plan = BatchPlan::make(folder, cardsIn(inputs, folder), wishes(folder, steps));
    std::vector<IndexPage::Failed> failed;
    for (const BatchMistake& mistake : inputs.mistakes)
        failed.push_back({mistake.file.string(), mistake.message});
    BatchRun run(folder, server, steps, {folder.settings().language, mJSON, plan.finished}, std::move(failed));
    return report(run.run(std::move(plan.cards)), inputs, plan.finished);
}

ExitStatus BatchCommand::report(const BatchOutcome& outcome, const BatchInputs& inputs, std::size_t finished) const {
    const std::string text = summary(outcome, inputs, finished, mFolder);
    if (outcome.stopped && !outcome.stopped->message.empty()) Messages::say(outcome.stopped->message);
    if (mJSON) {
        Messages::sayLines(text);
        return outcome.status;
    }
    return std::max(outcome.status, StandardStreams::writeResult(text));
}

}  // namespace qvhost
