#include "QVSocialSearch/QVGravatarProvider.h"
#include "SocialSearch/Services/GravatarFixture.h"

#include <gmock/gmock.h>

#include <thread>

using namespace std::chrono_literals;

namespace {

using social::Entry;
using testing::ElementsAre;
using testing::IsEmpty;
using testsupport::Gate;
using testsupport::ScriptedServer;

/// In the shape that the service documents.
constexpr const char* kProfile = R"({
    "hash": "b58996c504c5638798eb6b511e6f49af", "display_name": "jojo",
    "profile_url": "https://gravatar.com/jojo", "avatar_alt_text": "", "location": "Springfield, Example",
    "description": "Writes about bridges.", "job_title": "Structural Engineer", "company": "Example Bridges Ltd.",
    "verified_accounts": [
        {"service_type": "tumblr", "service_label": "Tumblr", "service_icon": "https://example.com/t.svg",
         "url": "https://jojo.example.com/", "is_hidden": false},
        {"service_type": "linkedin", "service_label": "LinkedIn", "service_icon": "https://example.com/l.svg",
         "url": "https://www.linkedin.com/in/jordan-example", "is_hidden": false},
        {"service_type": "facebook", "service_label": "Facebook", "service_icon": "https://example.com/f.svg",
         "url": "https://www.facebook.com/jordan.example", "is_hidden": false},
        {"service_type": "twitter", "service_label": "X", "service_icon": "https://example.com/x.svg",
         "url": "https://x.com/jordan_example", "is_hidden": false}],
    "pronunciation": "", "pronouns": ""})";

constexpr const char* kProfileWithKey = R"({
    "display_name": "jojo", "first_name": "Jordan", "last_name": "Example", "is_organization": false,
    "languages": [{"code": "en", "name": "English", "is_primary": true, "order": 1}], "timezone": "Europe/Berlin",
    "job_title": "", "company": null, "verified_accounts": [],
    "links": [{"label": "Home page", "url": "https://jordan.example.com/"},
              {"label": "My <b>LinkedIn</b>", "url": "https://de.linkedin.com/in/jordan"}],
    "contact_info": {"home_phone": "+1 202 555 0101", "work_phone": "+1 202 555 0102", "cell_phone": "+1 202 555 0103",
                     "email": "jordan@home.example", "contact_form": "https://example.com/form", "calendar": ""},
    "payments": {"links": [], "crypto_wallets": []}, "registration_date": "2010-02-08T19:26:22Z"})";

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

TEST_F(QVGravatarProviderTest, TakesWhatAProfileHasAPlaceFor) {
    const auto profile = found(kProfile);
    ASSERT_NE(profile, nullptr);
    EXPECT_EQ(profile->profileType(), 8);
    EXPECT_EQ(profile->addressBookUID(), std::nullopt);
    EXPECT_EQ(profile->jobTitle(), "Structural Engineer");
    EXPECT_EQ(profile->jobTitleSource(), 8);
    EXPECT_EQ(profile->company(), "Example Bridges Ltd.");
    EXPECT_EQ(profile->companySource(), 8);
    ASSERT_EQ(profile->addressList().size(), 1U);
    EXPECT_EQ(profile->addressList().front()->formattedAddress(), "Springfield, Example");
    EXPECT_EQ(profile->profileURLLinkedInPublic(), "https://www.linkedin.com/in/jordan-example");
    EXPECT_EQ(profile->profileURLFacebook(), "https://www.facebook.com/jordan.example");
    EXPECT_THAT(social::handlesOf(*profile), ElementsAre("jordan_example"));
    EXPECT_EQ(profile->addressBookAvatarData(), std::nullopt);
    EXPECT_THAT(mLog.messages(), IsEmpty());
}

TEST_F(QVGravatarProviderTest, TakesNoDisplayNameForAName) {
    EXPECT_EQ(found(kProfile)->formattedName(), std::nullopt);
}

TEST_F(QVGravatarProviderTest, TakesWhatAKeyShowsBesides) {
    const auto profile = found(kProfileWithKey);
    ASSERT_NE(profile, nullptr);
    EXPECT_EQ(profile->formattedName(), "Jordan Example");
    EXPECT_EQ(profile->jobTitle(), std::nullopt);
    EXPECT_EQ(profile->jobTitleSource(), 0);
    EXPECT_EQ(profile->company(), std::nullopt);
    EXPECT_EQ(profile->companySource(), 0);
    EXPECT_EQ(profile->profileURLLinkedInPublic(), "https://de.linkedin.com/in/jordan");
    EXPECT_THAT(social::phonesOf(*profile),
                ElementsAre(Entry("Work", "+1 202 555 0102"), Entry("Mobile", "+1 202 555 0103"),
                            Entry("Home", "+1 202 555 0101")));
    EXPECT_THAT(social::emailsOf(*profile), ElementsAre(Entry(std::nullopt, "jordan@home.example")));
}

