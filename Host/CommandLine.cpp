#include "CommandLine.h"

#include "Command/ContactsCommand.h"
#include "Command/NoteCommand.h"
#include "Command/ParseCommand.h"
#include "Command/ScanCommand.h"
#include "Support/HostLog.h"
#include "Support/StandardStreams.h"
#include "Support/TerminalText.h"

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
    "  qvcardscan contacts list\n"
    "  qvcardscan parse result/result-front.xml --json\n"
    "  qvcardscan COMMAND --help\n"
    "\n"
    "Exit status: 0 done; 1 errors, or nothing found; 2 wrong call; 3 result not written.";

/// The program's commands with the options that they share.
class CommandLine {
  public:
    CommandLine() : mProgram("Turns photographs of business cards into contacts and contact notes.", "qvcardscan") {
        mProgram.set_version_flag("--version", "qvcardscan " QV_VERSION);
        mProgram.footer(kFooter);
        // None at all is found out below, after an unknown word has been named.
        mProgram.require_subcommand(0, 1);
        add(std::make_unique<ScanCommand>());
        add(std::make_unique<ParseCommand>());
        add(std::make_unique<NoteCommand>());
        add(std::make_unique<ContactsCommand>());
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
        StandardStreams::writeError("qvcardscan: " + TerminalText::printableLines(complaint.str()));
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
