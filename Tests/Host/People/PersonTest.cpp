#include "People/Person.h"
#include "Support/TestImages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using qvhost::nameInWords;
using qvhost::Person;
using testing::ElementsAre;

QVContactFieldSet fields(std::initializer_list<QVString> texts) {
    auto set = std::make_shared<qv::OrderedSet<std::shared_ptr<QVVeltoContactField>>>();
    for (const QVString& text : texts)
        set->insert(QVVeltoContactField::initWithLabel("Email", text));
    return set;
}

TEST(Person, OfAContactHasItsNameCompanyAndAddresses) {
    QVVeltoContact contact;
    EXPECT_TRUE(Person::of(contact).emails.empty());
    contact.setFullName("Ada");
    contact.setCompany("Example");
    contact.setEmailFields(fields({"a@example.com", std::nullopt, " ", "b@example.com"}));
    const Person person = Person::of(contact);
    EXPECT_EQ(person.fullName, "Ada");
    EXPECT_EQ(person.company, "Example");
    EXPECT_THAT(person.emails, ElementsAre("a@example.com", "b@example.com"));
}

struct Row {
    const char* name;
    QVString one;
    QVString other;
    bool haveSameName;
    bool haveSameCompany;
};

class PersonComparison : public testing::TestWithParam<Row> {};

TEST_P(PersonComparison, IsExactButForWhiteSpace) {
    const Row& row = GetParam();
    const Person one{row.one, row.one, {}};
    const Person other{row.other, row.other, {}};
    EXPECT_EQ(one.hasNameOf(other), row.haveSameName);
    EXPECT_EQ(other.hasNameOf(one), row.haveSameName);
    EXPECT_EQ(one.hasCompanyOf(other), row.haveSameCompany);
    EXPECT_EQ(other.hasCompanyOf(one), row.haveSameCompany);
}

INSTANTIATE_TEST_SUITE_P(Rows, PersonComparison,
                         testing::Values(Row{"Same", "Ada Example", "Ada Example", true, true},
                                         Row{"Blanks", " Ada  Example", "Ada\tExample ", true, true},
                                         Row{"Case", "Ada Example", "ADA EXAMPLE", false, true},
                                         Row{"Umlauts", "J\xC3\xBCrgen", "J\xC3\x9CRGEN", false, true},
                                         Row{"Other", "Ada Example", "Ada Exampler", false, false},
                                         Row{"Absent", std::nullopt, std::nullopt, false, false},
                                         Row{"Empty", "", "", false, false}, Row{"Blank", " ", " ", false, false},
                                         Row{"AbsentAndThere", std::nullopt, "Ada", false, false}),
                         [](const auto& row) { return row.param.name; });

TEST(Person, IsCalledByNameElseByAddress) {
    EXPECT_EQ(nameInWords({" Ada  Example ", std::nullopt, {"a@example.com"}}), "\"Ada Example\"");
    EXPECT_EQ(nameInWords({" ", std::nullopt, {"a@example.com"}}), "\"a@example.com\"");
    EXPECT_EQ(nameInWords({}), "somebody without a name");
}

TEST(ContactOfRecord, HoldsWhatTheRecordHolds) {
    QVSocialProfile record;
    record.setFormattedName("Ada Example");
    record.setJobTitle("Engineer");
    record.setCompany("Example Ltd");
    record.setEmailAddresses({QVEmail::emailWithLabel("work", "a@example.com")});
    record.setPhoneNumbers({QVPhoneNumber::phoneNumberWithNumber("+1 202 555 0142", "Mobile")});
    record.setAddressList({QVPostalAddress::addressWithLabel(std::nullopt, "1 Main Street\nTown"),
                           QVPostalAddress::addressWithLabel("home", "elsewhere")});
    record.mergeWithTwitterSet(std::make_shared<qv::OrderedSet<std::string>>(qv::OrderedSet<std::string>{"ada"}));
    record.setProfileURLLinkedInPublic("https://linkedin.example/ada");
    record.setProfileURLFacebook("https://facebook.example/ada");
    record.setAddressBookAvatarData(testsupport::makePNG(testsupport::quarters(4, 4)));
    const auto contact = qvhost::contactOfRecord(record);
    EXPECT_EQ(contact->fullName(), "Ada Example");
    EXPECT_EQ(contact->jobTitle(), "Engineer");
    EXPECT_EQ(contact->company(), "Example Ltd");
    ASSERT_EQ(contact->emailFields()->size(), 1U);
    EXPECT_EQ((*contact->emailFields()->begin())->label(), "work");
    EXPECT_EQ((*contact->emailFields()->begin())->text(), "a@example.com");
    ASSERT_EQ(contact->phoneFields()->size(), 1U);
    EXPECT_EQ((*contact->phoneFields()->begin())->label(), "Mobile");
    EXPECT_EQ((*contact->phoneFields()->begin())->text(), "+1 202 555 0142");
    EXPECT_EQ(contact->address(), "1 Main Street\nTown");
    EXPECT_TRUE(contact->twitterHandles()->contains("ada"));
    EXPECT_EQ(contact->linkedInProfileURL(), "https://linkedin.example/ada");
    EXPECT_EQ(contact->facebookProfileURL(), "https://facebook.example/ada");
    ASSERT_TRUE(contact->avatar());
    EXPECT_EQ(contact->avatar()->size().width, 4);
}

TEST(ContactOfRecord, LabelsEntriesAsACardDoes) {
    QVSocialProfile record;
    record.setEmailAddresses({QVEmail::emailWithLabel(std::nullopt, "a@example.com")});
    record.setPhoneNumbers({QVPhoneNumber::phoneNumberWithNumber("1", "")});
    const auto contact = qvhost::contactOfRecord(record);
    EXPECT_EQ((*contact->emailFields()->begin())->label(), "Email");
    EXPECT_EQ((*contact->phoneFields()->begin())->label(), "Phone");
}

TEST(ContactOfRecord, LeavesAbsentWhatTheRecordLacks) {
    QVSocialProfile record;
    record.setAddressBookAvatarData(qv::Data{1, 2, 3});
    const auto contact = qvhost::contactOfRecord(record);
    EXPECT_EQ(contact->fullName(), std::nullopt);
    EXPECT_EQ(contact->address(), std::nullopt);
    EXPECT_TRUE(contact->emailFields()->empty());
    EXPECT_EQ(contact->avatar(), nullptr) << "it is no picture";
}

}  // namespace
