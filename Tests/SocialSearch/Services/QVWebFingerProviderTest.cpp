#include "QVSocialSearch/QVWebFingerProvider.h"
#include "SocialSearch/Services/WebFingerFixture.h"

#include <gmock/gmock.h>

namespace {

using social::Entry;
using testing::ElementsAre;
using testing::IsEmpty;
using testsupport::Gate;
using testsupport::ScriptedServer;

class QVWebFingerProviderTest : public social::WebFingerFixture {};

TEST_F(QVWebFingerProviderTest, AsksTheDomainForItsAccount) {
    mService.respond(ScriptedServer::answer(404, ""));
    EXPECT_EQ(find(" Jordan@Example.COM\n"), nullptr);
    ASSERT_EQ(mService.requests().size(), 1U);
    EXPECT_EQ(mService.requests().front().method, "GET");
    EXPECT_EQ(mService.requests().front().target, "/.well-known/webfinger?resource=acct%3AJordan%40example.com");
    EXPECT_EQ(mService.requests().front().header("Accept"), "application/jrd+json, application/json");
    EXPECT_THAT(mDomains, ElementsAre("example.com"));
    EXPECT_THAT(mLog.messages(), IsEmpty());
}

TEST_F(QVWebFingerProviderTest, HasAName) {
    EXPECT_EQ(QVWebFingerProvider().name(), "WebFinger");
}

struct AccountRow {
    const char* name;
    std::string address;
    /// Empty: nobody is asked.
    const char* resource;
};

class WebFingerAccountTest : public social::WebFingerFixture, public testing::WithParamInterface<AccountRow> {};

TEST_P(WebFingerAccountTest, IsTheAddressAsAResource) {
    mService.respond(ScriptedServer::answer(404, ""));
    EXPECT_EQ(find(GetParam().address), nullptr);
    const auto requests = mService.requests();
    const bool isAsked = *GetParam().resource != '\0';
    ASSERT_EQ(requests.size(), isAsked ? 1U : 0U);
    if (isAsked) {
        EXPECT_EQ(requests.front().target, "/.well-known/webfinger?resource=" + std::string(GetParam().resource));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Rows, WebFingerAccountTest,
    testing::Values(AccountRow{"Plain", "jo@example.com", "acct%3Ajo%40example.com"},
                    AccountRow{"InternationalDomain", "jo@bücher.example", "acct%3Ajo%40xn--bcher-kva.example"},
                    AccountRow{"InternationalUser", "jörg@example.com", "acct%3Aj%25C3%25B6rg%40example.com"},
                    AccountRow{"SubDelimiters", "a+b='c'@example.com", "acct%3Aa%2Bb%3D%27c%27%40example.com"},
                    AccountRow{"WhatTheURIHasNoPlaceFor", "a/b?c#d{e}@example.com",
                               "acct%3Aa%252Fb%253Fc%2523d%257Be%257D%40example.com"},
                    AccountRow{"Percent", "50%25@example.com", "acct%3A50%252525%40example.com"},
                    AccountRow{"Quoted", "\"jo example\"@example.com", "acct%3Ajo%2520example%40example.com"},
                    AccountRow{"QuotedAt", "\"jo@home\"@example.com", "acct%3Ajo%2540home%40example.com"},
                    AccountRow{"QuotedEscapes", R"("j\"o\\e"@example.com)", "acct%3Aj%2522o%255Ce%40example.com"},
                    AccountRow{"QuotedPlain", "\"jo\"@example.com", "acct%3Ajo%40example.com"},
                    AccountRow{"QuoteInside", "\"j\"o\"@example.com", ""},
                    AccountRow{"QuoteNotClosed", "\"jo@example.com", ""},
                    AccountRow{"ClosingQuoteEscaped", R"("jo\"@example.com)", ""},
                    AccountRow{"EmptyQuotes", "\"\"@example.com", ""}, AccountRow{"OneQuote", "\"@example.com", ""},
                    AccountRow{"NoUser", "@example.com", ""}, AccountRow{"NoDomain", "jo@", ""},
                    AccountRow{"NoAt", "example.com", ""}, AccountRow{"TwoAts", "a@b@example.com", ""},
                    AccountRow{"BlankInside", "j o@example.com", ""},
                    AccountRow{"LineEndInside", "jo\r\n@example.com", ""}, AccountRow{"OwnMachine", "jo@localhost", ""},
                    AccountRow{"Literal", "jo@[127.0.0.1]", ""}, AccountRow{"Address", "jo@127.0.0.1", ""},
                    AccountRow{"Port", "jo@example.com:8080", ""}, AccountRow{"Path", "jo@example.com/x", ""},
                    AccountRow{"Huge", std::string(100'000, 'j') + "@example.com", ""}),
    [](const auto& row) { return row.param.name; });

TEST_F(QVWebFingerProviderTest, TakesProfilePagesByTheirHost) {
    const auto profile = found(page("https://jordan.example.com/") + "," + page("https://www.linkedin.com/in/jordan") +
                               "," + page("https://facebook.com/jordan") + "," + page("https://twitter.com/jordan_e") +
                               "," + link("self", "https://linkedin.com/in/other") + "," + page("javascript:alert(1)"));
    ASSERT_NE(profile, nullptr);
    EXPECT_EQ(profile->profileType(), 16);
    EXPECT_EQ(profile->formattedName(), std::nullopt);
    EXPECT_EQ(profile->profileURLLinkedInPublic(), "https://www.linkedin.com/in/jordan");
    EXPECT_EQ(profile->profileURLFacebook(), "https://facebook.com/jordan");
    EXPECT_THAT(social::handlesOf(*profile), ElementsAre("jordan_e"));
}

TEST_F(QVWebFingerProviderTest, FindsNobodyInLinksOfOtherKinds) {
    EXPECT_EQ(found(link("http://ostatus.org/schema/1.0/subscribe", "https://example.com/s")), nullptr);
    EXPECT_EQ(found(page("https://jordan.example.com/")), nullptr) << "a page that no profile has a place for";
    EXPECT_THAT(mLog.messages(), IsEmpty());
}

TEST_F(QVWebFingerProviderTest, FetchesTheFirstAvatarAsBytes) {
    mElsewhere.respond(pictureAnswer());
    const auto profile = found(avatar(mElsewhere.url("/first.png")) + "," + avatar(mElsewhere.url("/second.png")));
    ASSERT_NE(profile, nullptr);
    EXPECT_EQ(profile->addressBookAvatarData(), picture());
    EXPECT_EQ(profile->avatarURLLinkedIn(), std::nullopt);
    EXPECT_EQ(profile->avatarURLFacebookBig(), std::nullopt);
    ASSERT_EQ(mElsewhere.requests().size(), 1U);
    EXPECT_EQ(mElsewhere.requests().front().target, "/first.png");
}

TEST_F(QVWebFingerProviderTest, TakesNoAvatarThatIsNoPicture) {
    mElsewhere.respond(ScriptedServer::answer(200, "<svg/>"));
    EXPECT_EQ(found(avatar(mElsewhere.url())), nullptr);
}

class WebFingerCardTest : public social::WebFingerFixture {
  protected:
    /// What is found on a card with these lines.
    std::shared_ptr<QVSocialProfile> foundOnCard(const std::string& lines) {
        Server service;
        service.respond(answerWith(link("vcard", service.url("/jo.vcf"))));
        service.respond(card(lines));
        return findAt(service, "jordan@example.com", social::soonEnough());
    }
};

TEST_F(WebFingerCardTest, IsTakenWithoutItsPlaceInAnAddressBook) {
    const auto profile = foundOnCard(
        "UID:4711\r\nFN:Dr. Jordan Example\r\nN:Example;Jordan;;Dr.;\r\nTITLE:Engineer\r\nORG:Example Ltd.;Bridges\r\n"
        "EMAIL;TYPE=WORK:jordan@example.com\r\nTEL;TYPE=CELL:+1 202 555 0100\r\n"
        "URL:https://www.linkedin.com/in/jordan\r\nX-TWITTER:jordan_e\r\n");
    ASSERT_NE(profile, nullptr);
    EXPECT_EQ(profile->profileType(), 16);
    EXPECT_EQ(profile->addressBookUID(), std::nullopt);
    EXPECT_EQ(profile->formattedName(), "Dr. Jordan Example");
    EXPECT_EQ(profile->jobTitle(), "Engineer");
    EXPECT_EQ(profile->jobTitleSource(), 16);
    EXPECT_EQ(profile->company(), "Example Ltd.");
    EXPECT_EQ(profile->companySource(), 16);
    ASSERT_EQ(profile->emailAddresses().size(), 1U);
    EXPECT_EQ(profile->emailAddresses().front()->address(), "jordan@example.com");
    ASSERT_EQ(profile->phoneNumbers().size(), 1U);
    EXPECT_EQ(profile->phoneNumbers().front()->number(), "+1 202 555 0100");
    EXPECT_EQ(profile->profileURLLinkedInPublic(), "https://www.linkedin.com/in/jordan");
    EXPECT_THAT(social::handlesOf(*profile), ElementsAre("jordan_e"));
}

TEST_F(WebFingerCardTest, GivesANameOnlyOfAGivenAndAFamilyName) {
    EXPECT_EQ(foundOnCard("FN:jojo\r\nN:Example;Jordan;;;\r\nTITLE:T\r\n")->formattedName(), "Jordan Example");
}

TEST_F(WebFingerCardTest, GivesTheShownNameInItsOwnOrder) {
    EXPECT_EQ(foundOnCard("FN:毛 泽东\r\nN:毛;泽东;;;\r\nTITLE:T\r\n")->formattedName(), "毛 泽东");
}

TEST_F(WebFingerCardTest, GivesNoNameWithoutBothOfThem) {
    EXPECT_EQ(foundOnCard("FN:jojo\r\nN:;jojo;;;\r\nTITLE:T\r\n")->formattedName(), std::nullopt);
}

TEST_F(WebFingerCardTest, GivesNoNameWithoutN) {
    const auto profile = foundOnCard("FN:Jordan Example\r\nEMAIL:jordan@example.com\r\n");
    EXPECT_EQ(profile->formattedName(), std::nullopt);
    EXPECT_EQ(profile->jobTitleSource(), 0);
    EXPECT_EQ(profile->companySource(), 0);
}

TEST_F(WebFingerCardTest, IsFoundByItsType) {
    mService.respond(answerWith(link("describedby", mService.url("/jo.vcf"), "Text/VCard; charset=utf-8")));
    mService.respond(card("TITLE:Engineer\r\n"));
    EXPECT_EQ(find()->jobTitle(), "Engineer");
}

TEST_F(WebFingerCardTest, IsOnlyTakenFromTheDomainItself) {
    mElsewhere.respond(card("TITLE:Engineer\r\n"));
    EXPECT_EQ(found(link("vcard", "http://localhost:" + std::to_string(mElsewhere.port()) + "/jo.vcf")), nullptr);
    EXPECT_EQ(found(link("vcard", "http://example.com.evil.example/jo.vcf")), nullptr);
    EXPECT_EQ(found(link("vcard", "http://notexample.com/jo.vcf")), nullptr);
    EXPECT_EQ(found(link("vcard", "jo.vcf")), nullptr);
    EXPECT_EQ(mElsewhere.connectionCount(), 0U);
}

TEST_F(WebFingerCardTest, MayLieInsideOfTheDomain) {
    std::vector<std::string> fetched;
    QVLinkFetcher::setFetcher([&](const std::string& target) -> std::optional<qv::Data> {
        fetched.push_back(target);
        return std::nullopt;
    });
    found(link("vcard", "https://evil.example/a") + "," + link("vcard", "https://people.example.com/b"));
    found(link("vcard", "https://EXAMPLE.com/c"));
    QVLinkFetcher::setFetcher({});
    EXPECT_THAT(fetched, ElementsAre("https://people.example.com/b", "https://EXAMPLE.com/c"));
}

TEST_F(WebFingerCardTest, CostsOnlyItsOwnPartWhenItIsBroken) {
    mElsewhere.respond(pictureAnswer());
    for (const std::string& broken : {std::string("no card"), std::string(), std::string("BEGIN:VCARD\r\n"),
                                      std::string(3'000'000, 'x'), std::string("\xFF\xFE\0", 3)}) {
        Server service;
        service.respond(answerWith(link("vcard", service.url("/jo.vcf")) + "," + avatar(mElsewhere.url()) + "," +
                                   page("https://fb.com/jo")));
        service.respond(ScriptedServer::answer(200, broken));
        QVWebFingerProvider provider({.originOfDomain = [&](const std::string&) { return service.url(""); }});
        const auto profile = provider.profileForRequest(*social::requestFor("jo@example.com"), social::soonEnough());
        ASSERT_NE(profile, nullptr);
        EXPECT_EQ(profile->profileURLFacebook(), "https://fb.com/jo");
        EXPECT_EQ(profile->addressBookAvatarData(), picture());
        EXPECT_EQ(service.requests().size(), 2U);
    }
}

TEST_F(WebFingerCardTest, GivesItsPictureWhenThereIsNoAvatar) {
    const std::string inside =
        "PHOTO;ENCODING=b;TYPE=PNG:iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJ"
        "RU5ErkJggg==\r\n";
    const auto profile = foundOnCard("TITLE:T\r\n" + inside);
    ASSERT_TRUE(profile->addressBookAvatarData());
    EXPECT_EQ(profile->addressBookAvatarData()->size(), 70U);
}

TEST_F(WebFingerCardTest, GivesNoPictureThatIsNone) {
    const auto profile = foundOnCard("TITLE:T\r\nPHOTO;ENCODING=b;TYPE=PNG:iVBORw0KGgo=\r\n");
    EXPECT_EQ(profile->addressBookAvatarData(), std::nullopt);
}

TEST_F(WebFingerCardTest, IsNoneWhenItIsFarTooLong) {
    // Numbers that end alike take the longest to tell apart.
    const auto numbers = [](int count) {
        std::string lines;
        for (int number = 0; number < count; ++number)
            lines += "TEL:" + std::to_string(number) + "5550100\r\n";
        return lines;
    };
    const auto longest = foundOnCard(numbers(499));
    ASSERT_NE(longest, nullptr) << "with the version's line";
    EXPECT_EQ(foundOnCard(numbers(500)), nullptr);
}

TEST_F(WebFingerCardTest, GivesWayToTheAvatar) {
    mElsewhere.respond(pictureAnswer());
    mService.respond(answerWith(link("vcard", mService.url("/jo.vcf")) + "," + avatar(mElsewhere.url())));
    mService.respond(card("TITLE:T\r\nPHOTO;ENCODING=b;TYPE=GIF:R0lGODlhAQABAAAAACw=\r\n"));
    EXPECT_EQ(find()->addressBookAvatarData(), picture());
}

class WebFingerNetworkTest : public social::WebFingerFixture {};

TEST_F(WebFingerNetworkTest, LeadsNowhereInTheOwnNetworkByItself) {
    allowPrivateAddresses(false);
    mElsewhere.respond(pictureAnswer());
    mService.respond(answerWith(avatar(mElsewhere.url()) + "," + link("vcard", mService.url("/jo.vcf")) + "," +
                                page("https://fb.com/jo")));
    const auto profile = find();
    ASSERT_NE(profile, nullptr);
    EXPECT_EQ(profile->profileURLFacebook(), "https://fb.com/jo");
    EXPECT_EQ(profile->addressBookAvatarData(), std::nullopt);
    EXPECT_EQ(mElsewhere.connectionCount(), 0U);
    EXPECT_EQ(mService.requests().size(), 1U) << "the question only, because the host chose where it goes";
}

TEST_F(WebFingerNetworkTest, LeadsNowhereInTheOwnNetworkByRedirect) {
    allowPrivateAddresses(false);
    mElsewhere.respond(answerWith(page("https://fb.com/jo")));
    mService.respond(ScriptedServer::answer(302, "", "Location: " + mElsewhere.url("/webfinger") + "\r\n"));
    EXPECT_EQ(find(), nullptr);
    EXPECT_EQ(mElsewhere.connectionCount(), 0U);
    EXPECT_EQ(mLog.messages().size(), 1U);
}

TEST_F(WebFingerNetworkTest, FollowsARedirectThatIsAllowed) {
    mElsewhere.respond(answerWith(page("https://fb.com/jo")));
    mService.respond(ScriptedServer::answer(301, "", "Location: " + mElsewhere.url("/w?resource=x") + "\r\n"));
    EXPECT_NE(find(), nullptr);
}

TEST_F(WebFingerNetworkTest, FollowsNoRedirectOutOfTheWeb) {
    mService.respond(ScriptedServer::answer(301, "", "Location: file:///etc/hostname\r\n"));
    EXPECT_EQ(find(), nullptr);
    EXPECT_EQ(mService.requests().size(), 1U);
}

TEST_F(WebFingerNetworkTest, FindsNobodyBehindAnEndlessRedirect) {
    mService.respond(ScriptedServer::answer(302, "", "Location: /again\r\n"));
    EXPECT_EQ(find(), nullptr);
    EXPECT_EQ(mService.requests().size(), 6U);
}

TEST_F(WebFingerNetworkTest, KeepsOutOfTheOwnNetworkByDefault) {
    allowPrivateAddresses(false);
    QVWebFingerProvider provider;
    // Names below "localhost" are the own machine's without asking anybody (RFC 6761).
    EXPECT_EQ(provider.profileForRequest(*social::requestFor("jo@people.localhost"), social::soonEnough()), nullptr);
    EXPECT_THAT(mLog.messages(), ElementsAre("<WARNING> WebFinger could not be asked: error 7"));
}

TEST_F(WebFingerNetworkTest, GivesUpOnASlowDomain) {
    const auto never = std::make_shared<Gate>();
    mService.respondAfter(never, answerWith(page("https://fb.com/jo")));
    EXPECT_EQ(find("jo@example.com", social::soonOver()), nullptr);
    EXPECT_THAT(mLog.messages(), ElementsAre("<WARNING> WebFinger could not be asked: error 28"));
}

TEST_F(WebFingerNetworkTest, HandsOverTheRestWhenALinkIsSlow) {
    const auto never = std::make_shared<Gate>();
    mElsewhere.respondAfter(never, pictureAnswer());
    mService.respond(answerWith(page("https://fb.com/jo") + "," + avatar(mElsewhere.url())));
    EXPECT_NE(find("jo@example.com", social::soonOver()), nullptr);
}

TEST_F(WebFingerNetworkTest, AsksNobodyWhenTheTimeIsOver) {
    EXPECT_EQ(find("jo@example.com", social::tooLate()), nullptr);
    EXPECT_EQ(find("jo@example.com", social::Clock::now()), nullptr);
    EXPECT_EQ(mService.connectionCount(), 0U);
}

TEST_F(WebFingerNetworkTest, SurvivesAnOriginThatIsNone) {
    for (const char* origin : {"", "no address", "ftp://127.0.0.1", "file://"}) {
        QVWebFingerProvider provider({.originOfDomain = [&](const std::string&) { return origin; }});
        EXPECT_EQ(provider.profileForRequest(*social::requestFor("jo@example.com"), social::soonEnough()), nullptr);
    }
}

struct HostileAnswer {
    const char* name;
    int status;
    std::string body;
    std::size_t messages;
};

class WebFingerHostileTest : public social::WebFingerFixture, public testing::WithParamInterface<HostileAnswer> {};

TEST_P(WebFingerHostileTest, FindsNobody) {
    mService.respond(ScriptedServer::answer(GetParam().status, GetParam().body));
    EXPECT_EQ(find(), nullptr);
    EXPECT_EQ(mLog.messages().size(), GetParam().messages);
    EXPECT_FALSE(mLog.mentions("jordan"));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, WebFingerHostileTest,
    testing::Values(HostileAnswer{"Empty", 200, "", 1}, HostileAnswer{"Page", 200, "<html></html>", 1},
                    HostileAnswer{"List", 200, "[]", 1}, HostileAnswer{"BrokenUTF8", 200, "{\"links\": \"\xC3\"}", 1},
                    HostileAnswer{"Deep", 200, std::string(200'000, '['), 1},
                    HostileAnswer{"Huge", 200, "{\"links\": [" + std::string(3'000'000, ' ') + "]}", 1},
                    HostileAnswer{"NoLinks", 200, "{}", 0},
                    HostileAnswer{"LinksOfAnotherKind", 200, R"({"links": 7})", 0},
                    HostileAnswer{"LinkOfAnotherKind", 200, R"({"links": [7, null, "x", [], {}, {"href": 7}]})", 0},
                    HostileAnswer{"RelationOfAnotherKind", 200,
                                  R"({"links": [{"rel": ["vcard"], "type": {}, "href": "http://127.0.0.1:1/"}]})", 0},
                    HostileAnswer{"ManyLinks", 200,
                                  [] {
                                      std::string links = R"({"links": [{}])";
                                      links.pop_back();
                                      for (int count = 0; count < 50'000; ++count)
                                          links += ",{}";
                                      return links + "]}";
                                  }(),
                                  0},
                    HostileAnswer{"NotFound", 404, "", 0}, HostileAnswer{"Error", 500, "{}", 1},
                    HostileAnswer{"Forbidden", 403, R"({"links": []})", 1}),
    [](const auto& row) { return row.param.name; });

}  // namespace
