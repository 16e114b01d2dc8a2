#include "Support/HostProgram.h"
#include "Support/ScriptedServer.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testsupport::ProcessResult;

class ServeCommand : public testing::Test {
  protected:
    ProcessResult serve(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), "serve");
        testsupport::ProcessCall call = testsupport::hostCall(std::move(arguments));
        call.environment["XDG_DATA_HOME"] = mFolder.path().string();
        call.environment["TMPDIR"] = mFolder.path().string();
        return runProcess(call);
    }

    testsupport::TemporaryFolder mFolder;
};

TEST_F(ServeCommand, HelpFitsAScreenAndHasExamples) {
    const ProcessResult help = serve({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_LE(std::count(help.output.begin(), help.output.end(), '\n'), 50);
    EXPECT_THAT(help.output, HasSubstr("qvcardscan serve --port 8080"));
}

TEST_F(ServeCommand, WrongCallsAreToldBeforeAnythingIsServed) {
    const std::vector<std::vector<std::string>> calls = {
        {"--port", "65536"},
        {"--port", "x"},
        {"--port", "-1"},
        {"--listen", "example.com"},
        {"--listen", ""},
        {"--key-file", (mFolder / "none").string()},
        {"--language", "a b"},
        {"--server", "ftp://x"},
        {"--carddav", "http://u:p@x"},
        {"extra"},
    };
    for (const auto& call : calls) {
        const ProcessResult result = serve(call);
        EXPECT_EQ(result.status, 2) << call.front();
        EXPECT_THAT(result.output, IsEmpty());
        EXPECT_THAT(result.error, Not(IsEmpty()));
    }
}

TEST_F(ServeCommand, WhatIsNoPortOrAddressIsToldInWords) {
    for (const char* port : {"65536", "-1", "x", "80x", " 80"}) {
        EXPECT_THAT(serve({std::string("--port=") + port}).error,
                    HasSubstr("--port: a number from 0 to 65535 is needed here."))
            << port;
    }
    for (const char* address : {"300.1.1.1", "127.0.0", "1:2", "...", "abc"}) {
        EXPECT_THAT(serve({"--listen", address}).error,
                    HasSubstr("--listen: an address in numbers is needed here, such as 127.0.0.1 or 0.0.0.0."))
            << address;
    }
}

TEST_F(ServeCommand, AnAddressOfAnotherMachineIsNamed) {
    // Of a network that is kept for documentation.
    const ProcessResult result = serve({"--listen", "192.0.2.1"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, HasSubstr("shown at 192.0.2.1: "));
    EXPECT_THAT(result.error, HasSubstr("Choose another --listen."));
}

TEST_F(ServeCommand, AKeyThatCouldBeGuessedIsRefusedAndNotRepeated) {
    mFolder.write("key", "swordfish\n");
    const ProcessResult result = serve({"--key-file", (mFolder / "key").string()});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.error, HasSubstr("16 to 128 letters"));
    EXPECT_THAT(result.error, Not(HasSubstr("swordfish")));
}

TEST_F(ServeCommand, APortThatIsTakenIsNamed) {
    const testsupport::ScriptedServer other;
    const ProcessResult result = serve({"--port", std::to_string(other.port())});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, HasSubstr("port " + std::to_string(other.port())));
    EXPECT_THAT(result.error, HasSubstr("Choose another --port"));
}

}  // namespace
