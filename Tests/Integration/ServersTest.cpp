#include "Integration/CardComparison.h"
#include "Integration/Contacts.h"
#include "Integration/RealServers.h"
#include "QVSocialSearch/QVVCardFolder.h"
#include "SocialSearch/VCardFolderSupport.h"
#include "Support/ReadFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <any>
#include <iostream>
#include <string>

namespace {

using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using namespace integration;

std::string textOf(const std::optional<qv::Error>& error) {
    if (!error) return "";
    return std::any_cast<std::string>(error->userInfo.at(std::string(qv::kErrorDescriptionKey)));
}

/// What the folder's own card of that profile says: it is what every server must give back.
std::string cardOf(const QVSocialProfile& profile) {
    const testsupport::TemporaryFolder folder;
    QVVCardFolder cards(folder.path());
    const auto result = cards.saveProfile(profile);
    EXPECT_FALSE(result.error) << textOf(result.error);
    return testsupport::readFile(cards.fileWithUID(result.UID.value_or("")));
}

template <typename Server>
class RealServerTest : public testing::Test {
  protected:
    std::string addressOf(const std::string& UID) const { return mServer.collection() + UID + ".vcf"; }
    std::string stored(const std::string& UID) const {
        return testsupport::bodyOf(mServer.send("GET", addressOf(UID)));
    }
    void save(const QVSocialProfile& profile, QVAddressBookSaveOutcome outcome) {
        const auto result = mBook->saveProfile(profile);
        EXPECT_FALSE(result.error) << textOf(result.error);
        EXPECT_EQ(result.outcome, outcome);
        EXPECT_EQ(result.UID, profile.addressBookUID());
    }

