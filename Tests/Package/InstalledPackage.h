#pragma once

#include "Support/RunProcess.h"
#include "Support/ScriptedServer.h"
#include "Support/TemporaryFolder.h"
#include "Support/TestSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace packagetest {

inline constexpr const char* kAnswer =
    "<recoIndex lang=\"en\"><item fldType=\"name\"><t w=\"90\">ADA EXAMPLE</t></item>"
    "<item fldType=\"email\"><t w=\"90\">ada@example.com</t></item>"
    "<item fldType=\"title\"><t w=\"90\">Engineer</t></item></recoIndex>";

using Environment = std::map<std::string, std::optional<std::string>>;

/// Runs a program; one without a folder is looked up.
inline testsupport::ProcessResult runAny(const std::filesystem::path& program, std::vector<std::string> arguments,
                                         Environment environment = {}) {
    arguments.insert(arguments.begin(), program);
    testsupport::ProcessCall call;
    call.program = "/usr/bin/env";
    call.arguments = std::move(arguments);
    call.environment = std::move(environment);
    return testsupport::runProcess(call);
}

/// The same for one that must succeed.
inline testsupport::ProcessResult run(const std::filesystem::path& program, std::vector<std::string> arguments,
                                      Environment environment = {}) {
    const auto result = runAny(program, std::move(arguments), std::move(environment));
    EXPECT_EQ(result.status, 0) << program << '\n' << result.output << result.error;
    return result;
}

/// What another project sees: the library in a prefix of its own, and nothing of the build that made it.
class InstalledPackage : public testing::Test {
  protected:
    InstalledPackage() { mServer.respond(testsupport::ScriptedServer::answer(200, kAnswer)); }
    void SetUp() override { run("cmake", {"--install", QV_BINARY_DIR, "--prefix", prefix()}); }

    std::string prefix() const { return mFolder / "prefix"; }
    std::string libraries() const { return prefix() + "/" QV_INSTALL_LIBDIR; }
    static std::string examples() { return QV_SOURCE_DIR "/Examples"; }
    static std::string picture() { return testsupport::testsFolder() / "Host/Data/front.jpg"; }

    /// What a host of that prefix finds around it.
    Environment environment() const { return {{"LD_LIBRARY_PATH", libraries()}, {"QVCARDSCAN_TOKEN", "a-token"}}; }

    testsupport::TemporaryFolder mFolder;
    testsupport::ScriptedServer mServer;
};

}  // namespace packagetest
