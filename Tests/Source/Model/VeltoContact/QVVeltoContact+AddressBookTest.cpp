#include "../../../SocialSearch/FakeAddressBook.h"
#include "ContactFixtures.h"
#include "Support/DrivenMainQueue.h"

#include <gmock/gmock.h>

namespace {

using fixtures::entrySet;
using fixtures::handleSet;
using testing::ElementsAre;
using testing::IsEmpty;

using Texts = std::vector<std::pair<QVString, std::string>>;

Texts emailsOf(const QVSocialProfile& profile) {
    Texts texts;
    for (const auto& email : profile.emailAddresses())
        texts.emplace_back(email->label(), email->address());
    return texts;
}

Texts phonesOf(const QVSocialProfile& profile) {
    Texts texts;
    for (const auto& phone : profile.phoneNumbers())
        texts.emplace_back(phone->type(), phone->number());
    return texts;
}

std::shared_ptr<QVVeltoContact> fullContact() {
    auto contact = std::make_shared<QVVeltoContact>();
    contact->setFullName("Jordan Example");
    contact->setJobTitle("Head");
    contact->setCompany("Example Ltd.");
    contact->setEmailFields(entrySet({{"Work", "jo@example.com"}, {"Email", ""}, {std::nullopt, "b@example.com"}}));
    contact->setPhoneFields(entrySet({{"Mobile", "+1 202 555 0142"}, {"Phone", std::nullopt}}));
    contact->setTwitterHandles(handleSet({"jordan"}));
    contact->setAddress("1 Main St");
    contact->setURL("www.example.com");
    contact->setLinkedInProfileURL("https://example.com/in");
    contact->setFacebookProfileURL("https://example.com/fb");
    return contact;
}

class AddressBookExport : public testing::Test {
  protected:
    AddressBookExport() {
        mAddressBook->save = [this](const QVSocialProfile& profile) {
            mSaved = profile.copy();
            QVAddressBookSaveResult result;
            result.UID = "uid-1";
            result.outcome = QVAddressBookSaveOutcome::Updated;
            return result;
        };
    }

    /// The profile as the address book got it.
    std::shared_ptr<QVSocialProfile> save(const std::shared_ptr<QVVeltoContact>& contact,
                                          const std::shared_ptr<QVSocialProfile>& profile) {
        mResults.clear();
        // The receiver plays no part.
        QVVeltoContact().saveToContactsWithVeltoContact(
            contact, profile, [this](const QVAddressBookSaveResult& result) { mResults.push_back(result); });
        EXPECT_TRUE(mMain.pumpUntil([this] { return !mResults.empty(); }));
        return mSaved;
    }
    static std::shared_ptr<QVSocialProfile> profileOfType(std::int32_t type) {
        auto profile = std::make_shared<QVSocialProfile>();
        profile->setProfileType(type);
        profile->setAddressBookUID("uid-1");
        return profile;
    }

