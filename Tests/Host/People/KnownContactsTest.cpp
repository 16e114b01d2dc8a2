#include "Host/People/CardsFixture.h"
#include "Host/People/ScannedCard.h"
#include "People/KnownContacts.h"
#include "QVCardScan/QVBizCardManager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace {

using qvhost::ScanOutcome;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testsupport::recognitionOfAda;

/// The contacts that are known as the library's data source.
class KnownContacts : public testsupport::CardsFixture {
  protected:
    KnownContacts() { std::filesystem::create_directory(cards()); }
    ~KnownContacts() override { QVBizCardManager::sharedManager()->setContactNoteDataSource(nullptr); }

    ScanOutcome scan(const std::string& recognition) {
        QVBizCardManager::sharedManager()->setContactNoteDataSource(mKnown);
        ScanOutcome outcome = testsupport::scanOf(recognition);
        mNoteBefore = outcome.response->qvmlContent();
        mKnown->completeByName(*outcome.response);
        return outcome;
    }

    std::shared_ptr<qvhost::KnownContacts> mKnown = std::make_shared<qvhost::KnownContacts>(place());
    QVString mNoteBefore;
};

TEST_F(KnownContacts, CompleteACardByItsAddress) {
    addPerson("ada", "Ada Lovelace", "ADA@example.com", "Example Ltd");
    const ScanOutcome outcome = scan(recognitionOfAda());
    EXPECT_EQ(outcome.response->contact()->company(), "Example Ltd");
    EXPECT_EQ(outcome.response->contact()->fullName(), "Ada Example") << "the card's own";
    EXPECT_THAT(outcome.response->qvmlContent().value_or(""), HasSubstr("Example Ltd"));
    ASSERT_TRUE(mKnown->merged());
    EXPECT_EQ(mKnown->merged()->UID, "ada");
    EXPECT_EQ(mKnown->merged()->person.fullName, "Ada Lovelace");
    EXPECT_TRUE(mKnown->merged()->byEmail);
    EXPECT_THAT(mKnown->merged()->where, HasSubstr("ada.vcf"));
    EXPECT_EQ(outcome.response->contact()->emailFields()->size(), 1U) << "it is the same address";
}

TEST_F(KnownContacts, CompleteACardWithoutAddressByNameAndCompany) {
    addPerson("ada", "Ada Example", "ada@example.com", "Example Ltd");
    const ScanOutcome outcome = scan(recognitionOfAda("", "example LTD"));
    ASSERT_TRUE(mKnown->merged());
    EXPECT_FALSE(mKnown->merged()->byEmail);
    EXPECT_EQ(outcome.response->contact()->emailFields()->size(), 1U);
    EXPECT_THAT(outcome.response->qvmlContent().value_or(""), HasSubstr("ada@example.com"));
    EXPECT_NE(outcome.response->qvmlContent(), mNoteBefore);
}

TEST_F(KnownContacts, DoNotTakeNamesakesForOneAnother) {
    addPerson("ada", "Ada Example", "ada@example.com", "Other Ltd");
    const ScanOutcome outcome = scan(recognitionOfAda("", "Example Ltd"));
    EXPECT_FALSE(mKnown->merged());
    EXPECT_EQ(outcome.response->qvmlContent(), mNoteBefore);
    EXPECT_THAT(outcome.response->qvmlContent().value_or(""), Not(HasSubstr("ada@example.com")));
    EXPECT_THAT(mKnown->remarks(), ElementsAre(HasSubstr("not the same company")));
}

TEST_F(KnownContacts, BringTheirPicture) {
    // 1 x 1, white.
    addCard("ada",
            {"FN:Ada", "N:;Ada;;;", "EMAIL:ada@example.com",
             "PHOTO;ENCODING=b;TYPE=PNG:iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAIAAACQd1PeAAAADElEQVR4nGP4//8/AAX+Av4N70a4"
             "AAAAAElFTkSuQmCC"});
    const ScanOutcome outcome = scan(recognitionOfAda());
    ASSERT_TRUE(outcome.response->avatars());
    EXPECT_EQ(outcome.response->avatars()->front()->size().width, 1);
}

TEST_F(KnownContacts, AreForgottenBetweenCards) {
    addPerson("ada", "Ada Example", "ada@example.com");
    scan(recognitionOfAda());
    EXPECT_TRUE(mKnown->merged());
    scan(recognitionOfAda("bo@example.com"));
    EXPECT_FALSE(mKnown->merged());
    EXPECT_THAT(mKnown->remarks(), IsEmpty());
    EXPECT_TRUE(mKnown->implementsContactMatchingFullName());
}

}  // namespace
