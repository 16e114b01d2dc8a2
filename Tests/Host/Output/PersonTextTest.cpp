#include "Output/PersonJSON.h"
#include "Output/PersonText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using nlohmann::ordered_json;
using qvhost::PersonOutcome;
using qvhost::personText;
using qvhost::SaveOutcome;
using qvhost::SearchOutcome;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::shared_ptr<QVSocialProfile> profile(const QVString& name, std::int32_t type = 0) {
    auto profile = std::make_shared<QVSocialProfile>();
    profile->setFormattedName(name);
    profile->setProfileType(type);
    return profile;
}

PersonOutcome searched(SearchOutcome::Kind kind, std::optional<QVSocialSearchResultType> type = std::nullopt,
                       std::shared_ptr<QVSocialProfile> found = nullptr) {
    PersonOutcome person;
    person.nameOnCard = "Ada Example";
    person.searches = true;
    person.search = SearchOutcome{kind, type, std::move(found)};
    return person;
}

PersonOutcome saved(SaveOutcome save) {
    PersonOutcome person;
    person.nameOnCard = "Ada Example";
    person.saves = true;
    person.save = std::move(save);
    return person;
}

ordered_json JSONOf(const PersonOutcome& person) {
    ordered_json object = ordered_json::object();
    qvhost::addPersonJSON(object, person);
    return object;
}

TEST(PersonText, OfNothingAskedIsEmpty) {
    EXPECT_THAT(personText({}, nullptr), IsEmpty());
    EXPECT_EQ(JSONOf({}), ordered_json::object());
}

TEST(PersonText, TellsWhatTheSearchCameTo) {
    using Kind = SearchOutcome::Kind;
    EXPECT_EQ(personText(searched(Kind::NoAddress), nullptr),
              "Search: skipped, because the card has no e-mail address to search by\n");
    EXPECT_EQ(personText(searched(Kind::NotFound, QVSocialSearchResultNotFound), nullptr),
              "Search: nobody was found\n");
    EXPECT_EQ(personText(searched(Kind::TimedOut, QVSocialSearchResultTimedOut), nullptr),
              "Search: there was no answer in time\n");
    EXPECT_EQ(personText(searched(Kind::Found, QVSocialSearchResultLinkedIn,
                                  profile("Ada Example", QVSocialProfileSourceAddressBook)),
                         nullptr),
              "Search: found \"Ada Example\" in the address book, with a LinkedIn page\n");
    EXPECT_EQ(personText(searched(Kind::Found, QVSocialSearchResultLinkedInAndFacebook, profile("Bo")), nullptr),
              "Search: found \"Bo\", with pages on LinkedIn and Facebook; on the card: \"Ada Example\"\n");
    EXPECT_EQ(personText(searched(Kind::Found, QVSocialSearchResultFacebook, profile(std::nullopt)), nullptr),
              "Search: found somebody without a name, with a Facebook page; on the card: \"Ada Example\"\n");
}

TEST(PersonText, ShowsTheContactThatKnowsMoreThanTheCard) {
    const auto contact = std::make_shared<QVVeltoContact>();
    contact->setFullName("Ada Example");
    const auto found = searched(SearchOutcome::Kind::Found, QVSocialSearchResultNotFound, profile("Ada Example"));
    EXPECT_EQ(personText(found, contact),
              "The contact, with what is known of the person:\n"
              "Name  Ada Example\n"
              "\n"
              "Search: found \"Ada Example\"\n");
    EXPECT_THAT(personText(searched(SearchOutcome::Kind::NotFound), contact), Not(HasSubstr("Name")));
}

TEST(PersonText, AlwaysTellsWhomTheCardWasMergedWith) {
    PersonOutcome person;
    person.comparesContacts = true;
    person.nameOnCard = "Ada Example";
    EXPECT_EQ(personText(person, nullptr), "Merged: with none of the contacts\n");
    EXPECT_EQ(JSONOf(person), ordered_json({{"merged", nullptr}}));
    person.merged = qvhost::MergedContact{"u-1", {"Ada Lovelace", std::nullopt, {}}, "/cards/u-1.vcf", true};
    EXPECT_EQ(
        personText(person, nullptr),
        "Merged: with \"Ada Lovelace\" (the same e-mail address; on the card: \"Ada Example\"), /cards/u-1.vcf\n");
    EXPECT_EQ(JSONOf(person)["merged"],
              ordered_json({{"uid", "u-1"}, {"name", "Ada Lovelace"}, {"where", "/cards/u-1.vcf"}, {"by", "email"}}));
    person.merged = qvhost::MergedContact{"u-1", {"Ada Example", std::nullopt, {}}, "/cards/u-1.vcf", false};
    EXPECT_EQ(personText(person, nullptr),
              "Merged: with \"Ada Example\" (the same name and company), /cards/u-1.vcf\n");
    EXPECT_EQ(JSONOf(person)["merged"]["by"], "name");
}

