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

TEST_F(QVSocialSearchMergeTest, CleansLinksAndLabels) {
    const auto hostile = social::profile("A <b>");
    hostile->setProfileURLLinkedInPublic("javascript:alert(1)");
    hostile->setProfileURLFacebook("HTTPS://example.com/fb");
    hostile->setAvatarURLLinkedIn("file:///etc/passwd");
    hostile->setAvatarURLFacebookBig("/relative");
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
