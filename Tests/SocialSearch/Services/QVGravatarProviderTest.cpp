#include "QVSocialSearch/QVGravatarProvider.h"
#include "SocialSearch/Services/GravatarFixture.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testsupport::Gate;
using testsupport::ScriptedServer;

constexpr const char* kProfile = R"({"job_title": "Structural Engineer", "company": "Example Bridges Ltd."})";

class QVGravatarProviderTest : public social::GravatarFixture {};

TEST_F(QVGravatarProviderTest, AsksForTheDigestOfTheTrimmedLowerCaseAddress) {
    mService.respond(ScriptedServer::answer(404, R"({"error":"Profile not found","code":"profile_not_found"})"));
    EXPECT_EQ(find(provider(), " \tJordan@Example.COM\n"), nullptr);
    ASSERT_EQ(asked(), 1U);
    EXPECT_EQ(mService.requests().front().method, "GET");
    EXPECT_EQ(mService.requests().front().target,
              "/v3/profiles/8cfbbd129c8030c0ab06c9412ab30dc66bbe2de233d3d9dc07af5e21738ec7f2");
    EXPECT_EQ(mService.requests().front().header("Accept"), "application/json");
    EXPECT_EQ(mService.requests().front().header("User-Agent"), "QVSocialSearch");
    EXPECT_EQ(mService.requests().front().header("Authorization"), std::nullopt);
    EXPECT_THAT(mLog.messages(), IsEmpty()) << "not to be found is no failure";
}

TEST_F(QVGravatarProviderTest, TakesAnAddressWithOrWithoutAStrokeAtItsEnd) {
    mService.respond(ScriptedServer::answer(404, ""));
    const auto slashed = providerAt(mService.url("") + "//");
    EXPECT_EQ(slashed->name(), "Gravatar");
    find(slashed);
    ASSERT_EQ(asked(), 1U);
    EXPECT_TRUE(mService.requests().front().target.starts_with("/v3/profiles/")) << mService.requests().front().target;
}

struct HostileRow {
    const char* name;
    std::string body;
};

class GravatarHostileTest : public social::GravatarFixture, public testing::WithParamInterface<HostileRow> {};

TEST_P(GravatarHostileTest, FindsNobodyAndForgetsIt) {
    mService.respond(ScriptedServer::answer(200, GetParam().body));
    mService.respond(ScriptedServer::answer(200, kProfile));
    const auto service = provider();
    EXPECT_EQ(find(service), nullptr);
    EXPECT_EQ(mLog.messages().size(), 1U);
    EXPECT_NE(find(service), nullptr) << "an answer that cannot be read is asked for again";
}

