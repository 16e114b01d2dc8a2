#include "Support/RunProcess.h"
#include "Support/TemporaryFolder.h"
#include "Support/TestSupport.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <string_view>

// Times differ from machine to machine and from run to run; the number of instructions does not. One that grows by more
// than a fifth is a loss of speed that somebody should know of. Rewritten by QV_UPDATE_GOLDENS=1.

namespace {

using namespace testsupport;
using Counts = std::map<std::string, double>;

std::filesystem::path fileOfCounts() {
    return testsFolder() / "InstructionCounts" / "instruction-counts.txt";
}

Counts expectedCounts() {
    Counts counts;
    std::ifstream file(fileOfCounts());
    std::string path;
    for (double count = 0; file >> path >> count;)
        counts[path] = count;
    return counts;
}

/// The path that a dump is of, and its instructions, from the lines that say so.
void readDump(const std::filesystem::path& dump, Counts& counts) {
    constexpr std::string_view kTrigger = "desc: Trigger: Client Request: ";
    constexpr std::string_view kTotals = "totals: ";
    std::ifstream file(dump);
    std::string path;
    for (std::string line; std::getline(file, line);) {
        if (line.rfind(kTrigger, 0) == 0) path = line.substr(kTrigger.size());
        if (line.rfind(kTotals, 0) == 0 && !path.empty()) counts[path] = std::stod(line.substr(kTotals.size()));
    }
}

Counts measuredCounts() {
    const TemporaryFolder folder;
    ProcessCall call;
    call.program = QV_VALGRIND;
    call.arguments = {"--tool=callgrind", "--collect-atstart=no",
                      "--callgrind-out-file=" + (folder.path() / "dump").string(), QV_TEXT_PATHS};
    const ProcessResult result = runProcess(call);
    EXPECT_EQ(result.status, 0) << result.error;
    Counts counts;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
        readDump(entry.path(), counts);
    return counts;
}

void rewrite(const Counts& counts) {
    std::ofstream file(fileOfCounts());
    for (const auto& [path, count] : counts)
        file << path << ' ' << static_cast<long long>(count) << '\n';
}

TEST(InstructionCounts, OfTheTextPathsHaveNotGrownByAFifth) {
    const Counts measured = measuredCounts();
    ASSERT_FALSE(measured.empty());
    const char* wish = std::getenv("QV_UPDATE_GOLDENS");
    if (wish && std::string_view(wish) == "1") rewrite(measured);
    const Counts expected = expectedCounts();
    EXPECT_EQ(measured.size(), expected.size());
    for (const auto& [path, count] : expected) {
        ASSERT_TRUE(measured.contains(path)) << path;
        EXPECT_LE(measured.at(path), 1.2 * count) << path;
    }
}

}  // namespace
