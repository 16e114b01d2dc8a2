#include "CommandLine.h"

#include "Call/CallMistake.h"
#include "Call/HelpLayout.h"
#include "Command/BatchCommand.h"
#include "Command/ContactsCommand.h"
#include "Command/NoteCommand.h"
#include "Command/ParseCommand.h"
#include "Command/ScanCommand.h"
#include "Command/ServeCommand.h"
#include "Support/HostLog.h"
#include "Support/Messages.h"
#include "Support/StandardStreams.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <sstream>
#include <utility>
#include <vector>

namespace qvhost {
namespace {

constexpr const char* kFooter =
    "Examples:\n"
    "  qvcardscan scan card.jpg\n"
    "  qvcardscan scan front.jpg back.jpg -o result --language de\n"
    "  qvcardscan scan card.jpg --search --save\n"
    "  qvcardscan serve\n"
    "  qvcardscan contacts list\n"
    "  qvcardscan parse result/result-front.xml --json\n"
    "  qvcardscan COMMAND --help\n"
    "\n"
    "Exit status: 0 done; 1 errors, or nothing found; 2 wrong call; 3 result not written.";

/// What holds for every command, and for those inside of it.
void prepare(CLI::App& command) {
    command.group("Commands");
    for (CLI::Option* option : command.get_options()) {
        // "--json=no" would otherwise count as given.
        if (option->get_items_expected_max() == 0) option->disable_flag_override();
    }
    for (CLI::App* inner : command.get_subcommands({}))
        prepare(*inner);
}

/// The program's commands with the options that they share.
class CommandLine {
  public:
    CommandLine() : mProgram("Turns photographs of business cards into contacts and contact notes.", "qvcardscan") {
        mProgram.formatter(std::make_shared<HelpLayout>());
        mProgram.set_help_flag("-h,--help", "Show this help");
        mProgram.set_version_flag("--version", "qvcardscan " QV_VERSION, "Show the version");
        // None at all is found out below, after an unknown word has been named.
        mProgram.require_subcommand(0, 1);
        add(std::make_unique<ScanCommand>());
        add(std::make_unique<BatchCommand>());
        add(std::make_unique<ServeCommand>());
        add(std::make_unique<ParseCommand>());
        add(std::make_unique<NoteCommand>());
        add(std::make_unique<ContactsCommand>());
        // Commands would take it over.
        mProgram.footer(kFooter);
    }

    ExitStatus run(int argumentCount, const char* const* arguments) {
        if (argumentCount < 2) return showHelp();
        try {
            mProgram.parse(argumentCount, arguments);
        } catch (const CLI::ParseError& error) {
            return show(error);
        }
        HostLog::install(mVerbose);
        for (const auto& [description, command] : mCommands) {
            if (description->parsed()) return command->run();
        }
        return showHelp();
    }

  private:
    void add(std::unique_ptr<Command> command) {
        CLI::App* description = command->describe(mProgram);
        description->add_flag("-v,--verbose,--log", mVerbose,
                              "Write the library's log, card text included, to standard error (or set QVCARDSCAN_LOG)");
        prepare(*description);
        mCommands.emplace_back(description, std::move(command));
    }

    ExitStatus showHelp() const {
        StandardStreams::writeError(mProgram.help());
        return ExitStatus::WrongCall;
    }

    /// Help and version were asked for and are the result; everything else is a wrong call.
    ExitStatus show(const CLI::ParseError& error) const {
        std::ostringstream output;
        std::ostringstream complaint;
        const bool isWrong = mProgram.exit(error, output, complaint) != 0;
        if (!isWrong) return StandardStreams::writeResult(output.str());
        const CallMistake mistake = CallMistake::of(error, mProgram);
        Messages::say(mistake.message);
        Messages::sayLines("For help: " + mistake.help + "\n");
        return ExitStatus::WrongCall;
    }

    CLI::App mProgram;
    bool mVerbose = false;
    std::vector<std::pair<CLI::App*, std::unique_ptr<Command>>> mCommands;
};

}  // namespace

ExitStatus runCommandLine(int argumentCount, const char* const* arguments) {
    return CommandLine().run(argumentCount, arguments);
}

}  // namespace qvhost