INSTANTIATE_TEST_SUITE_P(
    Rows, GravatarHostileTest,
    testing::Values(HostileRow{"Empty", ""}, HostileRow{"Page", "<html><body>Hello</body></html>"},
                    HostileRow{"Cut", R"({"job_title": "Eng)"}, HostileRow{"List", R"([{"job_title": "x"}])"},
                    HostileRow{"Text", R"("x")"}, HostileRow{"Null", "null"},
                    HostileRow{"BrokenUTF8", "{\"job_title\": \"\xFF\xFE\"}"},
                    HostileRow{"Deep", R"({"links": )" + std::string(100'000, '[') + std::string(100'000, ']') + "}"},
                    HostileRow{"DeepAndOpen", std::string(400'000, '[')},
                    HostileRow{"Huge", R"({"job_title": ")" + std::string(2'000'000, 'x') + "\"}"}),
    [](const auto& row) { return row.param.name; });

class GravatarPictureTest : public social::GravatarFixture {
  protected:
    std::shared_ptr<QVSocialProfile> foundWithPicture(const std::string& link) {
        return found(R"({"company": "C", "avatar_url": ")" + link + "\"}");
    }
};

TEST_F(GravatarPictureTest, ArrivesAsBytesAndNeverAsALink) {
    mElsewhere.respond(pictureAnswer());
    const auto profile = foundWithPicture(mElsewhere.url("/avatar/27205e5c"));
    ASSERT_NE(profile, nullptr);
    EXPECT_EQ(profile->addressBookAvatarData(), picture());
    EXPECT_EQ(profile->avatarURLLinkedIn(), std::nullopt);
    EXPECT_EQ(profile->avatarURLFacebookBig(), std::nullopt);
    ASSERT_EQ(mElsewhere.requests().size(), 1U);
    EXPECT_EQ(mElsewhere.requests().front().target, "/avatar/27205e5c?s=512&d=404");
}

TEST_F(GravatarPictureTest, KeepsTheLinksOwnQuery) {
    mElsewhere.respond(pictureAnswer());
    foundWithPicture(mElsewhere.url("/a?v=2#top"));
    ASSERT_EQ(mElsewhere.requests().size(), 1U);
    EXPECT_EQ(mElsewhere.requests().front().target, "/a?v=2&s=512&d=404");
}

TEST_F(GravatarPictureTest, IsNotFetchedFromTheOwnNetwork) {
    allowPrivateAddresses(false);
    mElsewhere.respond(pictureAnswer());
    const auto profile = foundWithPicture(mElsewhere.url("/a"));
    ASSERT_NE(profile, nullptr) << "the service itself is the host's choice";
    EXPECT_EQ(profile->addressBookAvatarData(), std::nullopt);
    EXPECT_EQ(mElsewhere.connectionCount(), 0U);
}

TEST_F(GravatarPictureTest, IsOnlyFetchedFromTheWeb) {
    for (const char* link :
         {"file:///etc/hostname", "data:image/png;base64,AAAA", "ftp://127.0.0.1/a", "/a", " ", "x:"}) {
        const auto profile = foundWithPicture(link);
        ASSERT_NE(profile, nullptr) << link;
        EXPECT_EQ(profile->addressBookAvatarData(), std::nullopt) << link;
    }
}

TEST_F(GravatarPictureTest, IsLeftOutWhenItIsNone) {
    mElsewhere.respond(ScriptedServer::answer(404, "404 Not Found"));
    mElsewhere.respond(ScriptedServer::answer(200, "<html>not a picture</html>"));
    mElsewhere.respond(ScriptedServer::answer(200, ""));
    mElsewhere.respond(ScriptedServer::answer(500, ""));
    for (int count = 0; count < 4; ++count) {
        const auto profile = foundWithPicture(mElsewhere.url("/a"));
        ASSERT_NE(profile, nullptr);
        EXPECT_EQ(profile->addressBookAvatarData(), std::nullopt);
    }
    EXPECT_EQ(mElsewhere.requests().size(), 4U);
}

TEST_F(GravatarPictureTest, IsLeftOutWhenItIsLateAndTriedAgainAfterAnHour) {
    const auto never = std::make_shared<Gate>();
    mElsewhere.respondAfter(never, pictureAnswer());
    mService.respond(ScriptedServer::answer(200, R"({"company": "C", "avatar_url": ")" + mElsewhere.url() + "\"}"));
    const auto service = provider();
    const auto profile = find(service, "jordan@example.com", social::soonOver());
    ASSERT_NE(profile, nullptr) << "the rest is there";
    EXPECT_EQ(profile->addressBookAvatarData(), std::nullopt);
    never->open();
    mElsewhere.respond(pictureAnswer());
    pass(59min);
    EXPECT_EQ(find(service)->addressBookAvatarData(), std::nullopt);
    EXPECT_EQ(asked(), 1U);
    pass(1min);
    EXPECT_EQ(find(service)->addressBookAvatarData(), picture());
    EXPECT_EQ(asked(), 2U);
}

class GravatarFailureTest : public social::GravatarFixture {
  protected:
    /// One failure, then an answer: failures are not remembered.
    void expectFailure(const std::string& message) {
        mService.respond(ScriptedServer::answer(200, kProfile));
        const auto service = provider();
        EXPECT_EQ(find(service), nullptr);
        EXPECT_THAT(mLog.messages(), ElementsAre(message));
        EXPECT_NE(find(service), nullptr);
    }
};

TEST_F(GravatarFailureTest, IsNotRememberedAfterAServerError) {
    mService.respond(ScriptedServer::answer(500, R"({"error":"internal"})"));
    expectFailure("<WARNING> Gravatar answered with status 500");
}

TEST_F(GravatarFailureTest, IsNotRememberedAfterARefusedKey) {
    mService.respond(ScriptedServer::answer(401, R"({"error":"invalid key"})"));
    expectFailure("<WARNING> Gravatar answered with status 401");
}

TEST_F(GravatarFailureTest, IsNotRememberedAfterABrokenConnection) {
    mService.handle([](testsupport::ScriptedConnection& connection, const auto&) { connection.reset(); });
    mService.handle([](testsupport::ScriptedConnection& connection, const auto&) { connection.reset(); });
    mService.respond(ScriptedServer::answer(200, kProfile));
    const auto service = provider();
    EXPECT_EQ(find(service), nullptr);
    ASSERT_FALSE(mLog.messages().empty());
    EXPECT_TRUE(mLog.messages().front().starts_with("<WARNING> Gravatar could not be asked: error "));
}

TEST_F(GravatarFailureTest, IsTheEndOfARedirect) {
    mService.respond(ScriptedServer::answer(302, "", "Location: " + mElsewhere.url() + "\r\n"));
    expectFailure("<WARNING> Gravatar answered with status 302");
    EXPECT_EQ(mElsewhere.connectionCount(), 0U);
}

TEST_F(GravatarFailureTest, IsASlowAnswer) {
    const auto never = std::make_shared<Gate>();
    mService.respondAfter(never, ScriptedServer::answer(200, kProfile));
    EXPECT_EQ(find(provider(), "jordan@example.com", social::soonOver()), nullptr);
    EXPECT_THAT(mLog.messages(), ElementsAre("<WARNING> Gravatar could not be asked: error 28"));
}

TEST_F(GravatarFailureTest, IsAnAnswerThatTrickles) {
    mService.handle([](testsupport::ScriptedConnection& connection, const auto&) {
        connection.write("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{\"company\"");
        connection.waitUntilClosed();
    });
    EXPECT_EQ(find(provider(), "jordan@example.com", social::soonOver()), nullptr);
}

TEST_F(GravatarFailureTest, ComesBeforeAnyRequestWhenTheTimeIsOver) {
    EXPECT_EQ(find(provider(), "jordan@example.com", social::tooLate()), nullptr);
    EXPECT_EQ(find(provider(), "jordan@example.com", social::Clock::now()), nullptr);
    EXPECT_EQ(find(provider(), "jordan@example.com", social::Clock::time_point()), nullptr);
    EXPECT_EQ(mService.connectionCount(), 0U);
}

TEST_F(GravatarFailureTest, IsAnAddressOfTheServiceThatIsNone) {
    for (const char* address : {"", "no address", "ftp://127.0.0.1", "/v3"})
        EXPECT_EQ(find(providerAt(address)), nullptr) << address;
    EXPECT_EQ(mLog.messages().size(), 4U);
}

class GravatarKeyTest : public social::GravatarFixture {
  protected:
    static constexpr const char* kKey = "1234:secret-of-the-test";

    void TearDown() override { EXPECT_FALSE(mLog.mentions("secret")); }
};

TEST_F(GravatarKeyTest, GoesToTheService) {
    mService.respond(ScriptedServer::answer(200, kProfile));
    find(provider(std::string(" ") + kKey + "\n"));
    ASSERT_EQ(asked(), 1U);
    EXPECT_EQ(mService.requests().front().header("Authorization"), std::string("Bearer ") + kKey);
}

TEST_F(GravatarKeyTest, IsNoneWhenItIsBlank) {
    mService.respond(ScriptedServer::answer(404, ""));
    for (const char* key : {"", " \n"})
        find(provider(key));
    for (const auto& request : mService.requests())
        EXPECT_EQ(request.header("Authorization"), std::nullopt);
    EXPECT_EQ(asked(), 2U);
}

TEST_F(GravatarKeyTest, GoesNowhereElse) {
    mElsewhere.respond(pictureAnswer());
    mService.respond(ScriptedServer::answer(200, R"({"company": "C", "avatar_url": ")" + mElsewhere.url() + "\"}"));
    mService.respond(ScriptedServer::answer(307, "", "Location: " + mElsewhere.url("/moved") + "\r\n"));
    const auto service = provider(kKey);
    EXPECT_NE(find(service), nullptr);
    EXPECT_EQ(find(service, "other@example.com"), nullptr);
    ASSERT_EQ(mElsewhere.requests().size(), 1U) << "the picture only";
    EXPECT_EQ(mElsewhere.requests().front().head.find("secret"), std::string::npos);
    EXPECT_EQ(mElsewhere.requests().front().header("Authorization"), std::nullopt);
}

