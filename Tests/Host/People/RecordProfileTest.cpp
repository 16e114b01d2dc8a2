#include "People/RecordProfile.h"
#include "Support/TestImages.h"

#include <gtest/gtest.h>

namespace {

using qvhost::profileForSaving;

QVVeltoContact wholeContact() {
    QVVeltoContact contact;
    contact.setFullName("Ada Example");
    contact.setJobTitle("Engineer");
    contact.setCompany("Example Ltd");
    contact.setAddress("1 Main Street");
    contact.setLinkedInProfileURL("https://linkedin.example/ada");
    contact.setFacebookProfileURL("https://facebook.example/ada");
    contact.setAvatar(qv::Image::initWithData(testsupport::makePNG(testsupport::quarters(4, 4))));
    return contact;
}

TEST(ProfileForSaving, OfANewContactHoldsWhatTheExportLeavesOut) {
    const QVVeltoContact contact = wholeContact();
    const auto profile = profileForSaving(contact, nullptr);
    EXPECT_EQ(profile->formattedName(), "Ada Example");
    EXPECT_EQ(profile->jobTitle(), "Engineer");
    EXPECT_EQ(profile->company(), "Example Ltd");
    ASSERT_EQ(profile->addressList().size(), 1U);
    EXPECT_EQ(profile->addressList().front()->formattedAddress(), "1 Main Street");
    EXPECT_EQ(profile->profileURLLinkedInPublic(), "https://linkedin.example/ada");
    EXPECT_EQ(profile->profileURLFacebook(), "https://facebook.example/ada");
    EXPECT_EQ(profile->addressBookAvatarData(), contact.avatar()->encodedData());
    EXPECT_EQ(profile->profileType(), 0);
}

TEST(ProfileForSaving, OfAnEmptyContactIsEmpty) {
    const auto profile = profileForSaving(QVVeltoContact(), nullptr);
    EXPECT_EQ(profile->formattedName(), std::nullopt);
    EXPECT_TRUE(profile->addressList().empty());
    EXPECT_EQ(profile->addressBookAvatarData(), std::nullopt);
}

TEST(ProfileForSaving, LeavesARecordsNameAndWorkToTheLibrary) {
    const auto record = std::make_shared<QVSocialProfile>();
    record->setProfileType(QVSocialProfileSourceAddressBook);
    record->setAddressBookUID("u-1");
    const auto profile = profileForSaving(wholeContact(), record);
    EXPECT_EQ(profile->formattedName(), std::nullopt);
    EXPECT_EQ(profile->jobTitle(), std::nullopt);
    EXPECT_EQ(profile->company(), std::nullopt);
    EXPECT_EQ(profile->addressBookUID(), "u-1");
    EXPECT_EQ(profile->addressList().size(), 1U);
    EXPECT_TRUE(profile->addressBookAvatarData());
    EXPECT_TRUE(record->addressList().empty()) << "the record itself stays";
}

std::shared_ptr<QVSocialProfile> otherProfile() {
    auto profile = std::make_shared<QVSocialProfile>();
    profile->setFormattedName("A. Example");
    profile->setJobTitle("Director");
    profile->setCompany("Other Ltd");
    profile->setAddressList({QVPostalAddress::addressWithLabel(std::nullopt, "London")});
    profile->setProfileURLFacebook("https://facebook.example/other");
    profile->setAddressBookAvatarData(qv::Data{1});
    return profile;
}

TEST(ProfileForSaving, OfSomebodyFoundElsewhereHoldsTheContactsWords) {
    const auto profile = profileForSaving(wholeContact(), otherProfile());
    EXPECT_EQ(profile->formattedName(), "Ada Example");
    EXPECT_EQ(profile->jobTitle(), "Engineer");
    EXPECT_EQ(profile->company(), "Example Ltd");
    ASSERT_EQ(profile->addressList().size(), 1U);
    EXPECT_EQ(profile->addressList().front()->formattedAddress(), "1 Main Street");
    const auto unchanged = profileForSaving(QVVeltoContact(), otherProfile());
    EXPECT_EQ(unchanged->formattedName(), "A. Example");
    EXPECT_EQ(unchanged->jobTitle(), "Director");
    EXPECT_EQ(unchanged->company(), "Other Ltd");
    EXPECT_EQ(unchanged->addressList().front()->formattedAddress(), "London");
}

TEST(ProfileForSaving, FillsOnlyGapsOfARecord) {
    const auto record = otherProfile();
    record->setProfileType(QVSocialProfileSourceAddressBook);
    const auto profile = profileForSaving(wholeContact(), record);
    EXPECT_EQ(profile->jobTitle(), "Director");
    EXPECT_EQ(profile->addressList().front()->formattedAddress(), "London");
    EXPECT_EQ(profile->profileURLLinkedInPublic(), "https://linkedin.example/ada");
    EXPECT_EQ(profile->profileURLFacebook(), "https://facebook.example/other");
    EXPECT_EQ(profile->addressBookAvatarData(), qv::Data{1});
}

TEST(IsRecord, GoesByTheProfilesType) {
    EXPECT_FALSE(qvhost::isRecord(nullptr));
    const auto profile = std::make_shared<QVSocialProfile>();
    EXPECT_FALSE(qvhost::isRecord(profile));
    profile->setProfileType(QVSocialProfileSourceAddressBook | QVSocialProfileSourceProfessionalNetwork);
    EXPECT_TRUE(qvhost::isRecord(profile));
    profile->setProfileType(QVSocialProfileSourceFacebook);
    EXPECT_FALSE(qvhost::isRecord(profile));
}

}  // namespace
