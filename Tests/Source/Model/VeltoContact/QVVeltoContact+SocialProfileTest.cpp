#include "ContactFixtures.h"
#include "QVSocialSearch/QVLinkFetcher.h"
#include "Support/ScriptedServer.h"
#include "Support/TestImages.h"

#include <gmock/gmock.h>

#include <vector>

namespace {

using fixtures::entriesOf;
using fixtures::Entry;
using fixtures::entrySet;
using fixtures::handleSet;
using testing::ElementsAre;
using testing::IsEmpty;
using testsupport::ScriptedServer;

QVEmailSet profileEmails(const std::vector<std::pair<QVString, std::string>>& entries) {
    auto set = std::make_shared<qv::OrderedSet<std::shared_ptr<const QVEmail>>>();
    for (const auto& [label, address] : entries)
        set->insert(QVEmail::emailWithLabel(label, address));
    return set;
}

QVPhoneNumberSet profilePhones(const std::vector<std::pair<QVString, std::string>>& entries) {
    auto set = std::make_shared<qv::OrderedSet<std::shared_ptr<const QVPhoneNumber>>>();
    for (const auto& [type, number] : entries)
        set->insert(QVPhoneNumber::phoneNumberWithNumber(number, type));
    return set;
}

qv::Data picture() {
    return testsupport::makePNG(testsupport::quarters(4, 4));
}

std::string textOf(const qv::Data& data) {
    return {data.begin(), data.end()};
}

class SocialProfileMerge : public fixtures::UntranslatedWords {
  protected:
    ~SocialProfileMerge() override {
        QVLinkFetcher::setPolicy({});
        QVLinkFetcher::setFetcher({});
    }
    void merge() { mContact.mergeContactInfoFromSocialProfile(mProfile, mAvatarIsUpdated); }
    /// Links are noted, and lead to nothing.
    void noteLinks() {
        QVLinkFetcher::setFetcher([this](const std::string& link) {
            mFetched.push_back(link);
            return std::nullopt;
        });
    }

