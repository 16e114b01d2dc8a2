#include "Host/People/CardsFixture.h"
#include "People/ContactMatcher.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

namespace {

using qvhost::ContactMatch;
using qvhost::Person;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Outcome = qvhost::ContactMatch::Outcome;

class ContactMatcher : public testsupport::CardsFixture {
  protected:
    ContactMatcher() { std::filesystem::create_directory(cards()); }

    ContactMatch match(const Person& person) const {
        const auto where = place();
        return qvhost::ContactMatcher(where).match(person);
    }
    static QVString UIDOf(const ContactMatch& match) {
        return match.record ? match.record->addressBookUID() : std::nullopt;
    }
};

TEST_F(ContactMatcher, FindsAPersonByAnyAddressInAnyCase) {
    addPerson("ada", "Ada Example", "Ada@Example.com");
    addPerson("bo", "Bo Sample", "bo@example.com");
    const auto match = this->match({"Ada E. Example", std::nullopt, {"other@example.com", "ADA@example.com"}});
    EXPECT_EQ(match.outcome, Outcome::ByEmail);
    EXPECT_EQ(UIDOf(match), "ada");
    EXPECT_THAT(match.remarks, IsEmpty());
}

TEST_F(ContactMatcher, DoesNotGoByNameWhenThereIsAnAddress) {
    addPerson("ada", "Ada Example", "", "Example Ltd");
    const auto match = this->match({"Ada Example", "Example Ltd", {"new@example.com"}});
    EXPECT_EQ(match.outcome, Outcome::Nobody);
    EXPECT_EQ(match.record, nullptr);
}

TEST_F(ContactMatcher, OfSeveralWithTheAddressTakesTheNamesake) {
    addPerson("ada", "Ada Example", "office@example.com");
    addPerson("bo", "Bo Sample", "office@example.com");
    const auto match = this->match({"Bo Sample", std::nullopt, {"office@example.com"}});
    EXPECT_EQ(match.outcome, Outcome::ByEmail);
    EXPECT_EQ(UIDOf(match), "bo");
}

TEST_F(ContactMatcher, OfSeveralWithTheAddressAndNoNamesakeTakesNone) {
    addPerson("ada", "Ada Example", "office@example.com");
    addPerson("bo", "Bo Sample", "office@example.com");
    const auto match = this->match({"Cy New", std::nullopt, {"office@example.com"}});
    EXPECT_EQ(match.outcome, Outcome::Nobody);
    EXPECT_THAT(match.remarks, ElementsAre(AllOf(HasSubstr("\"Ada Example\", \"Bo Sample\" in "),
                                                 HasSubstr(" have an e-mail address of the card, but another name"))));
}

TEST_F(ContactMatcher, DoesNotTakeTwoWhoShareAnAddressForOne) {
    addPerson("ada", "Ada Example", "office@example.com");
    const auto match = this->match({"Cy New", std::nullopt, {"new@example.com", "office@example.com"}});
    EXPECT_EQ(match.outcome, Outcome::Nobody);
    EXPECT_EQ(match.record, nullptr);
    EXPECT_THAT(
        match.remarks,
        ElementsAre(AllOf(HasSubstr("\"Ada Example\" in "),
                          HasSubstr(" has an e-mail address of the card, but another name: they are not merged."))));
}

TEST_F(ContactMatcher, AnotherAddressOfTheSamePersonCounts) {
    addCard("anna", {"FN:Anna Huber", "N:Huber;Anna;;;", "EMAIL:info@huber.example", "EMAIL:a.huber@huber.example"});
    const auto match = this->match({"Maria Huber", std::nullopt, {"info@huber.example", "a.huber@huber.example"}});
    EXPECT_EQ(match.outcome, Outcome::ByEmail) << "nothing but the office's address speaks against it";
    EXPECT_EQ(UIDOf(match), "anna");
}

TEST_F(ContactMatcher, OfSeveralThatCanBeThePersonAndNoNamesakeTakesNone) {
    addPerson("one", "Ada Example", "ada@example.com");
    addPerson("two", "Ada Sample", "ada@example.com");
    const auto match = this->match({"Ada New", std::nullopt, {"ada@example.com"}});
    EXPECT_EQ(match.outcome, Outcome::Nobody);
    EXPECT_THAT(match.remarks, ElementsAre(AllOf(HasSubstr("2 contacts"), HasSubstr("\"Ada Example\", \"Ada Sample\""),
                                                 HasSubstr("None of them has the card's name"))));
}

TEST_F(ContactMatcher, SeveralNamesakesWithTheAddressAreAmbiguous) {
    addPerson("one", "Ada Example", "ada@example.com");
    addPerson("two", "Ada Example", "ada@example.com");
    const auto match = this->match({"Ada Example", std::nullopt, {"ada@example.com"}});
    EXPECT_EQ(match.outcome, Outcome::Ambiguous);
    EXPECT_EQ(match.record, nullptr);
    EXPECT_THAT(match.remarks, ElementsAre(HasSubstr("Which of them is meant cannot be told")));
}

TEST_F(ContactMatcher, ACardWithoutAddressGoesByNameAndCompany) {
    addPerson("ada", "Ada Example", "ada@example.com", "Example Ltd");
    addPerson("bo", "Bo Sample", "", "Example Ltd");
    const auto match = this->match({"Ada  Example", "EXAMPLE Ltd", {}});
    EXPECT_EQ(match.outcome, Outcome::ByName);
    EXPECT_EQ(UIDOf(match), "ada");
    EXPECT_THAT(match.remarks, IsEmpty());
}

TEST_F(ContactMatcher, NamesakesAreNotTakenForOneAnother) {
    addPerson("ada", "Ada Example", "", "Example Ltd");
    for (const QVString& company : {QVString("Other Ltd"), QVString(), QVString("")}) {
        const auto match = this->match({"Ada Example", company, {}});
        EXPECT_EQ(match.outcome, Outcome::Nobody);
        EXPECT_THAT(match.remarks, ElementsAre(AllOf(HasSubstr("\"Ada Example\""), HasSubstr("not the same company"))));
    }
    addPerson("ada2", "Ada Example", "", "Other Ltd");
    const auto match = this->match({"Ada Example", "Other Ltd", {}});
    EXPECT_EQ(match.outcome, Outcome::Nobody) << "only if one contact has the name";
    EXPECT_THAT(match.remarks, ElementsAre(HasSubstr("2 contacts")));
}

TEST_F(ContactMatcher, WithoutNameAndAddressNobodyIsFound) {
    addCard("nameless", {"FN:", "N:;;;;", "ORG:Example Ltd"});
    for (const QVString& name : {QVString(), QVString(""), QVString(" ")}) {
        const auto match = this->match({name, "Example Ltd", {}});
        EXPECT_EQ(match.outcome, Outcome::Nobody);
        EXPECT_THAT(match.remarks, IsEmpty());
    }
}

TEST_F(ContactMatcher, TellsOfBrokenCardsOnceAndGoesOn) {
    mFolder.write("cards/broken.vcf", "BEGIN:VCARD\nFN:Half");
    addPerson("ada", "Ada Example", "ada@example.com");
    const auto found = this->match({"Ada Example", std::nullopt, {"x@example.com", "ada@example.com"}});
    EXPECT_EQ(found.outcome, Outcome::ByEmail);
    EXPECT_THAT(found.remarks, ElementsAre(HasSubstr("broken.vcf")));
    EXPECT_EQ(this->match({"Bo", std::nullopt, {"bo@example.com"}}).outcome, Outcome::Nobody);
}

TEST_F(ContactMatcher, WhatCannotBeReadIsUnknown) {
    std::filesystem::remove(cards());
    EXPECT_EQ(this->match({"Bo", std::nullopt, {"bo@example.com"}}).outcome, Outcome::Unknown);
    EXPECT_EQ(this->match({"Bo", "Example Ltd", {}}).outcome, Outcome::Unknown);
}

TEST_F(ContactMatcher, NamesOnlySomeOfMany) {
    for (int i = 0; i < 9; ++i)
        addPerson("p" + std::to_string(i), "Person " + std::to_string(i), "office@example.com");
    const auto match = this->match({"Cy New", std::nullopt, {"office@example.com"}});
    EXPECT_THAT(match.remarks, ElementsAre(HasSubstr("\"Person 4\" and 4 more in ")));
}

}  // namespace
