#include "FakeProvider.h"
#include "SocialFixtures.h"
#include "SocialSearchManagerFixture.h"
#include "Support/Gate.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using social::finding;
using social::provider;
using testing::ElementsAre;
using testsupport::Gate;

using QVSocialSearchMergeTest = social::SocialSearchManagerFixture;

TEST_F(QVSocialSearchMergeTest, TrustsInTheOrderOfTheProviders) {
    // The less trusted one is sure to answer first.
    const auto gate = std::make_shared<Gate>();
    const auto trusted = social::profile("Trusted Name", 8);
    trusted->setCompany("Trusted Ltd.");
    trusted->setCompanySource(8);
    trusted->mergeWithEmailSet(social::emails({{"T", "jo@example.com"}}));
    const auto other = social::profile("Other Name", 2);
    other->setCompany("Other Ltd.");
    other->setCompanySource(2);
    other->setJobTitle("Head");
    other->setJobTitleSource(2);
    other->setProfileURLFacebook("https://example.com/fb");
    other->mergeWithEmailSet(social::emails({{"O", "JO@example.com"}, {"O", "second@example.com"}}));
    other->setAddressBookAvatarData(social::bytes("picture"));
    mManager->setProviders({provider([=](const auto&) {
                                gate->wait();
                                return trusted;
                            }),
                            finding(other)});
    search();
    ASSERT_TRUE(mMain.pumpUntilRan(1));
    gate->open();
    ASSERT_TRUE(waitForAnswer());
    EXPECT_EQ(found()->profileType(), 10);
    EXPECT_EQ(found()->formattedName(), "Trusted Name");
    EXPECT_EQ(found()->company(), "Trusted Ltd.");
    EXPECT_EQ(found()->companySource(), 8);
    EXPECT_EQ(found()->jobTitle(), "Head");
    EXPECT_EQ(found()->jobTitleSource(), 2);
    EXPECT_EQ(found()->profileURLFacebook(), "https://example.com/fb");
    EXPECT_EQ(found()->addressBookAvatarData(), social::bytes("picture"));
    EXPECT_THAT(social::emailsOf(*found()),
                ElementsAre(social::Entry("T", "jo@example.com"), social::Entry("O", "second@example.com")));
}

TEST_F(QVSocialSearchMergeTest, PutsAProfessionalNetworksWorkFirst) {
    const auto first = social::profile("First");
    first->setJobTitle("Old Title");
    first->setJobTitleSource(4);
    first->setCompany("Old Ltd.");
    first->setCompanySource(4);
    const auto network = social::profile("Second", 1);
    network->setJobTitle("New Title");
    network->setJobTitleSource(1);
    network->setCompany("");
    network->setCompanySource(1);
    mManager->setProviders({finding(first), finding(network)});
    search();
    ASSERT_TRUE(waitForAnswer());
    EXPECT_EQ(found()->formattedName(), "First");
    EXPECT_EQ(found()->jobTitle(), "New Title");
    EXPECT_EQ(found()->jobTitleSource(), 1);
    EXPECT_EQ(found()->company(), "Old Ltd.") << "an empty text is no word";
    EXPECT_EQ(found()->companySource(), 4);
}

TEST_F(QVSocialSearchMergeTest, KeepsTheFirstOfSeveralProfessionalNetworks) {
    QVSocialSearchManager::Providers networks;
    for (const char* title : {"", "First Title", "Second Title"}) {
        const auto network = social::profile(std::nullopt, 1);
        network->setJobTitle(title);
        network->setJobTitleSource(1);
        networks.push_back(finding(network));
    }
    mManager->setProviders(networks);
    search();
    ASSERT_TRUE(waitForAnswer());
    EXPECT_EQ(found()->jobTitle(), "First Title");
    EXPECT_EQ(found()->jobTitleSource(), 1);
}

