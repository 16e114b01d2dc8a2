#pragma once

#include "Support/RunProcess.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

/// The command-line programs that share a folder of cards with this library.
namespace integration {

/// Runs a program of Debian's with a home of its own, in English. The test fails when it does not end well.
inline std::string outputOf(const std::string& program, const std::filesystem::path& home,
                            std::vector<std::string> arguments) {
    const testsupport::ProcessCall call{.program = "/usr/bin/" + program,
                                        .arguments = std::move(arguments),
                                        .input = "",
                                        .environment = {{"HOME", home.string()},
                                                        {"XDG_CONFIG_HOME", std::nullopt},
                                                        {"XDG_DATA_HOME", std::nullopt},
                                                        {"LANG", "C.UTF-8"},
                                                        {"LC_ALL", "C.UTF-8"},
                                                        {"COLUMNS", "500"},
                                                        {"NO_COLOR", "1"}},
                                        .outputFile = std::nullopt};
    const testsupport::ProcessResult result = testsupport::runProcess(call);
    EXPECT_EQ(result.status, 0) << program << ": " << result.output << result.error;
    return result.output + result.error;
}

}  // namespace integration
