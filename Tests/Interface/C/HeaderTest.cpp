#include "Support/ReadFile.h"
#include "Support/RunProcess.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <sstream>
#include <string>

namespace {

using testing::IsEmpty;

const std::string kHeader = QV_SOURCE_DIR "/Interface/C/qvcardscan.h";

testsupport::ProcessResult run(std::vector<std::string> arguments) {
    testsupport::ProcessCall call;
    call.program = "/usr/bin/env";
    call.arguments = std::move(arguments);
    return testsupport::runProcess(call);
}

/// The names of the functions that the header declares.
std::set<std::string> declaredNames() {
    const std::string header = testsupport::readFile(kHeader);
    const std::regex declaration("QV_C_API [^;]*?(qv_[a-z_]+)\\(");
    std::set<std::string> names;
    for (std::sregex_iterator match(header.begin(), header.end(), declaration), end; match != end; ++match)
        names.insert((*match)[1]);
    return names;
}

TEST(Header, IsCAndCPlusPlus) {
    const testsupport::TemporaryFolder folder;
    const std::string source = folder.write("host.c", "#include \"" + kHeader + "\"\n#include \"" + kHeader + "\"\n");
    for (const char* standard : {"-std=c11", "-std=c2x"}) {
        const auto result = run({"cc", standard, "-Wall", "-Wextra", "-Wpedantic", "-Werror", "-Wstrict-prototypes",
                                 "-Wc++-compat", "-fsyntax-only", source});
        EXPECT_EQ(result.status, 0) << standard << '\n' << result.error;
    }
    for (const char* standard : {"-std=c++11", "-std=c++20"}) {
        const auto result =
            run({"c++", "-x", "c++", standard, "-Wall", "-Wextra", "-Wpedantic", "-Werror", "-fsyntax-only", source});
        EXPECT_EQ(result.status, 0) << standard << '\n' << result.error;
    }
}

TEST(Header, DeclaresExactlyWhatTheLibraryExports) {
    const auto result = run({"nm", "-D", "--defined-only", "--format=posix", QV_BINARY_DIR "/lib/libqvcardscan-c.so"});
    ASSERT_EQ(result.status, 0) << result.error;
    std::set<std::string> exported;
    std::istringstream lines(result.output);
    for (std::string line; std::getline(lines, line);)
        exported.insert(line.substr(0, line.find(' ')));
    EXPECT_GT(declaredNames().size(), 40U);
    EXPECT_EQ(exported, declaredNames());
}

TEST(Header, NamesItsSoname) {
    const auto result = run({"objdump", "-p", QV_BINARY_DIR "/lib/libqvcardscan-c.so"});
    EXPECT_THAT(result.output, testing::HasSubstr("libqvcardscan-c.so.1"));
    EXPECT_THAT(result.error, IsEmpty());
}

}  // namespace
