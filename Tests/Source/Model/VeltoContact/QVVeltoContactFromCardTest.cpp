#include "ContactFixtures.h"

#include <gmock/gmock.h>

namespace {

using fixtures::card;
using fixtures::cardField;
using fixtures::entriesOf;
using fixtures::Entry;
using testing::ElementsAre;

class QVVeltoContactFromCard : public fixtures::UntranslatedWords {};

TEST_F(QVVeltoContactFromCard, TheLastNameWinsWhateverItsWeight) {
    const auto twoNames = card({cardField(1, "NAME", "Jordan Example", 90), cardField(1, "NAME", "Sam Sample", 10)});
    EXPECT_EQ(twoNames->fullName(), "Jordan Example");
    EXPECT_EQ(QVVeltoContact::initWithCard(twoNames)->fullName(), "Sam Sample");
}

TEST_F(QVVeltoContactFromCard, ANameWithoutTextLeavesTheOneThatTheCardChose) {
    const auto twoNames = card({cardField(1, "NAME", "Jordan Example", 90), cardField(1, "NAME", std::nullopt, 95)});
    const auto contact = QVVeltoContact::initWithCard(twoNames);
    // The card prefers the heavier field, which has no text, and the field with text then replaces that.
    EXPECT_EQ(contact->fullName(), "Jordan Example");
}

TEST_F(QVVeltoContactFromCard, ANameWithoutWeightCountsHere) {
    EXPECT_EQ(QVVeltoContact::initWithCard(card({cardField(1, "NAME", "Jordan Example", 0)}))->fullName(),
              "Jordan Example");
}

struct Label {
    const char* name;
    std::int32_t type;
    QVString fieldName;
    std::string expected;
};

class LabelTest : public fixtures::UntranslatedWords, public testing::WithParamInterface<Label> {};

TEST_P(LabelTest, ComesFromTheFieldsName) {
    const auto contact = QVVeltoContact::initWithCard(card({cardField(GetParam().type, GetParam().fieldName, "text")}));
    const auto& set = GetParam().type == 2 ? contact->emailFields() : contact->phoneFields();
    const auto& other = GetParam().type == 2 ? contact->phoneFields() : contact->emailFields();
    EXPECT_THAT(entriesOf(set), ElementsAre(Entry(GetParam().expected, "text")));
    EXPECT_TRUE(other->empty());
}

const Label kLabels[] = {
    {"UpperEmail", 2, "EMAIL", "Email"},
    {"LowerEmail", 2, "email", "Email"},
    {"AbsentEmail", 2, std::nullopt, "Email"},
    {"EmptyEmail", 2, "", "Email"},
    {"TwoWords", 2, "WORK email", "Work Email"},
    {"Phone", 3, "PHONE", "Phone"},
    {"AbsentPhone", 3, std::nullopt, "Phone"},
    {"Fax", 9, "FAX", "Fax"},
    {"AbsentFax", 9, std::nullopt, "Phone"},
    {"Mobile", 10, "mobile", "Mobile"},
    {"EmptyMobile", 10, "", "Phone"},
    {"Umlaut", 3, "ÄMTER", "Ämter"},
};

INSTANTIATE_TEST_SUITE_P(Labels, LabelTest, testing::ValuesIn(kLabels),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(QVVeltoContactFromCard, MissingLabelsAreTheHostsWords) {
    qv::Bundle::setLocalizer([](std::string_view key) -> std::optional<std::string> {
        if (key == "Email") return "E-Mail-Adresse";
        if (key == "Phone") return "Telefon";
        return std::nullopt;
    });
    const auto contact = QVVeltoContact::initWithCard(
        card({cardField(2, std::nullopt, "a@example.com"), cardField(9, "", "1"), cardField(9, "FAX", "2")}));
    EXPECT_THAT(entriesOf(contact->emailFields()), ElementsAre(Entry("E-Mail-Adresse", "a@example.com")));
    EXPECT_THAT(entriesOf(contact->phoneFields()), ElementsAre(Entry("Telefon", "1"), Entry("Fax", "2")));
}

TEST_F(QVVeltoContactFromCard, EqualEntriesCollapseAndTheOthersKeepTheirOrder) {
    const auto contact = QVVeltoContact::initWithCard(
        card({cardField(2, "EMAIL", "b@example.com"), cardField(2, "email", "a@example.com"),
              cardField(2, "Email", "b@example.com"), cardField(3, "PHONE", "555"), cardField(10, "MOBILE", "555")}));
    EXPECT_THAT(entriesOf(contact->emailFields()),
                ElementsAre(Entry("Email", "b@example.com"), Entry("Email", "a@example.com")));
    EXPECT_THAT(entriesOf(contact->phoneFields()), ElementsAre(Entry("Phone", "555"), Entry("Mobile", "555")));
}

TEST_F(QVVeltoContactFromCard, TheLastTitleCompanyURLAndAddressWin) {
    const auto contact = QVVeltoContact::initWithCard(
        card({cardField(4, "TITLE", "Clerk"), cardField(5, "COMPANY", "Old Ltd."), cardField(7, "URL", "a.example.com"),
              cardField(8, "ADDRESS", "1 Old St"), cardField(4, "TITLE", "Head"), cardField(5, "COMPANY", "New Ltd."),
              cardField(7, "WEB", "b.example.com"), cardField(8, "ADDRESS", "2 New St")}));
    EXPECT_EQ(contact->jobTitle(), "Head");
    EXPECT_EQ(contact->company(), "New Ltd.");
    EXPECT_EQ(contact->URL(), "b.example.com");
    EXPECT_EQ(contact->address(), "2 New St");
}

TEST_F(QVVeltoContactFromCard, AnEmptyTextIsAValue) {
    const auto contact = QVVeltoContact::initWithCard(card({cardField(4, "TITLE", "Clerk"), cardField(4, "TITLE", ""),
                                                            cardField(1, "NAME", ""), cardField(2, "EMAIL", "")}));
    EXPECT_EQ(contact->jobTitle(), "");
    EXPECT_EQ(contact->fullName(), "");
    EXPECT_THAT(entriesOf(contact->emailFields()), ElementsAre(Entry("Email", "")));
}

TEST_F(QVVeltoContactFromCard, OtherKindsAndFieldsWithoutTextLeaveNoTrace) {
    const auto contact = QVVeltoContact::initWithCard(card(
        {cardField(6, "DEPARTMENT", "Sales"), cardField(11, "TWITTER", "jordan"), cardField(12, "SKYPE", "jordan"),
         cardField(0, "x", "y"), cardField(-1, "x", "y"), cardField(13, "x", "y"), cardField(2, "EMAIL", std::nullopt),
         cardField(3, "PHONE", std::nullopt), cardField(4, "TITLE", std::nullopt), nullptr}));
    const auto nothing = QVVeltoContact::initWithCard(card({}));
    EXPECT_EQ(contact->description(), nothing->description());
    EXPECT_EQ(contact->jobTitle(), std::nullopt);
    EXPECT_EQ(contact->twitterHandles(), nullptr);
    EXPECT_TRUE(contact->emailFields()->empty());
    EXPECT_TRUE(contact->phoneFields()->empty());
}

TEST_F(QVVeltoContactFromCard, SetsNothingElse) {
    const auto contact = QVVeltoContact::initWithCard(card({cardField(1, "NAME", "Jordan Example")}));
    EXPECT_EQ(contact->avatar(), nullptr);
    EXPECT_EQ(contact->resourceHashes(), nullptr);
    EXPECT_EQ(contact->twitterHandles(), nullptr);
    EXPECT_EQ(contact->weiboHandles(), nullptr);
    EXPECT_EQ(contact->linkedInProfileURL(), std::nullopt);
    EXPECT_EQ(contact->facebookProfileURL(), std::nullopt);
    EXPECT_EQ(contact->orderedEmailFields(), nullptr);
    EXPECT_EQ(contact->orderedPhoneFields(), nullptr);
    EXPECT_EQ(contact->orderedTwitterHandles(), nullptr);
    EXPECT_EQ(contact->orderedWeiboHandles(), nullptr);
    EXPECT_EQ(contact->profileImageQVURLString(), std::nullopt);
    EXPECT_EQ(contact->cardImageQVURLStrings(), nullptr);
}

TEST_F(QVVeltoContactFromCard, TheResourcesAreTheCardsImages) {
    const auto front = qv::Image::initWithData({});
    const auto back = qv::Image::initWithData({});
    const auto withImages = card({});
    EXPECT_TRUE(QVVeltoContact::initWithCard(withImages)->resources()->empty());
    withImages->setBackImage(back);
    EXPECT_THAT(*QVVeltoContact::initWithCard(withImages)->resources(), ElementsAre(back));
    withImages->setFrontImage(front);
    EXPECT_THAT(*QVVeltoContact::initWithCard(withImages)->resources(), ElementsAre(front, back));
    withImages->setBackImage(front);
    EXPECT_THAT(*QVVeltoContact::initWithCard(withImages)->resources(), ElementsAre(front));
}

TEST_F(QVVeltoContactFromCard, ACardWithoutFieldsOrNoCardGivesEmptySets) {
    for (const auto& source : {std::make_shared<QVBusinessCard>(), std::shared_ptr<QVBusinessCard>()}) {
        const auto contact = QVVeltoContact::initWithCard(source);
        EXPECT_EQ(contact->fullName(), std::nullopt);
        EXPECT_TRUE(contact->emailFields()->empty());
        EXPECT_TRUE(contact->phoneFields()->empty());
        EXPECT_TRUE(contact->resources()->empty());
    }
}

}  // namespace
