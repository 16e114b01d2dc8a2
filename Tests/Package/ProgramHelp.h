#pragma once

#include "Support/RunProcess.h"

#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

/// What the programs say of themselves: everything else that tells of their options is held against it.
namespace packaging {

inline const std::vector<std::string> kPrograms = {"qvcardscan", "qvcardrecod"};

inline std::string programPath(const std::string& program) {
    return QV_BINARY_DIR "/bin/" + program;
}

/// One command of a program, or the program itself, with what its help offers.
struct CommandHelp {
    std::vector<std::string> command;
    std::set<std::string> options;  ///< "--json", "-o"
    std::set<std::string> commands;

    std::set<std::string> longOptions() const {
        std::set<std::string> names;
        for (const auto& option : options) {
            if (option.starts_with("--")) names.insert(option);
        }
        return names;
    }
};

inline CommandHelp helpOf(const std::string& program, const std::vector<std::string>& command) {
    testsupport::ProcessCall call;
    call.program = programPath(program);
    call.arguments = command;
    call.arguments.emplace_back("--help");
    std::istringstream lines(testsupport::runProcess(call).output);
    CommandHelp help{command, {}, {}};
    std::string section;
    static const std::regex heading("^([^ ].*):$");
    static const std::regex entry("^  ([^ ]+)(.*)$");
    static const std::regex option("(--?[A-Za-z][-A-Za-z0-9]*)(?:, ?| |$)");
    std::smatch match;
    for (std::string line; std::getline(lines, line);) {
        if (std::regex_match(line, match, heading)) section = match[1];
        if (!std::regex_match(line, match, entry)) continue;
        const std::string head = line.substr(2, line.find("  ", 2) - 2);
        if (line[2] == '-') {
            for (std::sregex_iterator found(head.begin(), head.end(), option), end; found != end; ++found)
                help.options.insert((*found)[1]);
        } else if (section == "Commands") {
            help.commands.insert(match[1]);
        }
    }
    return help;
}

/// The program and all of its commands, and theirs.
inline std::vector<CommandHelp> everyHelpOf(const std::string& program, const std::vector<std::string>& command = {}) {
    std::vector<CommandHelp> all{helpOf(program, command)};
    const std::set<std::string> names = all.front().commands;
    for (const auto& name : names) {
        std::vector<std::string> inner = command;
        inner.push_back(name);
        const auto more = everyHelpOf(program, inner);
        all.insert(all.end(), more.begin(), more.end());
    }
    return all;
}

}  // namespace packaging