struct NameRow {
    const char* name;
    const char* object;
    QVString formattedName;
};

class GravatarNameTest : public social::GravatarFixture, public testing::WithParamInterface<NameRow> {};

TEST_P(GravatarNameTest, IsAGivenFirstAndLastName) {
    const auto profile = found(std::string(R"({"company": "C", "display_name": "Nick", )") + GetParam().object + "}");
    ASSERT_NE(profile, nullptr);
    EXPECT_EQ(profile->formattedName(), GetParam().formattedName);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, GravatarNameTest,
    testing::Values(NameRow{"Both", R"("first_name": " Jordan ", "last_name": "Example")", "Jordan Example"},
                    NameRow{"NotASCII", R"("first_name": "Jürgen", "last_name": "Müßig")", "Jürgen Müßig"},
                    NameRow{"FirstOnly", R"("first_name": "Jordan")", std::nullopt},
                    NameRow{"LastOnly", R"("last_name": "Example")", std::nullopt},
                    NameRow{"EmptyLast", R"("first_name": "Jordan", "last_name": "")", std::nullopt},
                    NameRow{"BlankFirst", R"("first_name": " \t", "last_name": "Example")", std::nullopt},
                    NameRow{"NullLast", R"("first_name": "Jordan", "last_name": null)", std::nullopt},
                    NameRow{"NumberLast", R"("first_name": "Jordan", "last_name": 7)", std::nullopt},
                    NameRow{"Organisation", R"("first_name": "A", "last_name": "B", "is_organization": true)",
                            std::nullopt},
                    NameRow{"SeveralLines", R"("first_name": "Jor\ndan", "last_name": "Exam\u0000ple\u2028X")",
                            "Jor dan Exam ple X"}),
    [](const auto& row) { return row.param.name; });

struct LinkRow {
    const char* name;
    const char* accounts;
    QVString linkedIn;
    QVString facebook;
    std::vector<std::string> handles;
};

class GravatarLinkTest : public social::GravatarFixture, public testing::WithParamInterface<LinkRow> {};

TEST_P(GravatarLinkTest, IsKnownByItsHost) {
    const auto profile = found(std::string(R"({"company": "C", "verified_accounts": )") + GetParam().accounts + "}");
    ASSERT_NE(profile, nullptr);
    EXPECT_EQ(profile->profileURLLinkedInPublic(), GetParam().linkedIn);
    EXPECT_EQ(profile->profileURLFacebook(), GetParam().facebook);
    EXPECT_EQ(social::handlesOf(*profile), GetParam().handles);
}

const QVString kNone;