TEST_F(GravatarKeyTest, GoesNowhereWithoutTLS) {
    // The own machine, by a name that does not tell.
    const auto service = providerAt("http://127.1:" + std::to_string(mService.port()), kKey);
    EXPECT_THAT(mLog.messages(),
                ElementsAre("<WARNING> The key for Gravatar is not sent, because its address is not an "
                            "https address"));
    mService.respond(ScriptedServer::answer(200, kProfile));
    EXPECT_NE(find(service), nullptr);
    ASSERT_EQ(asked(), 1U);
    EXPECT_EQ(mService.requests().front().header("Authorization"), std::nullopt);
}

TEST_F(GravatarKeyTest, DoesNotGoWithAPictureFromTheServiceItself) {
    mService.respond(ScriptedServer::answer(200, R"({"company": "C", "avatar_url": ")" + mService.url("/a") + "\"}"));
    mService.respond(pictureAnswer());
    EXPECT_EQ(find(provider(kKey))->addressBookAvatarData(), picture());
    ASSERT_EQ(asked(), 2U);
    EXPECT_EQ(mService.requests().back().header("Authorization"), std::nullopt);
}

TEST_F(GravatarKeyTest, IsNotLoggedWhateverGoesWrong) {
    mService.respond(ScriptedServer::answer(401, R"({"error":"secret-of-the-test is wrong"})"));
    mService.respond(ScriptedServer::answer(429, "secret"));
    const auto service = provider(kKey);
    find(service);
    find(service, "other@example.com");
    find(providerAt("http://127.0.0.1:1", kKey));
    find(providerAt("no address", kKey));
    find(provider("secret\r\nX-Injected: 1"));
    EXPECT_EQ(asked(), 2U) << "a key that breaks out of its line is not sent";
    EXPECT_GE(mLog.messages().size(), 4U);
    EXPECT_FALSE(mLog.mentions("example.com")) << "nor whom the user has met";
}

}  // namespace
