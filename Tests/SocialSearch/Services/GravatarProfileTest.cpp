#include "SocialSearch/Services/GravatarFixture.h"

#include <gmock/gmock.h>

namespace {

using social::Entry;
using testing::ElementsAre;
using testing::IsEmpty;

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

class GravatarProfileTest : public social::GravatarFixture {};

TEST_F(GravatarProfileTest, TakesWhatAProfileHasAPlaceFor) {
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

TEST_F(GravatarProfileTest, TakesNoDisplayNameForAName) {
    EXPECT_EQ(found(kProfile)->formattedName(), std::nullopt);
}

TEST_F(GravatarProfileTest, TakesWhatAKeyShowsBesides) {
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

TEST_F(GravatarProfileTest, LosesOnlyThePartOfTheWrongType) {
    const auto profile = found(R"({"company": ["x"], "job_title": "Engineer", "location": {"city": 1},
        "first_name": 1, "avatar_url": 7, "contact_info": "none", "links": 5, "verified_accounts": null})");
    ASSERT_NE(profile, nullptr);
    EXPECT_EQ(profile->jobTitle(), "Engineer");
    EXPECT_EQ(profile->company(), std::nullopt);
    EXPECT_THAT(profile->addressList(), IsEmpty());
    EXPECT_THAT(mLog.messages(), IsEmpty());
}

TEST_F(GravatarProfileTest, LeavesOutContactsThatAreNone) {
    const auto profile = found(R"({"contact_info": {"email": "call me", "work_phone": " ", "home_phone": 5,
        "cell_phone": "555-0100"}})");
    ASSERT_NE(profile, nullptr);
    EXPECT_THAT(social::emailsOf(*profile), IsEmpty());
    EXPECT_THAT(social::phonesOf(*profile), ElementsAre(Entry("Mobile", "555-0100")));
}

TEST_F(GravatarProfileTest, FindsNobodyInAProfileThatSaysNothing) {
    EXPECT_EQ(found(R"({"display_name": "jojo", "job_title": "", "verified_accounts": []})"), nullptr);
}

TEST_F(GravatarProfileTest, LooksAtNoMoreLinksThanPeopleHave) {
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

TEST_F(GravatarProfileTest, LeavesOutTextsThatNoCardWouldHold) {
    const auto profile = found(R"({"company": "C", "job_title": ")" + std::string(2000, 'x') + "\"}");
    ASSERT_NE(profile, nullptr);
    EXPECT_EQ(profile->jobTitle(), std::nullopt);
}

}  // namespace
