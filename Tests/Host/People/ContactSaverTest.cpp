#include "Host/People/CardsFixture.h"
#include "People/ContactSaver.h"
#include "Support/ReadFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace {

namespace fs = std::filesystem;
using qvhost::SaveOutcome;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::Optional;
using testsupport::readFile;

class ContactSaver : public testsupport::CardsFixture {
  protected:
    ContactSaver() { fs::create_directory(cards()); }
    ~ContactSaver() override { QVAddressBookController::sharedController()->setAddressBook(nullptr); }

    static std::shared_ptr<QVVeltoContact> contact(const std::string& name, const std::string& email) {
        auto contact = std::make_shared<QVVeltoContact>();
        contact->setFullName(name);
        contact->setJobTitle("Engineer");
        contact->setCompany("Example Ltd");
        contact->setAddress("1 Main Street");
        auto emails = std::make_shared<qv::OrderedSet<std::shared_ptr<QVVeltoContactField>>>();
        if (!email.empty()) emails->insert(QVVeltoContactField::initWithLabel("Email", email));
        contact->setEmailFields(emails);
        return contact;
    }
    SaveOutcome save(const std::shared_ptr<QVVeltoContact>& contact,
                     const std::shared_ptr<QVSocialProfile>& found = nullptr) {
        const auto where = place();
        return qvhost::ContactSaver(mLoop, where).save(contact, found);
    }
    std::size_t count() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(cards()), fs::directory_iterator()));
    }

    qvhost::MainLoop mLoop;
};

TEST_F(ContactSaver, CreatesAndThenUpdatesOneContact) {
    const SaveOutcome first = save(contact("Ada Example", "ada@example.com"));
    EXPECT_EQ(first.outcome, QVAddressBookSaveOutcome::Created);
    EXPECT_EQ(first.failure, std::nullopt);
    EXPECT_THAT(first.updated, IsEmpty());
    const std::string card = readFile(first.where);
    for (const char* line : {"FN:Ada Example\r\n", "TITLE:Engineer\r\n", "ORG:Example Ltd\r\n", "1 Main Street"})
        EXPECT_THAT(card, HasSubstr(line));
    const SaveOutcome second = save(contact("Ada Exampel", "ADA@example.com"));
    EXPECT_EQ(second.outcome, QVAddressBookSaveOutcome::Updated);
    EXPECT_EQ(second.where, first.where);
    EXPECT_EQ(second.updated, "\"Ada Example\"");
    EXPECT_FALSE(second.byName);
    EXPECT_THAT(readFile(first.where), HasSubstr("FN:Ada Example\r\n"));
    EXPECT_EQ(count(), 1U);
}

TEST_F(ContactSaver, UpdatesTheRecordThatTheSearchFound) {
    addPerson("ada", "Ada Example", "other@example.com");
    const auto found = place().book->profileWithUID("ada", nullptr);
    const SaveOutcome outcome = save(contact("A. Example", "ada@example.com"), found);
    EXPECT_EQ(outcome.outcome, QVAddressBookSaveOutcome::Updated);
    EXPECT_EQ(outcome.UID, "ada");
    EXPECT_EQ(outcome.updated, "\"Ada Example\"");
    EXPECT_THAT(readFile(outcome.where), HasSubstr("ada@example.com"));
    EXPECT_THAT(readFile(outcome.where), HasSubstr("TITLE:Engineer"));
}

TEST_F(ContactSaver, OfSomebodyFoundElsewhereStillLooksInTheAddressBook) {
    addPerson("ada", "Ada Example", "ada@example.com");
    const auto found = std::make_shared<QVSocialProfile>();
    found->setProfileURLLinkedInPublic("https://www.linkedin.com/in/ada");
    const SaveOutcome outcome = save(contact("Ada Example", "ada@example.com"), found);
    EXPECT_EQ(outcome.outcome, QVAddressBookSaveOutcome::Updated);
    EXPECT_EQ(count(), 1U);
}

TEST_F(ContactSaver, KeepsTheLinksOfSomebodyFoundElsewhere) {
    const auto found = std::make_shared<QVSocialProfile>();
    found->setProfileURLLinkedInPublic("https://www.linkedin.com/in/ada");
    const SaveOutcome outcome = save(contact("Ada Example", "ada@example.com"), found);
    EXPECT_EQ(outcome.outcome, QVAddressBookSaveOutcome::Created);
    EXPECT_THAT(readFile(outcome.where), HasSubstr("linkedin.com/in/ada"));
    EXPECT_THAT(readFile(outcome.where), HasSubstr("TITLE:Engineer"));
}

TEST_F(ContactSaver, UpdatesByNameAndCompanyWithoutAnAddress) {
    const SaveOutcome first = save(contact("Ada Example", ""));
    const SaveOutcome second = save(contact("Ada Example", ""));
    EXPECT_EQ(second.outcome, QVAddressBookSaveOutcome::Updated);
    EXPECT_TRUE(second.byName);
    EXPECT_EQ(second.where, first.where);
    const SaveOutcome namesake = [this] {
        auto other = contact("Ada Example", "");
        other->setCompany("Other Ltd");
        return save(other);
    }();
    EXPECT_EQ(namesake.outcome, QVAddressBookSaveOutcome::Created);
    EXPECT_EQ(count(), 2U);
    EXPECT_THAT(namesake.remarks, testing::ElementsAre(HasSubstr("not the same company")));
}

TEST_F(ContactSaver, DoesNotGuessWhichContactIsMeant) {
    addPerson("one", "Ada Example", "ada@example.com");
    addPerson("two", "Ada Example", "ada@example.com");
    const SaveOutcome outcome = save(contact("Ada Example", "ada@example.com"));
    EXPECT_EQ(outcome.outcome, QVAddressBookSaveOutcome::None);
    EXPECT_THAT(outcome.failure, Optional(HasSubstr("cannot be told")));
    EXPECT_THAT(outcome.where, IsEmpty());
    EXPECT_EQ(count(), 2U);
}

TEST_F(ContactSaver, DoesNotRiskASecondRecordWhenTheFirstCannotBeRead) {
    fs::create_directory(fs::path(cards()) / "folder-not-file.vcf");
    const SaveOutcome outcome = save(contact("Ada Example", "ada@example.com"));
    EXPECT_THAT(outcome.failure, Optional(HasSubstr("cannot be told as long as")));
    EXPECT_THAT(outcome.remarks, testing::ElementsAre(HasSubstr("folder-not-file.vcf")));
}

TEST_F(ContactSaver, SavesBesideBrokenCardsAndTellsOfThem) {
    mFolder.write("cards/broken.vcf", "BEGIN:VCARD\n");
    const SaveOutcome outcome = save(contact("Ada Example", "ada@example.com"));
    EXPECT_EQ(outcome.outcome, QVAddressBookSaveOutcome::Created);
    EXPECT_THAT(outcome.remarks, testing::ElementsAre(HasSubstr("broken.vcf")));
    EXPECT_EQ(readFile(fs::path(cards()) / "broken.vcf"), "BEGIN:VCARD\n");
}

TEST_F(ContactSaver, SaysWhyNothingWasSaved) {
    const SaveOutcome nothing = save(std::make_shared<QVVeltoContact>());
    EXPECT_THAT(nothing.failure, Optional(Not(IsEmpty())));
    EXPECT_EQ(count(), 0U);
}

}  // namespace