    Server mServer;
    std::unique_ptr<QVCardDAVAddressBook> mBook = mServer.addressBook();
};

using Servers = testing::Types<Radicale, Xandikos>;
TYPED_TEST_SUITE(RealServerTest, Servers);

TYPED_TEST(RealServerTest, TheAddressBookIsFoundFromTheHostAlone) {
    std::optional<qv::Error> error;
    EXPECT_EQ(this->mBook->collectionAddress(&error), this->mServer.collection()) << textOf(error);
    QVCardDAVAddressBook direct(this->mServer.collection(), this->mServer.credentials());
    EXPECT_EQ(direct.collectionAddress(&error), this->mServer.collection()) << textOf(error);
}

TYPED_TEST(RealServerTest, CardsComeBackWithEveryPropertyAndValue) {
    const auto people = contacts();
    for (const auto& profile : people)
        this->save(*profile, QVAddressBookSaveOutcome::Created);
    std::size_t same = 0;
    for (const auto& profile : people) {
        const auto expected = statementsOf(cardOf(*profile));
        const auto found = statementsOf(this->stored(*profile->addressBookUID()));
        EXPECT_THAT(found, ElementsAreArray(expected));
        same += found == expected ? 1 : 0;
    }
    std::optional<qv::Error> error;
    EXPECT_THAT(this->mBook->profiles(&error), SizeIs(people.size()));
    EXPECT_FALSE(error) << textOf(error);
    std::cout << same << " of " << people.size() << " cards came back with the same properties and values\n";
}

TYPED_TEST(RealServerTest, ProfilesComeBackAsTheFolderReadsThem) {
    const testsupport::TemporaryFolder temporary;
    QVVCardFolder folder(temporary.path());
    for (const auto& profile : contacts()) {
        this->save(*profile, QVAddressBookSaveOutcome::Created);
        EXPECT_FALSE(folder.saveProfile(*profile).error);
        std::optional<qv::Error> error;
        const auto ours = folder.profileWithUID(*profile->addressBookUID(), nullptr);
        const auto theirs = this->mBook->profileWithUID(*profile->addressBookUID(), &error);
        ASSERT_TRUE(ours && theirs) << textOf(error);
        EXPECT_EQ(theirs->formattedName(), ours->formattedName());
        EXPECT_EQ(theirs->jobTitle(), ours->jobTitle());
        EXPECT_EQ(theirs->company(), ours->company());
        EXPECT_EQ(theirs->profileURLLinkedInPublic(), ours->profileURLLinkedInPublic());
        EXPECT_EQ(theirs->profileURLFacebook(), ours->profileURLFacebook());
        EXPECT_EQ(theirs->addressBookAvatarData(), ours->addressBookAvatarData());
        EXPECT_THAT(social::emailsOf(*theirs), testing::UnorderedElementsAreArray(social::emailsOf(*ours)));
        EXPECT_THAT(social::phonesOf(*theirs), testing::UnorderedElementsAreArray(social::phonesOf(*ours)));
        EXPECT_THAT(social::handlesOf(*theirs), testing::UnorderedElementsAreArray(social::handlesOf(*ours)));
    }
}

TYPED_TEST(RealServerTest, PeopleAreFoundByAnyAddressInAnyCase) {
    for (const auto& profile : contacts())
        this->save(*profile, QVAddressBookSaveOutcome::Created);
    std::optional<qv::Error> error;
    for (const std::string address : {"ZOE.Mueller@example.com", "many@EXAMPLE.com", "max39@example.com"}) {
        const auto found = this->mBook->profilesWithEmailAddress(address, &error);
        EXPECT_FALSE(error) << textOf(error);
        EXPECT_THAT(found, SizeIs(1)) << address;
    }
    EXPECT_THAT(this->mBook->profilesWithEmailAddress("nobody@example.com", &error), IsEmpty());
    EXPECT_THAT(this->mBook->profilesWithEmailAddress("oe.mueller@example.com", &error), IsEmpty());
    EXPECT_FALSE(this->mBook->profileWithUID("nobody", &error));
    EXPECT_FALSE(error) << textOf(error);
}

TYPED_TEST(RealServerTest, AnUpdateKeepsWhatOthersWrote) {
    const std::string theirs =
        "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:theirs\r\nFN:Tina Theirs\r\nN:Theirs;Tina;;;\r\nNOTE:one\\, two\\nthree\r\n"
        "CATEGORIES:friends,work\r\nBDAY:1980-02-29\r\nX-CUSTOM;X-P=\"a b\":kept\r\nitem1.TEL:+1 202 555 0100\r\n"
        "item1.X-ABLabel:Desk\r\nEND:VCARD\r\n";
    ASSERT_EQ(this->mServer.send("PUT", this->mServer.collection() + "name-of-theirs.vcf", theirs).status / 100, 2);
    auto expected = statementsOf(theirs);

    auto profile = person("theirs", "Tina Theirs");
    profile->mergeWithPhoneNumberSet(social::phones({{"Ours", "+1 202 555 0199"}}));
    this->save(*profile, QVAddressBookSaveOutcome::Updated);
    const auto answer = this->mServer.send("GET", this->mServer.collection() + "name-of-theirs.vcf");
    const auto found = statementsOf(testsupport::bodyOf(answer));
    expected.push_back("EMAIL[TYPE=INTERNET][TYPE=WORK]:text theirs@example.com");
    expected.push_back("TEL(Ours):text +1 202 555 0199");
    std::sort(expected.begin(), expected.end());
    EXPECT_THAT(found, ElementsAreArray(expected));
    EXPECT_EQ(this->mServer.send("GET", this->addressOf("theirs")).status, 404);
}

TYPED_TEST(RealServerTest, ACardOfVersion4StaysOne) {
    const std::string theirs =
        "BEGIN:VCARD\r\nVERSION:4.0\r\nUID:v4\r\nFN:Vera Four\r\nN:Four;Vera;;;\r\nEND:VCARD\r\n";
    ASSERT_EQ(this->mServer.send("PUT", this->addressOf("v4"), theirs).status / 100, 2);
    auto profile = person("v4", "Vera Four");
    profile->mergeWithPhoneNumberSet(social::phones({{"Ours, too", "+1 202 555 0199"}}));
    this->save(*profile, QVAddressBookSaveOutcome::Updated);
    std::vector<std::string> expected = statementsOf(theirs);
    expected.push_back("EMAIL[TYPE=WORK]:text v4@example.com");
    expected.push_back("TEL(Ours, too):text +1 202 555 0199");
    std::sort(expected.begin(), expected.end());
    EXPECT_THAT(statementsOf(this->stored("v4")), ElementsAreArray(expected));
}

TYPED_TEST(RealServerTest, ARecordThatIsGoneIsMadeAnew) {
    this->save(*person("gone", "Gina Gone"), QVAddressBookSaveOutcome::Created);
    ASSERT_EQ(this->mServer.send("DELETE", this->addressOf("gone")).status / 100, 2);
    this->save(*person("gone", "Gina Gone"), QVAddressBookSaveOutcome::Created);
    this->save(*person("gone", "Gina Gone"), QVAddressBookSaveOutcome::Updated);
    EXPECT_THAT(this->mBook->profiles(nullptr), SizeIs(1));
}

// Not with Radicale, which cuts every picture of a 4.0 card at its comma; new cards are of 3.0 therefore.
TEST(XandikosTest, PicturesOfVersion4Stay) {
    const Xandikos server;
    const std::string theirs =
        "BEGIN:VCARD\r\nVERSION:4.0\r\nUID:v4\r\nFN:Vera Four\r\nN:Four;Vera;;;\r\nEND:VCARD\r\n";
    ASSERT_EQ(server.send("PUT", server.collection() + "v4.vcf", theirs).status / 100, 2);
    const auto profile = pictured("v4", testsupport::makePNG(testsupport::quarters(16, 16)));
    EXPECT_EQ(server.addressBook()->saveProfile(*profile).outcome, QVAddressBookSaveOutcome::Updated);
    const auto found = server.addressBook()->profileWithUID("v4", nullptr);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->addressBookAvatarData(), profile->addressBookAvatarData());
}

TEST(RadicaleTest, AWrongPasswordIsTold) {
    const Radicale server;
    QVCardDAVAddressBook book(server.root(), {.user = kUser, .password = "wrong-pass-1", .token = std::nullopt});
    std::optional<qv::Error> error;
    EXPECT_THAT(book.profiles(&error), IsEmpty());
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, QVAddressBookErrorNotAllowed);
    EXPECT_THAT(textOf(error), HasSubstr("does not accept the user name and password"));
    EXPECT_THAT(textOf(error), testing::Not(HasSubstr("wrong-pass-1")));
}

}  // namespace