TEST_F(QVSocialSearchMergeTest, JoinsTheListsAndFillsWhatIsMissing) {
    const auto first = social::profile(std::nullopt, 4);
    first->setProfileURLFacebook("https://example.com/fb1");
    first->setAvatarURLFacebookBig("https://example.com/fb1.png");
    first->mergeWithTwitterSet(social::handles({"one"}));
    first->mergeWithPhoneNumberSet(social::phones({{"First", "555-0100"}}));
    first->setAddressList({QVPostalAddress::addressWithLabel("Work", "1 Main St")});
    first->setAddressBookAvatarData(social::bytes("own"));
    const auto second = social::profile("", 8);
    second->setAddressBookUID("uid-2");
    second->setProfileURLLinkedInPublic("https://example.com/in2");
    second->setProfileURLFacebook("https://example.com/fb2");
    second->setAvatarURLLinkedIn("https://example.com/in2.png");
    second->setAvatarURLFacebookBig("https://example.com/fb2.png");
    second->mergeWithTwitterSet(social::handles({"@One", "two"}));
    second->mergeWithPhoneNumberSet(social::phones({{"Second", "555 0100"}, {"Second", "555-0199"}}));
    second->setAddressList({QVPostalAddress::addressWithLabel("Work", "1 Main St"),
                            QVPostalAddress::addressWithLabel("Home", "2 Side St")});
    second->setAddressBookAvatarData(social::bytes("other"));
    mManager->setProviders({finding(first), finding(nullptr), finding(second), finding(social::profile("Third", 16))});
    search();
    ASSERT_TRUE(waitForAnswer());
    EXPECT_EQ(found()->profileType(), 4 + 8 + 16);
    EXPECT_EQ(found()->addressBookUID(), "uid-2");
    EXPECT_EQ(found()->formattedName(), "Third") << "an empty name is no word";
    EXPECT_EQ(found()->profileURLLinkedInPublic(), "https://example.com/in2");
    EXPECT_EQ(found()->profileURLFacebook(), "https://example.com/fb1");
    EXPECT_EQ(found()->avatarURLLinkedIn(), "https://example.com/in2.png");
    EXPECT_EQ(found()->avatarURLFacebookBig(), "https://example.com/fb1.png");
    EXPECT_THAT(social::handlesOf(*found()), ElementsAre("one", "two"));
    EXPECT_THAT(social::phonesOf(*found()),
                ElementsAre(social::Entry("First", "555-0100"), social::Entry("Second", "555-0199")));
    ASSERT_EQ(found()->addressList().size(), 2U);
    EXPECT_EQ(found()->addressList().back()->formattedAddress(), "2 Side St");
    EXPECT_EQ(found()->addressBookAvatarData(), social::bytes("own"));
}

TEST_F(QVSocialSearchMergeTest, TakesNoMoreEntriesThanAPersonHas) {
    constexpr std::size_t kMostEntries = 500;
    QVEmailList emails;
    QVPhoneNumberList phones;
    QVPostalAddressList addresses;
    for (std::size_t number = 0; number <= kMostEntries; ++number) {
        const std::string text = std::to_string(10000 + number);
        emails.push_back(QVEmail::emailWithLabel("Work", text + "@example.com"));
        phones.push_back(QVPhoneNumber::phoneNumberWithNumber("555" + text, "Work"));
        addresses.push_back(QVPostalAddress::addressWithLabel("Work", text + " Main St"));
    }
    const auto endless = social::profile();
    endless->setEmailAddresses(emails);
    endless->setPhoneNumbers(phones);
    endless->setAddressList(addresses);
    mManager->setProviders({finding(endless)});
    search();
    ASSERT_TRUE(waitForAnswer());
    ASSERT_EQ(found()->emailAddresses().size(), kMostEntries);
    ASSERT_EQ(found()->phoneNumbers().size(), kMostEntries);
    ASSERT_EQ(found()->addressList().size(), kMostEntries);
    EXPECT_EQ(found()->emailAddresses().back()->address(), "10499@example.com") << "the first ones stay";
}

TEST_F(QVSocialSearchMergeTest, CleansLinksAndLabels) {
    const auto hostile = social::profile("A <b>");
    hostile->setProfileURLLinkedInPublic("javascript:alert(1)");
    hostile->setProfileURLFacebook("HTTPS://example.com/fb");
    hostile->setAvatarURLLinkedIn("file:///etc/passwd");
    hostile->setAvatarURLFacebookBig("https:relative");
    hostile->mergeWithEmailSet(social::emails({{"<b>W&\"o'rk</b>", "a@example.com"}}));
    hostile->mergeWithPhoneNumberSet(social::phones({{"<script>", "555-0100"}, {std::nullopt, "555-0199"}}));
    hostile->setAddressList({QVPostalAddress::addressWithLabel("\"Home\"", "1 <Main> St")});
    mManager->setProviders({finding(hostile)});
    search();
    ASSERT_TRUE(waitForAnswer());
    EXPECT_EQ(found()->formattedName(), "A <b>") << "texts are escaped where they are written";
    EXPECT_EQ(found()->profileURLLinkedInPublic(), std::nullopt);
    EXPECT_EQ(found()->profileURLFacebook(), "HTTPS://example.com/fb");
    EXPECT_EQ(found()->avatarURLLinkedIn(), std::nullopt);
    EXPECT_EQ(found()->avatarURLFacebookBig(), std::nullopt);
    EXPECT_THAT(social::emailsOf(*found()), ElementsAre(social::Entry("bWork/b", "a@example.com")));
    EXPECT_THAT(social::phonesOf(*found()),
                ElementsAre(social::Entry("script", "555-0100"), social::Entry(std::nullopt, "555-0199")));
    EXPECT_EQ(found()->addressList().front()->label(), "Home");
    EXPECT_EQ(hostile->profileURLLinkedInPublic(), "javascript:alert(1)") << "the provider's own profile stays";
}

TEST_F(QVSocialSearchMergeTest, HandsOutAProfileOfItsOwn) {
    const auto kept = social::profile("Jordan Example");
    mManager->setProviders({finding(kept)});
    search();
    ASSERT_TRUE(waitForAnswer());
    found()->setFormattedName("Changed");
    EXPECT_EQ(kept->formattedName(), "Jordan Example");
}

}  // namespace
