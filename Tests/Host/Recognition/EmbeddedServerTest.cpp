#include "QVPlatform/HTTPClient.h"
#include "Recognition/EmbeddedServer.h"
#include "Support/HostProgram.h"
#include "Support/ReadFile.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <csignal>
#include <cstdlib>

namespace {

using nlohmann::ordered_json;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testsupport::hostCall;
using testsupport::hostData;
using testsupport::ProcessCall;
using testsupport::readFile;
using testsupport::runProcess;
using testsupport::TemporaryFolder;

const std::string kQuietStart = "--embedded --workers 1 --quiet\n";

/// The whole program with a server of its own that a stand-in plays.
class EmbeddedServer : public testing::Test {
  protected:
    EmbeddedServer() { mFolder.write("answer.xml", readFile(hostData("front.xml"))); }

    ProcessCall call(std::vector<std::string> more = {}) const {
        std::vector<std::string> arguments{"scan", hostData("front.jpg"), "--recognizer",
                                           testsupport::fakeRecognizer()};
        arguments.insert(arguments.end(), more.begin(), more.end());
        ProcessCall call = hostCall(std::move(arguments));
        call.environment["FAKE_RECOD"] = mFolder.path().string();
        return call;
    }
    std::string noted(const char* name) const { return readFile(mFolder / name); }

    TemporaryFolder mFolder;
};

TEST_F(EmbeddedServer, IsStartedAskedAndEnded) {
    const auto result = runProcess(call({"--language", "fr"}));
    EXPECT_EQ(result.status, 0) << result.error;
    EXPECT_THAT(result.output, HasSubstr("Ada Example"));
    // The stand-in answers every language with an English result.
    EXPECT_THAT(result.error, HasSubstr("the server does not have \"fr\""));
    EXPECT_THAT(noted("starts"), testing::StartsWith(kQuietStart));
    EXPECT_THAT(noted("requests"), testing::StartsWith("token right language fr bytes "));
}

TEST_F(EmbeddedServer, IsNotSpokenOfWhenAllIsWell) {
    EXPECT_THAT(runProcess(call()).error, IsEmpty());
}

TEST_F(EmbeddedServer, SpeaksOnlyWhenAsked) {
    ASSERT_EQ(runProcess(call({"--verbose"})).status, 0);
    EXPECT_THAT(noted("starts"), testing::StartsWith("--embedded --workers 1 --verbose\n"));
}

TEST_F(EmbeddedServer, DoesNotSeeSecretsForOthers) {
    auto withSecrets = call();
    withSecrets.environment["QVCARDSCAN_TOKEN"] = "for-somebody-else";
    withSecrets.environment["QVCARDSCAN_SEARCH_KEY"] = "for-the-search";
    withSecrets.environment["QVCARDSCAN_SEARCH_SECRET"] = "for-the-search";
    ASSERT_EQ(runProcess(withSecrets).status, 0);
    EXPECT_EQ(noted("own-variables"), "hidden\n");
}

TEST_F(EmbeddedServer, ThatDiesInTheMiddleIsStartedAgain) {
    mFolder.write("mode", "dies");
    const auto result = runProcess(call({"--json"}));
    EXPECT_EQ(result.status, 0) << result.error;
    const ordered_json object = ordered_json::parse(result.output);
    EXPECT_EQ(object["errors"], ordered_json::array());
    EXPECT_EQ(object["card"]["fullName"], "Ada Example");
    EXPECT_THAT(noted("starts"), testing::StartsWith(kQuietStart + kQuietStart));
    EXPECT_THAT(result.error, HasSubstr("starting it again"));
}

TEST_F(EmbeddedServer, ThatEndsAtOnceIsAnError) {
    mFolder.write("mode", "ends");
    const auto result = runProcess(call({"--json"}));
    EXPECT_EQ(result.status, 1);
    const ordered_json expected =
        ordered_json::array({{{"domain", "kQVCardProcessingErrorDomain"}, {"code", 1}, {"underlying", nullptr}}});
    EXPECT_EQ(ordered_json::parse(result.output)["errors"], expected);
    EXPECT_THAT(result.error, HasSubstr("ended before it was ready"));
    EXPECT_EQ(noted("starts"), kQuietStart);
}

TEST_F(EmbeddedServer, ThatSaysNoPortIsAnError) {
    mFolder.write("mode", "garbage");
    const auto result = runProcess(call());
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, HasSubstr("did not say where it listens"));
}

TEST_F(EmbeddedServer, ThatIsNotThereIsAnError) {
    auto missing = call();
    missing.arguments[3] = (mFolder / "nowhere").string();
    const auto result = runProcess(missing);
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, HasSubstr((mFolder / "nowhere").string()));
    EXPECT_THAT(result.error, HasSubstr("--server"));
}

TEST_F(EmbeddedServer, EndsWhenTheProgramIsInterrupted) {
    mFolder.write("mode", "interrupts");
    // The two share standard error: that it was read to its end shows that both have ended.
    const auto result = runProcess(call());
    EXPECT_FALSE(result.timedOut);
    EXPECT_EQ(result.status, -SIGINT);
    EXPECT_EQ(noted("starts"), kQuietStart + "ended in good order\n");
}

TEST_F(EmbeddedServer, IsNotStartedForWhatIsNoPicture) {
    auto wrong = call();
    wrong.arguments[1] = hostData("front.xml");
    EXPECT_EQ(runProcess(wrong).status, 2);
    EXPECT_FALSE(std::filesystem::exists(mFolder / "starts"));
}

/// The class by itself.
class EmbeddedServerObject : public EmbeddedServer {
  protected:
    EmbeddedServerObject() { ::setenv("FAKE_RECOD", mFolder.path().c_str(), 1); }
    ~EmbeddedServerObject() override { ::unsetenv("FAKE_RECOD"); }

    qvhost::EmbeddedServer mServer{{testsupport::fakeRecognizer()}};
};

TEST_F(EmbeddedServerObject, StaysForTheNextCard) {
    const auto first = mServer.access();
    const auto second = mServer.access();
    ASSERT_TRUE(first && second);
    EXPECT_EQ(first->url, second->url);
    EXPECT_EQ(first->token, second->token);
    EXPECT_GE(first->token.size(), 32U);
    EXPECT_FALSE(mServer.hasEnded());
    EXPECT_EQ(noted("starts"), kQuietStart);
}

TEST_F(EmbeddedServerObject, IsStartedAgainWithANewSecretOnceItHasEnded) {
    mFolder.write("mode", "dies");
    const auto first = mServer.access();
    ASSERT_TRUE(first);
    qv::HTTPRequest request{"POST", *qv::URL::URLWithString(first->url), {}, qv::Data{1}};
    EXPECT_TRUE(qv::HTTPClient::sendSynchronousRequest(request).error.has_value());
    EXPECT_TRUE(mServer.hasEnded());
    const auto second = mServer.access();
    ASSERT_TRUE(second);
    EXPECT_NE(first->token, second->token);
    EXPECT_EQ(noted("starts"), kQuietStart + kQuietStart);
}

}  // namespace
