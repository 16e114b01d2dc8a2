#include "Support/ReadFile.h"
#include "Support/RunProcess.h"
#include "Support/ScriptedServer.h"
#include "Support/TemporaryFolder.h"
#include "Support/TestSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using testsupport::ProcessResult;
using testsupport::TemporaryFolder;

constexpr const char* kAnswer =
    "<recoIndex lang=\"en\"><item fldType=\"name\"><t w=\"90\">ADA EXAMPLE</t></item>"
    "<item fldType=\"email\"><t w=\"90\">ada@example.com</t></item>"
    "<item fldType=\"title\"><t w=\"90\">Engineer</t></item></recoIndex>";

/// Runs a program that must succeed; one without a folder is looked up.
ProcessResult run(const std::filesystem::path& program, std::vector<std::string> arguments,
                  std::map<std::string, std::optional<std::string>> environment = {}) {
    arguments.insert(arguments.begin(), program);
    const auto result = testsupport::runProcess({.program = "/usr/bin/env",
                                                 .arguments = std::move(arguments),
                                                 .input = {},
                                                 .environment = std::move(environment),
                                                 .outputFile = {}});
    EXPECT_EQ(result.status, 0) << result.output << result.error;
    return result;
}

/// What another project sees: the library in a prefix of its own, and nothing of the build that made it.
class InstalledPackage : public testing::Test {
  protected:
    void SetUp() override { run("cmake", {"--install", QV_BINARY_DIR, "--prefix", prefix()}); }

    std::string prefix() const { return mFolder / "prefix"; }
    std::string consumerSource() const { return testsupport::testsFolder() / "Package/Consumer"; }

    /// A card through the consumer against a server that answers at once.
    void expectConsumerReadsACard(const std::filesystem::path& consumer) {
        testsupport::ScriptedServer server;
        server.respond(testsupport::ScriptedServer::answer(200, kAnswer));
        const auto result = run(consumer, {server.url(), testsupport::testsFolder() / "Host/Data/front.jpg"},
                                {{"LD_LIBRARY_PATH", prefix() + "/" QV_INSTALL_LIBDIR}});
        EXPECT_THAT(result.output, StartsWith("Ada Example\n0 errors\n"));
        EXPECT_THAT(result.output, testing::Not(HasSubstr("\n0 bytes")));
        EXPECT_EQ(server.requests().size(), 1U);
    }

    TemporaryFolder mFolder;
};

TEST_F(InstalledPackage, ServesACMakeProject) {
    const std::string build = mFolder / "consumer";
    run("cmake", {"-S", consumerSource(), "-B", build, "-G", "Ninja", "-DCMAKE_PREFIX_PATH=" + prefix(),
                  "-DCMAKE_CXX_COMPILER=" QV_CXX_COMPILER, "-DCMAKE_CXX_FLAGS=" QV_CXX_FLAGS});
    run("cmake", {"--build", build});
    expectConsumerReadsACard(build + "/consumer");
}

TEST_F(InstalledPackage, ServesAPkgConfigProject) {
    const std::string consumer = mFolder / "consumer";
    const std::string command =
        QV_CXX_COMPILER " " QV_CXX_FLAGS " \"$1\" -o \"$2\" $(pkg-config --cflags --libs QVCardScan)";
    run("sh", {"-c", command, "sh", consumerSource() + "/main.cpp", consumer},
        {{"PKG_CONFIG_PATH", prefix() + "/" QV_INSTALL_LIBDIR "/pkgconfig"}});
    expectConsumerReadsACard(consumer);
}

TEST_F(InstalledPackage, BringsHeadersThatStandOnTheirOwn) {
    std::string everything;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(prefix() + "/include")) {
        if (entry.is_regular_file()) everything += "#include \"" + entry.path().string() + "\"\n";
    }
    ASSERT_THAT(everything, HasSubstr("QVCardScan/QVBizCardManager.h"));
    EXPECT_THAT(everything, testing::Not(HasSubstr("+Write.h")));
    const auto file = mFolder.write("all.cpp", everything + "int main() {}\n");
    const auto result = run(QV_CXX_COMPILER, {"-std=c++20", "-Wall", "-Wextra", "-Wpedantic", "-Werror",
                                              "-fsyntax-only", "-I", prefix() + "/include", file});
    EXPECT_THAT(result.error, IsEmpty());
}

TEST_F(InstalledPackage, ExportsOnlyItsOwnNames) {
    const std::string command =
        "nm -D --defined-only --demangle \"$1\" | awk '$2 ~ /[TBD]/ && !/ (qv::|QV|kQV|typeinfo|vtable|thunk|"
        "construction vtable|non-virtual|virtual|imageByScaling|JPEGRepresentation|_init|_fini)/'";
    for (const char* library : {"libQVPlatform.so", "libQVCardScan.so", "libQVSocialSearch.so"}) {
        const auto result = run("sh", {"-c", command, "sh", prefix() + "/" QV_INSTALL_LIBDIR "/" + library});
        EXPECT_THAT(result.output, IsEmpty()) << library;
    }
}

TEST_F(InstalledPackage, ScansFromItsPrefix) {
    testsupport::ScriptedServer server;
    server.respond(testsupport::ScriptedServer::answer(200, kAnswer));
    const auto result = run(prefix() + "/bin/qvcardscan",
                            {"scan", testsupport::testsFolder() / "Host/Data/front.jpg", "--server", server.url()},
                            {{"QVCARDSCAN_TOKEN", "a-token"}});
    EXPECT_THAT(result.output, HasSubstr("Ada Example"));
}

}  // namespace
