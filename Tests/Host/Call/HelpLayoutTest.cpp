#include "Support/HostProgram.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace {

using testing::HasSubstr;
using testing::Not;
using testsupport::runHost;

TEST(HelpLayout, FitsATerminalOf80Columns) {
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"--help"},
                                                      {"scan", "--help"},
                                                      {"batch", "--help"},
                                                      {"parse", "--help"},
                                                      {"note", "--help"},
                                                      {"contacts", "--help"}}) {
        const std::string help = runHost(arguments).output;
        std::istringstream lines(help);
        for (std::string line; std::getline(lines, line);) {
            // Columns, not bytes.
            const auto columns = std::count_if(line.begin(), line.end(), [](char c) { return (c & 0xC0) != 0x80; });
            EXPECT_LE(columns, 80) << line;
            EXPECT_FALSE(line.ends_with(' ')) << line;
        }
        EXPECT_THAT(help, HasSubstr("Examples:\n  qvcardscan " + (arguments.size() > 1 ? arguments.front() : "scan")));
        EXPECT_THAT(help, Not(HasSubstr("\n\n\n")));
    }
}

TEST(HelpLayout, FitsAScreen) {
    for (const char* command : {"scan", "batch", "parse", "note", "contacts"}) {
        const std::string help = runHost({command, "--help"}).output;
        EXPECT_LE(std::count(help.begin(), help.end(), '\n'), 40) << command;
    }
}

TEST(HelpLayout, BreaksLongLinesBetweenWords) {
    EXPECT_THAT(runHost({"parse", "--help"}).output,
                HasSubstr("  -v, --verbose, --log  Write the library's log, card text included, to standard\n"
                          "                        error (or set QVCARDSCAN_LOG)\n"));
}

TEST(HelpLayout, NamesTheCommandsInsideOfOne) {
    EXPECT_THAT(runHost({"contacts", "--help"}).output, HasSubstr("\nCommands:\n  list                  List all"));
    EXPECT_THAT(runHost({"contacts", "list", "--help"}).output, HasSubstr("Usage: qvcardscan contacts list"));
}

TEST(HelpLayout, TellsWhatValueAnOptionTakes) {
    const std::string help = runHost({"scan", "--help"}).output;
    EXPECT_THAT(help, HasSubstr("Usage: qvcardscan scan [OPTION…] FRONT [BACK]\n"));
    EXPECT_THAT(help, HasSubstr("\n  -o, --output DIR      Folder"));
    EXPECT_THAT(help, HasSubstr("\n  --json                Print"));
}

}  // namespace
