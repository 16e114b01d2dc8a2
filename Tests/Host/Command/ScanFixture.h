#pragma once

#include "QVPlatform/MD5.h"
#include "Support/HostProgram.h"
#include "Support/ReadFile.h"
#include "Support/ScriptedServer.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace testsupport {

/// `scan` against a server in the test, with the token in the environment.
class ScanFixture : public testing::Test {
  protected:
    static constexpr const char* kSecret = "s3cret-t0ken-for-tests";

    void answerWith(const std::string& name) { mServer.respond(ScriptedServer::answer(200, readFile(hostData(name)))); }

    ProcessCall call(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), "scan");
        arguments.insert(arguments.end(), {"--server", mServer.url("/recognise")});
        ProcessCall call = hostCall(std::move(arguments));
        call.environment["QVCARDSCAN_TOKEN"] = kSecret;
        call.environment["XDG_DATA_HOME"] = (mFolder / "data").string();
        return call;
    }
    ProcessResult scan(std::vector<std::string> arguments) const { return runProcess(call(std::move(arguments))); }

    static std::string md5Of(const std::string& bytes) { return qv::lowerHexMD5(qv::Data(bytes.begin(), bytes.end())); }

    ScriptedServer mServer;
    TemporaryFolder mFolder;
    std::string mFront = hostData("front.jpg");
    std::string mBack = hostData("back.png");
};

}  // namespace testsupport