TEST(PersonText, TellsWhetherTheContactWasCreatedOrUpdatedAndWhere) {
    SaveOutcome save;
    save.outcome = QVAddressBookSaveOutcome::Created;
    save.UID = "u-1";
    save.where = "/cards/u-1.vcf";
    EXPECT_EQ(personText(saved(save), nullptr), "Contact: created in /cards/u-1.vcf\n");
    EXPECT_EQ(
        JSONOf(saved(save)),
        ordered_json(
            {{"saved", {{"outcome", "created"}, {"uid", "u-1"}, {"where", "/cards/u-1.vcf"}, {"error", nullptr}}}}));
    save.outcome = QVAddressBookSaveOutcome::Updated;
    save.updated = "\"Ada Example\"";
    EXPECT_EQ(personText(saved(save), nullptr),
              "Contact: updated \"Ada Example\" (the same e-mail address) in /cards/u-1.vcf\n");
    save.byName = true;
    EXPECT_EQ(personText(saved(save), nullptr),
              "Contact: updated \"Ada Example\" (the same name and company) in /cards/u-1.vcf\n");
    EXPECT_EQ(JSONOf(saved(save))["saved"]["outcome"], "updated");
}

TEST(PersonText, TellsWhyTheContactWasNotSaved) {
    SaveOutcome save;
    save.failure = "The disk is full";
    const PersonOutcome person = saved(save);
    EXPECT_EQ(personText(person, nullptr), "Contact: not saved\n");
    EXPECT_EQ(qvhost::saveFailureText(person),
              "The contact was not saved: The disk is full. Mend that and scan again.");
    EXPECT_EQ(
        JSONOf(person)["saved"],
        ordered_json({{"outcome", "failed"}, {"uid", nullptr}, {"where", nullptr}, {"error", "The disk is full"}}));
    EXPECT_EQ(person.status(), qvhost::ExitStatus::NotWritten);
    EXPECT_THAT(qvhost::saveFailureText(saved({})), IsEmpty());
    EXPECT_THAT(qvhost::saveFailureText({}), IsEmpty());
}

TEST(PersonText, NothingInItActsOnTheTerminal) {
    const auto person = searched(SearchOutcome::Kind::Found, QVSocialSearchResultNotFound, profile("A\x1b[31m"));
    EXPECT_THAT(personText(person, nullptr), Not(HasSubstr("\x1b")));
}

TEST(PersonJSON, TellsWhatTheSearchCameTo) {
    EXPECT_EQ(
        JSONOf(searched(SearchOutcome::Kind::NoAddress))["search"],
        ordered_json({{"outcome", "skipped"}, {"resultType", nullptr}, {"name", nullptr}, {"inAddressBook", false}}));
    EXPECT_EQ(JSONOf(searched(SearchOutcome::Kind::Found, QVSocialSearchResultFacebook,
                              profile("Ada", QVSocialProfileSourceAddressBook)))["search"],
              ordered_json({{"outcome", "found"}, {"resultType", 2}, {"name", "Ada"}, {"inAddressBook", true}}));
    const auto late = searched(SearchOutcome::Kind::TimedOut, QVSocialSearchResultTimedOut);
    EXPECT_EQ(JSONOf(late)["search"]["outcome"], "timedOut");
    EXPECT_EQ(JSONOf(late)["search"]["resultType"], 4);
    EXPECT_EQ(late.status(), qvhost::ExitStatus::Incomplete);
    const auto nobody = searched(SearchOutcome::Kind::NotFound, QVSocialSearchResultNotFound);
    EXPECT_EQ(JSONOf(nobody)["search"]["outcome"], "notFound");
    EXPECT_EQ(nobody.status(), qvhost::ExitStatus::Done);
}

TEST(PersonJSON, WhatWasAskedForAndNotDoneIsNull) {
    PersonOutcome person;
    person.searches = person.saves = person.comparesContacts = true;
    EXPECT_EQ(JSONOf(person), ordered_json({{"merged", nullptr}, {"search", nullptr}, {"saved", nullptr}}));
}

}  // namespace