INSTANTIATE_TEST_SUITE_P(
    Rows, GravatarLinkTest,
    testing::Values(
        LinkRow{"ServiceNameDoesNotCount",
                R"([{"service_type": "linkedin", "url": "https://evil.example/in/x"}])",
                kNone,
                kNone,
                {}},
        LinkRow{"OtherServiceName",
                R"([{"service_type": "tumblr", "url": "https://linkedin.com/in/x"}])",
                "https://linkedin.com/in/x",
                kNone,
                {}},
        LinkRow{"LooksLikeTheHost", R"([{"url": "https://notlinkedin.com/in/x"}])", kNone, kNone, {}},
        LinkRow{"HostInFront", R"([{"url": "https://linkedin.com.evil.example/in/x"}])", kNone, kNone, {}},
        LinkRow{"HostAsUser", R"([{"url": "https://linkedin.com@evil.example/in/x"}])", kNone, kNone, {}},
        LinkRow{"HostInPath", R"([{"url": "https://evil.example/linkedin.com/in/x"}])", kNone, kNone, {}},
        LinkRow{"Capitals", R"([{"url": "HTTPS://WWW.FACEBOOK.COM/x"}])", kNone, "HTTPS://WWW.FACEBOOK.COM/x", {}},
        LinkRow{"ShortFacebook", R"([{"url": "http://fb.com/x"}])", kNone, "http://fb.com/x", {}},
        LinkRow{"FirstStays",
                R"([{"url": "https://fb.com/a"}, {"url": "https://fb.com/b"}])",
                kNone,
                "https://fb.com/a",
                {}},
        LinkRow{"Script", R"([{"url": "javascript://linkedin.com/%0Aalert"}])", kNone, kNone, {}},
        LinkRow{"OtherScheme", R"([{"url": "ftp://linkedin.com/in/x"}])", kNone, kNone, {}},
        LinkRow{"Relative", R"([{"url": "//linkedin.com/in/x"}])", kNone, kNone, {}},
        LinkRow{"Hidden", R"([{"url": "https://linkedin.com/in/x", "is_hidden": true}])", kNone, kNone, {}},
        LinkRow{"TwoHandles",
                R"([{"url": "https://twitter.com/jo_1/"}, {"url": "https://mobile.x.com/jo_2?s=1"}])",
                kNone,
                kNone,
                {"jo_1", "jo_2"}},
        LinkRow{"OneHandleTwice",
                R"([{"url": "https://twitter.com/Jo"}, {"url": "https://x.com/jo"}])",
                kNone,
                kNone,
                {"Jo"}},
        LinkRow{"NoHandle",
                R"([{"url": "https://x.com/"}, {"url": "https://x.com"}, {"url": "https://x.com?a=/b"}])",
                kNone,
                kNone,
                {}},
        LinkRow{"TheNetworksOwnPage",
                R"([{"url": "https://x.com/intent/follow"}, {"url": "https://x.com/HOME"}])",
                kNone,
                kNone,
                {}},
        LinkRow{"HandleOfMarkup", R"([{"url": "https://x.com/%3Cb%3E"}])", kNone, kNone, {}},
        LinkRow{"HandleTooLong", R"([{"url": "https://x.com/abcdefghijklmnopqrstu"}])", kNone, kNone, {}},
        LinkRow{"WrongTypes",
                R"([7, null, [], "https://linkedin.com/in/x", {"url": 7}, {"url": {}}, {}])",
                kNone,
                kNone,
                {}},
        LinkRow{"WrongTypesBesideGood",
                R"([7, {"url": "https://linkedin.com/in/x"}])",
                "https://linkedin.com/in/x",
                kNone,
                {}},
        LinkRow{"NoList", R"({"url": "https://linkedin.com/in/x"})", kNone, kNone, {}}),
    [](const auto& row) { return row.param.name; });

TEST_F(QVGravatarProviderTest, LosesOnlyThePartOfTheWrongType) {
    const auto profile = found(R"({"company": ["x"], "job_title": "Engineer", "location": {"city": 1},
        "first_name": 1, "avatar_url": 7, "contact_info": "none", "links": 5, "verified_accounts": null})");
    ASSERT_NE(profile, nullptr);
    EXPECT_EQ(profile->jobTitle(), "Engineer");
    EXPECT_EQ(profile->company(), std::nullopt);
    EXPECT_THAT(profile->addressList(), IsEmpty());
    EXPECT_THAT(mLog.messages(), IsEmpty());
}

TEST_F(QVGravatarProviderTest, LeavesOutContactsThatAreNone) {
    const auto profile = found(R"({"contact_info": {"email": "call me", "work_phone": " ", "home_phone": 5,
        "cell_phone": "555-0100"}})");
    ASSERT_NE(profile, nullptr);
    EXPECT_THAT(social::emailsOf(*profile), IsEmpty());
    EXPECT_THAT(social::phonesOf(*profile), ElementsAre(Entry("Mobile", "555-0100")));
}

TEST_F(QVGravatarProviderTest, FindsNobodyInAProfileThatSaysNothing) {
    EXPECT_EQ(found(R"({"display_name": "jojo", "job_title": "", "verified_accounts": []})"), nullptr);
}

TEST_F(QVGravatarProviderTest, LooksAtNoMoreLinksThanPeopleHave) {
    const auto list = [](int count) {
        std::string entries = R"({"url": "https://x.com/u0"})";
        for (int number = 1; number < count; ++number)
            entries += R"(, {"url": "https://x.com/u)" + std::to_string(number) + "\"}";
        return "[" + entries + "]";
    };
    const auto profile = found(R"({"verified_accounts": )" + list(12'000) + "}");
    ASSERT_NE(profile, nullptr);
    EXPECT_EQ(social::handlesOf(*profile).size(), 100U);
    EXPECT_EQ(social::handlesOf(*profile).back(), "u99");
}

TEST_F(QVGravatarProviderTest, LeavesOutTextsThatNoCardWouldHold) {
    const auto profile = found(R"({"company": "C", "job_title": ")" + std::string(2000, 'x') + "\"}");
    ASSERT_NE(profile, nullptr);
    EXPECT_EQ(profile->jobTitle(), std::nullopt);
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
    const auto deadline = social::almostOver();
    const auto profile = find(service, "jordan@example.com", deadline);
    EXPECT_LT(social::Clock::now(), deadline) << "in time to be handed over";
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
    const auto deadline = social::almostOver();
    EXPECT_EQ(find(provider(), "jordan@example.com", deadline), nullptr);
    EXPECT_LT(social::Clock::now(), deadline);
    EXPECT_THAT(mLog.messages(), ElementsAre("<WARNING> Gravatar could not be asked: error 28"));
}

TEST_F(GravatarFailureTest, IsAnAnswerThatTrickles) {
    const auto over = std::make_shared<Gate>();
    mService.handle([](testsupport::ScriptedConnection& connection, const auto&) {
        connection.write("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{\"company\"");
        connection.waitUntilClosed();
    });
    EXPECT_EQ(find(provider(), "jordan@example.com", social::almostOver()), nullptr);
}

TEST_F(GravatarFailureTest, ComesBeforeAnyRequestWhenTheTimeIsOver) {
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
    mService.respond(ScriptedServer::answer(200, kProfileWithKey));
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
