#include "FakeAddressBook.h"
#include "FakeProvider.h"
#include "SocialFixtures.h"
#include "SocialSearchManagerFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using social::finding;
using social::request;
using testing::ElementsAre;

class AddressBookSearchTest : public social::SocialSearchManagerFixture {
  protected:
    AddressBookSearchTest() {
        mAddressBook->find = [this](const std::string& address, std::optional<qv::Error>* error) {
            mAsked = address;
            *error = mError;
            return mRecords;
        };
    }

    std::shared_ptr<social::FakeAddressBook> mAddressBook = std::make_shared<social::FakeAddressBook>();
    social::ChosenAddressBook mChosen{mAddressBook};
    std::string mAsked;
    std::optional<qv::Error> mError;
    QVAddressBook::Profiles mRecords;
};

TEST_F(AddressBookSearchTest, AsksTheAddressBookFirst) {
    const auto record = social::profile("Known Name", QVSocialProfileSourceAddressBook);
    record->setAddressBookUID("uid-1");
    mRecords = {record};
    mManager->addProvider(finding(social::profile("Other Name", 8)));
    search(request(" jo@example.com "));
    ASSERT_TRUE(waitForAnswer());
    EXPECT_EQ(mAsked, "jo@example.com");
    EXPECT_EQ(found()->formattedName(), "Known Name");
    EXPECT_EQ(found()->profileType(), 12);
    EXPECT_EQ(found()->addressBookUID(), "uid-1");
}

TEST_F(AddressBookSearchTest, TakesNoneOfSeveralContacts) {
    mRecords = {social::profile("One"), nullptr, social::profile("Two")};
    search();
    ASSERT_TRUE(waitForAnswer());
    EXPECT_EQ(found(), nullptr);
    EXPECT_THAT(mLog.messages(), ElementsAre("<WARNING> 2 contacts share the e-mail address; none of them is merged"));
}

TEST_F(AddressBookSearchTest, TakesWhatCouldBeReadAndLogsTheRest) {
    mRecords = {social::profile("One")};
    mError = qv::Error{"D", 5, {{std::string(qv::kErrorDescriptionKey), std::string("broken card")}}};
    search();
    ASSERT_TRUE(waitForAnswer());
    EXPECT_EQ(found()->formattedName(), "One");
    EXPECT_THAT(mLog.messages(), ElementsAre("<WARNING> The address book could not be read whole: D 5 broken card"));
}

TEST_F(AddressBookSearchTest, GoesOnWithoutAnAddressBookThatThrows) {
    mAddressBook->find = [](const auto&, auto*) -> QVAddressBook::Profiles { throw std::runtime_error("no disk"); };
    mManager->addProvider(finding(social::profile("Other Name")));
    search();
    ASSERT_TRUE(waitForAnswer());
    EXPECT_EQ(found()->formattedName(), "Other Name");
    EXPECT_THAT(mLog.messages(),
                ElementsAre("<ERROR> Exception from the social search provider address book: no disk"));
}

}  // namespace
