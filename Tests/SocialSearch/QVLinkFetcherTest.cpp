#include "QVSocialSearch/QVLinkFetcher.h"
#include "SocialFixtures.h"
#include "Support/CapturedLog.h"
#include "Support/ScriptedServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using testing::ElementsAre;
using testsupport::Gate;
using testsupport::ScriptedServer;

class QVLinkFetcherTest : public testing::Test {
  protected:
    QVLinkFetcherTest() {
        mPolicy.allowsPrivateAddresses = true;
        QVLinkFetcher::setPolicy(mPolicy);
    }
    ~QVLinkFetcherTest() override {
        QVLinkFetcher::setPolicy({});
        QVLinkFetcher::setFetcher({});
    }

    QVLinkPolicy mPolicy;
    ScriptedServer mServer;
};

TEST_F(QVLinkFetcherTest, FetchesWhatTheLinkLeadsTo) {
    mServer.respond(ScriptedServer::answer(200, "picture"));
    EXPECT_EQ(QVLinkFetcher::contentsOfLink(mServer.url("/a.png")), social::bytes("picture"));
    ASSERT_EQ(mServer.requests().size(), 1U);
    EXPECT_EQ(mServer.requests().front().method, "GET");
    EXPECT_EQ(mServer.requests().front().target, "/a.png");
}

TEST_F(QVLinkFetcherTest, KeepsOutOfTheOwnNetworkByDefault) {
    EXPECT_FALSE(QVLinkPolicy().allowsPrivateAddresses);
    EXPECT_EQ(QVLinkPolicy().maximumSize, 16777216U);
    QVLinkFetcher::setPolicy({});
    mServer.respond(ScriptedServer::answer(200, "secret"));
    EXPECT_EQ(QVLinkFetcher::contentsOfLink(mServer.url()), std::nullopt);
    EXPECT_EQ(QVLinkFetcher::contentsOfLink("http://localhost:" + std::to_string(mServer.port()) + "/"), std::nullopt);
    EXPECT_EQ(QVLinkFetcher::contentsOfLink("http://[::1]:" + std::to_string(mServer.port()) + "/"), std::nullopt);
    EXPECT_EQ(mServer.connectionCount(), 0U);
}

TEST_F(QVLinkFetcherTest, FollowsRedirectsToHTTPOnly) {
    mServer.respond(ScriptedServer::answer(302, "", "Location: /b\r\n"));
    mServer.respond(ScriptedServer::answer(200, "moved"));
    mServer.respond(ScriptedServer::answer(302, "", "Location: file:///etc/passwd\r\n"));
    EXPECT_EQ(QVLinkFetcher::contentsOfLink(mServer.url("/a")), social::bytes("moved"));
    EXPECT_EQ(QVLinkFetcher::contentsOfLink(mServer.url("/a")), std::nullopt);
}

TEST_F(QVLinkFetcherTest, TakesNoOtherStatusAndNoEmptyAnswer) {
    mServer.respond(ScriptedServer::answer(404, "not found"));
    mServer.respond(ScriptedServer::answer(204, ""));
    mServer.respond(ScriptedServer::answer(200, ""));
    for (int count = 0; count < 3; ++count)
        EXPECT_EQ(QVLinkFetcher::contentsOfLink(mServer.url()), std::nullopt);
    EXPECT_EQ(mServer.requests().size(), 3U);
}

TEST_F(QVLinkFetcherTest, TakesNoMoreThanItMay) {
    mPolicy.maximumSize = 4;
    QVLinkFetcher::setPolicy(mPolicy);
    mServer.respond(ScriptedServer::answer(200, "1234"));
    mServer.respond(ScriptedServer::answer(200, "12345"));
    EXPECT_EQ(QVLinkFetcher::contentsOfLink(mServer.url()), social::bytes("1234"));
    EXPECT_EQ(QVLinkFetcher::contentsOfLink(mServer.url()), std::nullopt);
}

TEST_F(QVLinkFetcherTest, GivesUpWhenTheTimeIsOver) {
    mPolicy.totalSeconds = 0;
    QVLinkFetcher::setPolicy(mPolicy);
    const auto never = std::make_shared<Gate>();
    mServer.respondAfter(never, ScriptedServer::answer(200, "late"));
    EXPECT_EQ(QVLinkFetcher::contentsOfLink(mServer.url()), std::nullopt);
    EXPECT_FALSE(never->isOpen());
}

TEST_F(QVLinkFetcherTest, TakesNothingThatIsNoWebAddress) {
    for (const QVString& link : {QVString(), QVString(""), QVString(" "), QVString("/a.png"), QVString("http://"),
                                 QVString("file:///etc/hostname"), QVString("ftp://127.0.0.1/"),
                                 QVString("data:text/plain,abc"), QVString("http://exa mple.com/")}) {
        EXPECT_EQ(QVLinkFetcher::contentsOfLink(link), std::nullopt) << link.value_or("(null)");
    }
}

TEST_F(QVLinkFetcherTest, LeavesTheFetchingToTheHost) {
    QVLinkFetcher::setFetcher([](const std::string& link) { return social::bytes("host's " + link); });
    EXPECT_EQ(QVLinkFetcher::contentsOfLink("app:picture"), social::bytes("host's app:picture"));
    EXPECT_EQ(QVLinkFetcher::contentsOfLink(std::nullopt), std::nullopt);
    QVLinkFetcher::setFetcher({});
    EXPECT_EQ(QVLinkFetcher::contentsOfLink("app:picture"), std::nullopt);
}

TEST_F(QVLinkFetcherTest, TakesWhatTheHostThrowsForNothing) {
    const testsupport::CapturedLog log;
    QVLinkFetcher::setFetcher([](const std::string&) -> std::optional<qv::Data> { throw std::runtime_error("host"); });
    EXPECT_EQ(QVLinkFetcher::contentsOfLink("http://example.com/"), std::nullopt);
    EXPECT_THAT(log.messages(), ElementsAre("<ERROR> Exception from the host's link fetcher: host"));
    QVLinkFetcher::setFetcher([](const std::string&) -> std::optional<qv::Data> { throw 7; });
    EXPECT_EQ(QVLinkFetcher::contentsOfLink("http://example.com/"), std::nullopt);
    EXPECT_EQ(log.messages().back(), "<ERROR> Exception from the host's link fetcher");
}

}  // namespace