    testsupport::DrivenMainQueue mMain;
    std::shared_ptr<social::FakeAddressBook> mAddressBook = std::make_shared<social::FakeAddressBook>();
    social::ChosenAddressBook mChosen{mAddressBook};
    std::shared_ptr<QVSocialProfile> mSaved;
    std::vector<QVAddressBookSaveResult> mResults;
};

TEST_F(AddressBookExport, MakesANewRecordFromTheContactAlone) {
    const auto saved = save(fullContact(), nullptr);
    EXPECT_EQ(saved->profileType(), 0);
    EXPECT_EQ(saved->addressBookUID(), std::nullopt);
    EXPECT_EQ(saved->formattedName(), "Jordan Example");
    EXPECT_EQ(saved->jobTitle(), "Head");
    EXPECT_EQ(saved->company(), "Example Ltd.");
    EXPECT_EQ(emailsOf(*saved), (Texts{{"Work", "jo@example.com"}, {std::nullopt, "b@example.com"}}));
    EXPECT_EQ(phonesOf(*saved), (Texts{{"Mobile", "+1 202 555 0142"}}));
    EXPECT_THAT(*saved->twitterAccounts(), ElementsAre("jordan"));
    EXPECT_THAT(saved->addressList(), IsEmpty()) << "nothing else is exported";
    EXPECT_EQ(saved->profileURLLinkedInPublic(), std::nullopt);
    EXPECT_EQ(saved->profileURLFacebook(), std::nullopt);
    EXPECT_EQ(saved->addressBookAvatarData(), std::nullopt);
}

TEST_F(AddressBookExport, KeepsAbsentValuesOfANewRecordAbsent) {
    const auto saved = save(std::make_shared<QVVeltoContact>(), nullptr);
    EXPECT_EQ(saved->formattedName(), std::nullopt);
    EXPECT_EQ(saved->jobTitle(), std::nullopt);
    EXPECT_EQ(saved->company(), std::nullopt);
    EXPECT_THAT(saved->emailAddresses(), IsEmpty());
    EXPECT_THAT(saved->phoneNumbers(), IsEmpty());
    EXPECT_THAT(*saved->twitterAccounts(), IsEmpty());
}

TEST_F(AddressBookExport, FillsNothingIntoAProfileThatBecomesANewRecord) {
    for (const std::int32_t type : {0, 1, 2, 3, 8}) {
        const auto profile = profileOfType(type);
        profile->setCompany("");
        const auto saved = save(fullContact(), profile);
        EXPECT_EQ(saved->formattedName(), std::nullopt);
        EXPECT_EQ(saved->jobTitle(), std::nullopt);
        EXPECT_EQ(saved->company(), "");
        EXPECT_EQ(saved->profileType(), type);
        EXPECT_EQ(emailsOf(*saved).size(), 2U) << "but the entries are merged";
    }
}

TEST_F(AddressBookExport, FillsWhatAnExistingRecordLacks) {
    const auto absent = save(fullContact(), profileOfType(4));
    EXPECT_EQ(absent->jobTitle(), "Head");
    EXPECT_EQ(absent->company(), "Example Ltd.");
    EXPECT_EQ(absent->formattedName(), std::nullopt) << "the name is not written";
    EXPECT_EQ(absent->addressBookUID(), "uid-1");
    const auto withCompany = profileOfType(4 + 2);
    withCompany->setJobTitle("");
    withCompany->setCompany("Other Ltd.");
    const auto titleFilled = save(fullContact(), withCompany);
    EXPECT_EQ(titleFilled->jobTitle(), "Head");
    EXPECT_EQ(titleFilled->company(), "Other Ltd.") << "each on its own";
    const auto withTitle = profileOfType(4 + 8);
    withTitle->setJobTitle("Chair");
    withTitle->setCompany("");
    const auto companyFilled = save(fullContact(), withTitle);
    EXPECT_EQ(companyFilled->jobTitle(), "Chair");
    EXPECT_EQ(companyFilled->company(), "Example Ltd.");
}

TEST_F(AddressBookExport, FillsNothingThatAProfessionalNetworkLeftOut) {
    const auto profile = profileOfType(4 + 1);
    profile->setJobTitle("");
    const auto saved = save(fullContact(), profile);
    EXPECT_EQ(saved->jobTitle(), "");
    EXPECT_EQ(saved->company(), std::nullopt);
    EXPECT_EQ(emailsOf(*saved).size(), 2U);
}

TEST_F(AddressBookExport, MergesBehindTheProfilesOwnEntries) {
    const auto profile = profileOfType(4);
    profile->setEmailAddresses({QVEmail::emailWithLabel("Home", "JO@example.com")});
    profile->setPhoneNumbers({QVPhoneNumber::phoneNumberWithNumber("202-555-0142", "Cell")});
    profile->mergeWithTwitterSet(handleSet({"@Jordan", "other"}));
    const auto saved = save(fullContact(), profile);
    EXPECT_EQ(emailsOf(*saved), (Texts{{"Home", "JO@example.com"}, {std::nullopt, "b@example.com"}}));
    EXPECT_EQ(phonesOf(*saved), (Texts{{"Cell", "202-555-0142"}}));
    EXPECT_THAT(*saved->twitterAccounts(), ElementsAre("@Jordan", "other"));
}

TEST_F(AddressBookExport, SavesAProfileWhenTheContactHasNoEntries) {
    for (const auto& contact : {std::make_shared<QVVeltoContact>(), std::shared_ptr<QVVeltoContact>()}) {
        const auto profile = profileOfType(4);
        profile->setEmailAddresses({QVEmail::emailWithLabel("Home", "jo@example.com")});
        const auto saved = save(contact, profile);
        EXPECT_EQ(emailsOf(*saved), (Texts{{"Home", "jo@example.com"}}));
        EXPECT_EQ(saved->jobTitle(), std::nullopt);
    }
}

TEST_F(AddressBookExport, LeavesTheGivenProfileAsItIs) {
    for (const std::int32_t type : {0, 4}) {
        const auto profile = profileOfType(type);
        save(fullContact(), profile);
        EXPECT_EQ(profile->jobTitle(), std::nullopt);
        EXPECT_EQ(profile->company(), std::nullopt);
        EXPECT_THAT(profile->emailAddresses(), IsEmpty());
        EXPECT_THAT(profile->phoneNumbers(), IsEmpty());
        EXPECT_THAT(*profile->twitterAccounts(), IsEmpty());
    }
}

TEST_F(AddressBookExport, HandsTheReportThrough) {
    save(fullContact(), nullptr);
    ASSERT_EQ(mResults.size(), 1U);
    EXPECT_FALSE(mResults.front().error);
    EXPECT_EQ(mResults.front().UID, "uid-1");
    EXPECT_EQ(mResults.front().outcome, QVAddressBookSaveOutcome::Updated);
    QVAddressBookController::sharedController()->setAddressBook(nullptr);
    save(fullContact(), nullptr);
    ASSERT_TRUE(mResults.front().error);
    EXPECT_EQ(mResults.front().error->code, QVAddressBookErrorNoAddressBook);
}

TEST_F(AddressBookExport, GoesEitherWayWhenAskedDirectly) {
    const auto report = [this](const QVAddressBookSaveResult& result) { mResults.push_back(result); };
    QVVeltoContact().updateExistingAddressBookRecordWithVeltoContact(fullContact(), profileOfType(0), report);
    ASSERT_TRUE(mMain.pumpUntil([this] { return mResults.size() == 1; }));
    EXPECT_EQ(mSaved->jobTitle(), "Head");
    QVVeltoContact().saveNewAddressBookRecordWithVeltoContact(fullContact(), profileOfType(4), report);
    ASSERT_TRUE(mMain.pumpUntil([this] { return mResults.size() == 2; }));
    EXPECT_EQ(mSaved->jobTitle(), std::nullopt);
    QVVeltoContact().updateExistingAddressBookRecordWithVeltoContact(fullContact(), nullptr, report);
    ASSERT_TRUE(mMain.pumpUntil([this] { return mResults.size() == 3; }));
    EXPECT_EQ(mResults.back().error->code, QVAddressBookErrorNoProfile);
}

}  // namespace