    QVVeltoContact mContact;
    std::shared_ptr<QVSocialProfile> mProfile = std::make_shared<QVSocialProfile>();
    bool mAvatarIsUpdated = false;
    std::vector<std::string> mFetched;
};

TEST_F(SocialProfileMerge, TakesANameThatSaysSomething) {
    mContact.setFullName("Card Name");
    merge();
    EXPECT_EQ(mContact.fullName(), "Card Name");
    mProfile->setFormattedName("");
    merge();
    EXPECT_EQ(mContact.fullName(), "Card Name");
    mProfile->setFormattedName("Profile Name");
    merge();
    EXPECT_EQ(mContact.fullName(), "Profile Name");
}

struct WorkRow {
    const char* name;
    QVString card;
    QVString profile;
    std::int32_t source;
    QVString expected;
};

void PrintTo(const WorkRow& row, std::ostream* stream) {
    *stream << row.name;
}

class WorkMerge : public testing::TestWithParam<WorkRow> {};

TEST_P(WorkMerge, GoesByTheSource) {
    const auto& row = GetParam();
    QVVeltoContact contact;
    contact.setJobTitle(row.card);
    contact.setCompany(row.card);
    const auto profile = std::make_shared<QVSocialProfile>();
    profile->setJobTitle(row.profile);
    profile->setJobTitleSource(row.source);
    bool updated = false;
    contact.mergeContactInfoFromSocialProfile(profile, updated);
    EXPECT_EQ(contact.jobTitle(), row.expected);
    EXPECT_EQ(contact.company(), row.card) << "each on its own";
    profile->setCompany(row.profile);
    profile->setCompanySource(row.source);
    contact.mergeContactInfoFromSocialProfile(profile, updated);
    EXPECT_EQ(contact.company(), row.expected);
}

INSTANTIATE_TEST_SUITE_P(Rows, WorkMerge,
                         testing::Values(WorkRow{"NetworkReplaces", "Card", "Profile", 1, "Profile"},
                                         WorkRow{"NetworkFillsAbsent", std::nullopt, "Profile", 1, "Profile"},
                                         WorkRow{"NetworkSaysNothing", "Card", "", 1, "Card"},
                                         WorkRow{"NetworkIsAbsent", "Card", std::nullopt, 1, "Card"},
                                         WorkRow{"OtherKeepsCard", "Card", "Profile", 2, "Card"},
                                         WorkRow{"UnknownKeepsCard", "Card", "Profile", 0, "Card"},
                                         WorkRow{"ManyBitsKeepCard", "Card", "Profile", 5, "Card"},
                                         WorkRow{"OtherFillsAbsent", std::nullopt, "Profile", 4, "Profile"},
                                         WorkRow{"OtherFillsEmpty", "", "Profile", 8, "Profile"},
                                         WorkRow{"NothingLeavesEmpty", "", "", 8, ""},
                                         WorkRow{"NothingLeavesAbsent", std::nullopt, "", 8, std::nullopt}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(SocialProfileMerge, RebuildsTheEmailsFromTheProfile) {
    mContact.setEmailFields(
        entrySet({{"Email", "JO@example.com"}, {"Work", "card@example.com"}, {"Email", ""}, {"Email", std::nullopt}}));
    mProfile->mergeWithEmailSet(
        profileEmails({{std::nullopt, "jo@example.com"}, {"", "b@example.com"}, {"Home", "c@example.com"}}));
    merge();
    EXPECT_THAT(entriesOf(mContact.emailFields()),
                ElementsAre(Entry("email", "jo@example.com"), Entry("email", "b@example.com"),
                            Entry("Home", "c@example.com"), Entry("Work", "card@example.com")));
    EXPECT_EQ(mProfile->emailAddresses().size(), 4U) << "the profile took the card's";
}

TEST_F(SocialProfileMerge, RebuildsThePhonesFromTheProfile) {
    mContact.setPhoneFields(entrySet({{"Phone", "(202) 555-0142"}, {std::nullopt, "555-0199"}}));
    mProfile->mergeWithPhoneNumberSet(profilePhones({{std::nullopt, "+1 202 555 0142"}, {"Mobile", "555-0100"}}));
    merge();
    EXPECT_THAT(
        entriesOf(mContact.phoneFields()),
        ElementsAre(Entry("phone", "+1 202 555 0142"), Entry("Mobile", "555-0100"), Entry("phone", "555-0199")));
}

TEST_F(SocialProfileMerge, UsesTheHostsWordsInLowerCase) {
    qv::Bundle::setLocalizer([](std::string_view key) -> std::optional<std::string> {
        if (key == "email") return "courriel";
        if (key == "phone") return "t\xC3\xA9l.";
        return std::nullopt;
    });
    mProfile->mergeWithEmailSet(profileEmails({{std::nullopt, "a@example.com"}}));
    mProfile->mergeWithPhoneNumberSet(profilePhones({{"", "555-0100"}}));
    merge();
    EXPECT_THAT(entriesOf(mContact.emailFields()), ElementsAre(Entry("courriel", "a@example.com")));
    EXPECT_THAT(entriesOf(mContact.phoneFields()), ElementsAre(Entry("t\xC3\xA9l.", "555-0100")));
}

TEST_F(SocialProfileMerge, KeepsAMisreadNumberAndAddress) {
    mContact.setEmailFields(entrySet({{"Email", "jo at example"}}));
    mContact.setPhoneFields(entrySet({{"Phone", "O2O B"}}));
    merge();
    EXPECT_THAT(entriesOf(mContact.emailFields()), ElementsAre(Entry("Email", "jo at example")));
    EXPECT_THAT(entriesOf(mContact.phoneFields()), ElementsAre(Entry("Phone", "O2O B")));
}

TEST_F(SocialProfileMerge, EndsWithEmptySetsWhenNobodyHasAny) {
    merge();
    ASSERT_TRUE(mContact.emailFields());
    ASSERT_TRUE(mContact.phoneFields());
    ASSERT_TRUE(mContact.twitterHandles());
    EXPECT_THAT(*mContact.emailFields(), IsEmpty());
    EXPECT_THAT(*mContact.phoneFields(), IsEmpty());
    EXPECT_THAT(*mContact.twitterHandles(), IsEmpty());
}

TEST_F(SocialProfileMerge, LeavesTheOldSetsToWhoHoldsThem) {
    const auto before = entrySet({{"Email", "a@example.com"}});
    mContact.setEmailFields(before);
    mProfile->mergeWithEmailSet(profileEmails({{"Home", "b@example.com"}}));
    merge();
    EXPECT_EQ(before->size(), 1U);
}

TEST_F(SocialProfileMerge, FillsLinksThatAreAbsent) {
    mProfile->setProfileURLFacebook("https://example.com/fb");
    mProfile->setProfileURLLinkedInPublic("https://example.com/in");
    mContact.setFacebookProfileURL("");
    merge();
    EXPECT_EQ(mContact.facebookProfileURL(), "") << "empty is present";
    EXPECT_EQ(mContact.linkedInProfileURL(), "https://example.com/in");
    mProfile->setProfileURLLinkedInPublic("https://example.com/other");
    merge();
    EXPECT_EQ(mContact.linkedInProfileURL(), "https://example.com/in");
    mContact.setFacebookProfileURL(std::nullopt);
    mContact.setLinkedInProfileURL("");
    merge();
    EXPECT_EQ(mContact.facebookProfileURL(), "https://example.com/fb");
    EXPECT_EQ(mContact.linkedInProfileURL(), "");
}

TEST_F(SocialProfileMerge, FillsAnAbsentAddressWithTheFirst) {
    merge();
    EXPECT_EQ(mContact.address(), std::nullopt);
    mProfile->setAddressList({QVPostalAddress::addressWithLabel("Work", "1 Main St"),
                              QVPostalAddress::addressWithLabel("Home", "2 Side St")});
    merge();
    EXPECT_EQ(mContact.address(), "1 Main St");
    mContact.setAddress("");
    merge();
    EXPECT_EQ(mContact.address(), "");
}

TEST_F(SocialProfileMerge, TakesTheProfilesHandles) {
    mContact.setTwitterHandles(handleSet({"@Jordan", "jordan_w"}));
    mProfile->mergeWithTwitterSet(handleSet({"jordan"}));
    merge();
    EXPECT_THAT(*mContact.twitterHandles(), ElementsAre("jordan", "jordan_w"));
    EXPECT_THAT(*mProfile->twitterAccounts(), ElementsAre("jordan", "jordan_w"));
}

TEST_F(SocialProfileMerge, LeavesTheRestAlone) {
    mContact.setWeiboHandles(handleSet({"w"}));
    mContact.setURL("www.example.com");
    mContact.setResourceHashes(fixtures::strings({"hash"}));
    mContact.setOrderedEmailFields(fixtures::entryArray({{"Email", "a@example.com"}}));
    const auto weibo = mContact.weiboHandles();
    const auto ordered = mContact.orderedEmailFields();
    merge();
    EXPECT_EQ(mContact.weiboHandles(), weibo);
    EXPECT_EQ(mContact.URL(), "www.example.com");
    EXPECT_THAT(*mContact.resourceHashes(), ElementsAre("hash"));
    EXPECT_EQ(mContact.orderedEmailFields(), ordered);
    EXPECT_EQ(mContact.resources(), nullptr);
}

TEST_F(SocialProfileMerge, IsNothingWithoutAProfile) {
    mContact.setFullName("Card Name");
    mProfile = nullptr;
    merge();
    EXPECT_EQ(mContact.fullName(), "Card Name");
    EXPECT_EQ(mContact.emailFields(), nullptr);
    EXPECT_EQ(mContact.twitterHandles(), nullptr);
    EXPECT_FALSE(mAvatarIsUpdated);
}

TEST_F(SocialProfileMerge, TakesThePictureOfTheAddressBook) {
    mProfile->setAddressBookAvatarData(picture());
    merge();
    ASSERT_TRUE(mContact.avatar());
    EXPECT_TRUE(mContact.avatar()->isValid());
    EXPECT_TRUE(mAvatarIsUpdated);
}

TEST_F(SocialProfileMerge, KeepsAnAvatarThatIsThereAndTheFlag) {
    const auto own = qv::Image::initWithData(picture());
    mContact.setAvatar(own);
    mProfile->setAvatarURLLinkedIn("https://example.com/a.png");
    mProfile->setAddressBookAvatarData(picture());
    noteLinks();
    for (const bool before : {false, true}) {
        mAvatarIsUpdated = before;
        merge();
        EXPECT_EQ(mAvatarIsUpdated, before);
    }
    EXPECT_EQ(mContact.avatar(), own);
    EXPECT_THAT(mFetched, IsEmpty());
}

TEST_F(SocialProfileMerge, NeverClearsTheFlag) {
    mAvatarIsUpdated = true;
    merge();
    EXPECT_EQ(mContact.avatar(), nullptr);
    EXPECT_TRUE(mAvatarIsUpdated);
}

TEST_F(SocialProfileMerge, TakesNoPictureThatDoesNotDecode) {
    mProfile->setAddressBookAvatarData(qv::Data{1, 2, 3});
    merge();
    EXPECT_EQ(mContact.avatar(), nullptr);
    EXPECT_FALSE(mAvatarIsUpdated);
    mProfile->setAddressBookAvatarData(qv::Data());
    merge();
    EXPECT_EQ(mContact.avatar(), nullptr);
}

TEST_F(SocialProfileMerge, ChoosesByThePresenceOfALink) {
    noteLinks();
    mProfile->setAddressBookAvatarData(picture());
    mProfile->setAvatarURLFacebookBig("https://example.com/fb.png");
    merge();
    EXPECT_THAT(mFetched, ElementsAre("https://example.com/fb.png"));
    EXPECT_EQ(mContact.avatar(), nullptr) << "no falling back to the address book";
    mFetched.clear();
    mProfile->setAvatarURLFacebookBig("");
    merge();
    EXPECT_THAT(mFetched, ElementsAre("")) << "an empty link is present";
    EXPECT_EQ(mContact.avatar(), nullptr);
    mFetched.clear();
    mProfile->setAvatarURLFacebookBig("https://example.com/fb.png");
    mProfile->setAvatarURLLinkedIn("https://example.com/in.png");
    merge();
    EXPECT_THAT(mFetched, ElementsAre("https://example.com/in.png")) << "no falling back to the other link";
    mFetched.clear();
    mProfile->setAvatarURLLinkedIn("");
    merge();
    EXPECT_THAT(mFetched, ElementsAre("")) << "an empty link is present";
    EXPECT_EQ(mContact.avatar(), nullptr);
    EXPECT_FALSE(mAvatarIsUpdated);
}

TEST_F(SocialProfileMerge, FetchesThePictureBehindALink) {
    QVLinkFetcher::setPolicy({.allowsPrivateAddresses = true});
    ScriptedServer server;
    server.respond(ScriptedServer::answer(200, textOf(picture())));
    mProfile->setAvatarURLLinkedIn(server.url("/in.png"));
    merge();
    ASSERT_TRUE(mContact.avatar());
    EXPECT_TRUE(mAvatarIsUpdated);
    EXPECT_EQ(server.requests().front().target, "/in.png");
}

TEST_F(SocialProfileMerge, FetchesNothingFromTheOwnNetwork) {
    ScriptedServer server;
    server.respond(ScriptedServer::answer(200, textOf(picture())));
    mProfile->setAvatarURLLinkedIn(server.url("/in.png"));
    merge();
    EXPECT_EQ(mContact.avatar(), nullptr);
    EXPECT_FALSE(mAvatarIsUpdated);
    EXPECT_EQ(server.connectionCount(), 0U);
}

}  // namespace
