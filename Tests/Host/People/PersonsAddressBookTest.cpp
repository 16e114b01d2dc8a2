#include "Host/People/CardsFixture.h"
#include "People/PersonsAddressBook.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

class PersonsAddressBook : public testsupport::CardsFixture {
  protected:
    PersonsAddressBook() {
        std::filesystem::create_directory(cards());
        addPerson("ada", "Ada Example", "office@example.com");
        addPerson("bo", "Bo Sample", "office@example.com");
    }

    qvhost::PersonsAddressBook mBook{place().book, {"Bo Sample", std::nullopt, {}}};
    std::optional<qv::Error> mError;
};

TEST_F(PersonsAddressBook, ShowsOnlyWhoCanBeThePersonByAnAddress) {
    const auto records = mBook.profilesWithEmailAddress("OFFICE@example.com", &mError);
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records.front()->addressBookUID(), "bo");
    EXPECT_FALSE(mError);
}

TEST_F(PersonsAddressBook, ShowsEverythingElseAsItIs) {
    EXPECT_EQ(mBook.profiles(&mError).size(), 2U);
    ASSERT_TRUE(mBook.profileWithUID("ada", &mError));
    EXPECT_EQ(mBook.profileWithUID("ada", &mError)->formattedName(), "Ada Example");
    EXPECT_FALSE(mBook.profileWithUID("cy", nullptr));
    std::filesystem::remove_all(cards());
    mBook.profilesWithEmailAddress("office@example.com", &mError);
    EXPECT_TRUE(mError) << "what cannot be read is told";
}

TEST_F(PersonsAddressBook, Saves) {
    QVSocialProfile profile;
    profile.setFormattedName("Cy New");
    const auto result = mBook.saveProfile(profile);
    EXPECT_EQ(result.outcome, QVAddressBookSaveOutcome::Created);
    EXPECT_EQ(place().book->profiles(nullptr).size(), 3U);
}

}  // namespace
