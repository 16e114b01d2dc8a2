#include "ContactFixtures.h"
#include "QVCardScan/QVVeltoContact.h"

#include <gmock/gmock.h>

namespace {

using fixtures::entriesOf;
using fixtures::Entry;
using fixtures::entrySet;
using fixtures::handleSet;
using testing::ElementsAre;

TEST(QVVeltoContactDescription, ListsWhatIsThereInOrder) {
    QVVeltoContact contact;
    contact.setFullName("Jordan Example");
    contact.setEmailFields(entrySet({{"Email", "a@example.com"}, {"Work", "b@example.com"}}));
    contact.setPhoneFields(entrySet({{"Phone", "555-0100"}, {std::nullopt, std::nullopt}}));
    contact.setTwitterHandles(handleSet({"jordan"}));
    contact.setWeiboHandles(handleSet({"jordan_w"}));
    contact.setJobTitle("Head %@");
    contact.setCompany("Example Ltd.");
    contact.setURL("www.example.com");
    contact.setAddress("1 Main St\nSpringfield");
    EXPECT_EQ(contact.description(),
              "<INFO> === Velto Contact Info ===\n"
              "       --- Full Name: Jordan Example\n"
              "       --- Email: a@example.com\n"
              "       --- Work: b@example.com\n"
              "       --- Phone: 555-0100\n"
              "       --- (null): (null)\n"
              "       --- Twitter: jordan\n"
              "       --- Weibo: jordan_w\n"
              "       --- Title: Head %@\n"
              "       --- Company: Example Ltd.\n"
              "       --- URL: www.example.com\n"
              "       --- Address: 1 Main St\nSpringfield\n");
}

TEST(QVVeltoContactDescription, SaysNullForWhatIsAbsent) {
    EXPECT_EQ(QVVeltoContact().description(),
              "<INFO> === Velto Contact Info ===\n"
              "       --- Full Name: (null)\n"
              "       --- Title: (null)\n"
              "       --- Company: (null)\n"
              "       --- URL: (null)\n"
              "       --- Address: (null)\n");
}

TEST(QVVeltoContactProperties, EachIsKept) {
    QVVeltoContact contact;
    const auto image = qv::Image::initWithData({});
    const auto entries = fixtures::entryArray({{"a", "b"}});
    const auto texts = fixtures::strings({"x"});
    const auto images = std::make_shared<qv::OrderedSet<std::shared_ptr<qv::Image>>>();
    contact.setAvatar(image);
    contact.setResources(images);
    contact.setResourceHashes(texts);
    contact.setLinkedInProfileURL("l");
    contact.setFacebookProfileURL("f");
    contact.setOrderedEmailFields(entries);
    contact.setOrderedPhoneFields(entries);
    contact.setOrderedTwitterHandles(texts);
    contact.setOrderedWeiboHandles(texts);
    contact.setProfileImageQVURLString("p");
    contact.setCardImageQVURLStrings(texts);
    EXPECT_EQ(contact.avatar(), image);
    EXPECT_EQ(contact.resources(), images);
    EXPECT_EQ(contact.resourceHashes(), texts);
    EXPECT_EQ(contact.linkedInProfileURL(), "l");
    EXPECT_EQ(contact.facebookProfileURL(), "f");
    EXPECT_EQ(contact.orderedEmailFields(), entries);
    EXPECT_EQ(contact.orderedPhoneFields(), entries);
    EXPECT_EQ(contact.orderedTwitterHandles(), texts);
    EXPECT_EQ(contact.orderedWeiboHandles(), texts);
    EXPECT_EQ(contact.profileImageQVURLString(), "p");
    EXPECT_EQ(contact.cardImageQVURLStrings(), texts);
}

class QVVeltoContactMerge : public testing::Test {
  protected:
    std::shared_ptr<QVVeltoContact> mOwn = QVVeltoContact::initWithCard(std::make_shared<QVBusinessCard>());
    std::shared_ptr<QVVeltoContact> mOther = std::make_shared<QVVeltoContact>();
};

TEST_F(QVVeltoContactMerge, UnitesEntriesOwnOnesFirst) {
    mOwn->setEmailFields(entrySet({{"Email", "own@example.com"}, {"Email", "both@example.com"}}));
    mOther->setEmailFields(
        entrySet({{"Work", "both@example.com"}, {"Email", "both@example.com"}, {"Email", "BOTH@example.com"}}));
    mOther->setPhoneFields(entrySet({{"Phone", "555-0100"}}));
    mOwn->mergeContactInfoFromContact(mOther);
    EXPECT_THAT(entriesOf(mOwn->emailFields()),
                ElementsAre(Entry("Email", "own@example.com"), Entry("Email", "both@example.com"),
                            Entry("Work", "both@example.com"), Entry("Email", "BOTH@example.com")));
    EXPECT_THAT(entriesOf(mOwn->phoneFields()), ElementsAre(Entry("Phone", "555-0100")));
}

TEST_F(QVVeltoContactMerge, UnitesHandlesWhereThereAreAny) {
    mOwn->setTwitterHandles(handleSet({"own"}));
    mOwn->setWeiboHandles(handleSet({}));
    mOther->setTwitterHandles(handleSet({"other", "own"}));
    mOther->setWeiboHandles(handleSet({"other"}));
    mOwn->mergeContactInfoFromContact(mOther);
    EXPECT_THAT(*mOwn->twitterHandles(), ElementsAre("own", "other"));
    EXPECT_THAT(*mOwn->weiboHandles(), ElementsAre("other"));
}

TEST_F(QVVeltoContactMerge, NoSetStaysNone) {
    mOther->setTwitterHandles(handleSet({"other"}));
    mOther->setWeiboHandles(handleSet({"other"}));
    mOther->setEmailFields(entrySet({{"Email", "a@example.com"}}));
    mOther->setPhoneFields(entrySet({{"Phone", "1"}}));
    mOwn->setEmailFields(nullptr);
    mOwn->setPhoneFields(nullptr);
    mOwn->mergeContactInfoFromContact(mOther);
    EXPECT_EQ(mOwn->twitterHandles(), nullptr);
    EXPECT_EQ(mOwn->weiboHandles(), nullptr);
    EXPECT_EQ(mOwn->emailFields(), nullptr);
    EXPECT_EQ(mOwn->phoneFields(), nullptr);
}

TEST_F(QVVeltoContactMerge, ASetStaysWhenTheOtherHasNone) {
    mOwn->setEmailFields(entrySet({{"Email", "a@example.com"}}));
    mOwn->mergeContactInfoFromContact(mOther);
    EXPECT_THAT(entriesOf(mOwn->emailFields()), ElementsAre(Entry("Email", "a@example.com")));
}

TEST_F(QVVeltoContactMerge, LeavesTheSetsThatItUnitesAlone) {
    const auto own = entrySet({{"Email", "own@example.com"}});
    const auto other = entrySet({{"Email", "other@example.com"}});
    mOwn->setEmailFields(own);
    mOther->setEmailFields(other);
    mOwn->mergeContactInfoFromContact(mOther);
    EXPECT_EQ(own->size(), 1u);
    EXPECT_EQ(other->size(), 1u);
    EXPECT_EQ(mOther->emailFields(), other);
}

TEST_F(QVVeltoContactMerge, FillsOnlyWhatIsAbsent) {
    const auto avatar = qv::Image::initWithData({});
    mOther->setJobTitle("Other title");
    mOther->setCompany("Other company");
    mOther->setURL("other.example.com");
    mOther->setAvatar(avatar);
    mOwn->setJobTitle("");
    mOwn->setCompany("Own company");
    mOwn->mergeContactInfoFromContact(mOther);
    EXPECT_EQ(mOwn->jobTitle(), "");
    EXPECT_EQ(mOwn->company(), "Own company");
    EXPECT_EQ(mOwn->URL(), "other.example.com");
    EXPECT_EQ(mOwn->avatar(), avatar);
    mOther->setAvatar(qv::Image::initWithData({}));
    mOwn->mergeContactInfoFromContact(mOther);
    EXPECT_EQ(mOwn->avatar(), avatar);
}

TEST_F(QVVeltoContactMerge, DoesNotTouchTheRest) {
    mOther->setFullName("Other Name");
    mOther->setAddress("Other address");
    mOther->setLinkedInProfileURL("http://linkedin.example/other");
    mOther->setFacebookProfileURL("http://facebook.example/other");
    mOther->setResourceHashes(fixtures::strings({"hash"}));
    mOther->setOrderedEmailFields(fixtures::entryArray({{"a", "b"}}));
    const auto resources = mOwn->resources();
    mOwn->mergeContactInfoFromContact(mOther);
    EXPECT_EQ(mOwn->fullName(), std::nullopt);
    EXPECT_EQ(mOwn->address(), std::nullopt);
    EXPECT_EQ(mOwn->linkedInProfileURL(), std::nullopt);
    EXPECT_EQ(mOwn->facebookProfileURL(), std::nullopt);
    EXPECT_EQ(mOwn->resourceHashes(), nullptr);
    EXPECT_EQ(mOwn->resources(), resources);
    EXPECT_EQ(mOwn->orderedEmailFields(), nullptr);
}

TEST_F(QVVeltoContactMerge, WithNobodyOrItselfChangesNothing) {
    mOwn->setEmailFields(entrySet({{"Email", "a@example.com"}}));
    mOwn->setCompany("Own company");
    const std::string before = mOwn->description();
    mOwn->mergeContactInfoFromContact(nullptr);
    EXPECT_EQ(mOwn->description(), before);
    mOwn->mergeContactInfoFromContact(mOwn);
    EXPECT_EQ(mOwn->description(), before);
}

}  // namespace
