#pragma once

#include <chrono>
#include <csignal>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace testsupport {

/// A program to run as a child of the test.
struct ProcessCall {
    std::filesystem::path program;
    std::vector<std::string> arguments;
    std::string input;
    /// Changes to the test's own environment; an absent value removes the variable.
    std::map<std::string, std::optional<std::string>> environment;
    /// A file to be its standard output instead of a pipe.
    std::optional<std::filesystem::path> outputFile;
    /// Whether it starts with its standard output closed.
    bool closesOutput = false;
    /// Whether its standard error is a terminal.
    bool errorIsTerminal = false;
    /// After this it is sent that signal, and waited for.
    std::chrono::milliseconds limit{120000};
    int signalAtLimit = SIGKILL;
};

struct ProcessResult {
    /// The exit status; the negative number of the signal that ended it.
    int status = 0;
    bool timedOut = false;
    std::string output;
    std::string error;
};

/// Runs a program to its end. Throws `std::system_error` when it cannot be started.
ProcessResult runProcess(const ProcessCall& call);

}  // namespace testsupport
