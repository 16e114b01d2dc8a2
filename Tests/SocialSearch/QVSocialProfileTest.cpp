#include "QVSocialSearch/QVSocialProfile.h"
#include "SocialFixtures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

namespace {

using social::Entries;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

struct PairRow {
    const char* name;
    const char* first;
    const char* second;
    bool areTheSame;
};

void PrintTo(const PairRow& row, std::ostream* stream) {
    *stream << row.first << " and " << row.second;
}

std::string nameOf(const testing::TestParamInfo<PairRow>& info) {
    return info.param.name;
}

class SamePhone : public testing::TestWithParam<PairRow> {};

TEST_P(SamePhone, IsFoundInBothOrders) {
    const auto& row = GetParam();
    for (const auto& [first, second] : {std::pair(row.first, row.second), std::pair(row.second, row.first)}) {
        QVSocialProfile profile;
        profile.mergeWithPhoneNumberSet(social::phones({{"A", first}}));
        profile.mergeWithPhoneNumberSet(social::phones({{"B", second}}));
        const Entries expected = row.areTheSame ? Entries{{"A", first}} : Entries{{"A", first}, {"B", second}};
        EXPECT_EQ(social::phonesOf(profile), expected);
    }
}

constexpr PairRow kPhones[] = {
    {"Exact", "+1 202 555 0142", "+1 202 555 0142", true},
    {"Punctuation", "(202) 555-0142", "202.555.0142", true},
    {"CountryPrefix", "+1 202 555 0142", "202-555-0142", true},
    {"CountryPrefixWithoutPlus", "1 202 555 0142", "202-555-0142", true},
    {"InternationalPrefixes", "+44 20 7946 0958", "00 44 20 7946 0958", true},
    {"AmericanInternationalPrefix", "+44 20 7946 0958", "011 44 20 7946 0958", true},
    {"TrunkPrefix", "+44 20 7946 0958", "020 7946 0958", true},
    {"TrunkPrefixAlone", "20 7946 0958", "020 7946 0958", true},
    {"TrunkInBrackets", "+44 (0)20 7946 0958", "+44 20 7946 0958", true},
    {"TrunkBehindCountry", "+44 020 7946 0958", "+44 20 7946 0958", true},
    {"ThreeDigitCountry", "+353 1 677 1234", "01 677 1234", true},
    {"Italy", "+39 06 698 12345", "06 698 12345", true},
    {"Hungary", "+36 1 234 5678", "06 1 234 5678", true},
    {"Russia", "+7 495 123 45 67", "8 495 123 45 67", true},
    {"CountryWithoutPlus", "44 20 7946 0958", "020 7946 0958", true},
    {"OtherCountry", "+44 20 7946 0958", "+49 20 7946 0958", false},
    {"OtherNumber", "202-555-0142", "202-555-0143", false},
    {"AreaCodeIsNoPrefix", "+1 202 555 0142", "555-0142", false},
    {"AreaCodeAlone", "202 555 0142", "555 0142", false},
    {"ShortEndingIsNotEnough", "+49 30 12", "012", false},
    {"OtherExtension", "+1 202 555 0142 x1", "+1 202 555 0142 x2", false},
    {"OneExtension", "+1 202 555 0142", "+1 202 555 0142 ext. 7", false},
    {"SameExtension", "+1 202 555 0142 ext. 7", "(202) 555-0142 x7", true},
    {"ExtensionInWords", "202 555 0142 Extension 7", "202 555 0142 #7", true},
    {"DialledExtension", "+12025550142,7", "+12025550142;ext=7", true},
    {"ExtensionIsNoPartOfTheNumber", "202 555 0142 x7", "202 555 01427", false},
    {"OtherScripts", "\xEF\xBC\x92\xEF\xBC\x90\xEF\xBC\x92 555 0142", "202 555 0142", true},
    {"AnotherScript", "\xE0\xA7\xA8\xE0\xA7\xA6\xE0\xA7\xA8 555 0142", "202 555 0142", true},
    {"Letters", "1-800-FLOWERS", "1-800-356-9377", true},
    {"LettersInBrackets", "1-800-(FLOWERS)", "1-800-(GARDENS)", false},
    {"LettersExplained", "1-800-356-9377 (FLOWERS)", "1-800-FLOWERS", true},
    {"WordBefore", "Tel.: +1 (202) 555-0142", "202-555-0142", true},
    {"WordBeforeBrackets", "Phone (202) 555-0142", "202-555-0142", true},
    {"WordInBrackets", "(office) 202-555-0142 (direct)", "202-555-0142", true},
    {"WordInBracketsBehindAnExtension", "202-555-0142 ext. 7 (office)", "202-555-0142 x7", true},
    {"TrunkInBracketsBehindAWord", "Tel. +44 (0)20 7946 0958", "020 7946 0958", true},
    {"OpenBracket", "202-555-0142 (", "202-555-0142", true},
    {"LetterBeforeADigit", "B20 7946 0958", "S20 7946 0958", false},
    {"WordBeforeFewDigits", "GATE 110", "DOOR 110", false},
    {"OtherLetters", "1-800-FLOWERS", "1-800-GARDENS", false},
    {"Misread", "2O2 555 O142", "202 555 0142", false},
    {"NoDigits", "by arrangement", "by arrangement", true},
    {"OtherWords", "cab", "bac", false},
    {"BlanksAround", " 202 555 0142 ", "202 555 0142", true},
};

INSTANTIATE_TEST_SUITE_P(Rows, SamePhone, testing::ValuesIn(kPhones), nameOf);

class SameEmail : public testing::TestWithParam<PairRow> {};

TEST_P(SameEmail, KeepsTheFirst) {
    const auto& row = GetParam();
    QVSocialProfile profile;
    profile.mergeWithEmailSet(social::emails({{"A", row.first}}));
    profile.mergeWithEmailSet(social::emails({{"B", row.second}}));
    const Entries expected = row.areTheSame ? Entries{{"A", row.first}} : Entries{{"A", row.first}, {"B", row.second}};
    EXPECT_EQ(social::emailsOf(profile), expected);
}

constexpr PairRow kEmails[] = {
    {"Exact", "jo@example.com", "jo@example.com", true},
    {"Case", "Jo@Example.COM", "jo@example.com", true},
    {"CaseBeyondASCII", "J\xC3\x96@example.com", "j\xC3\xB6@example.com", true},
    {"Blanks", "jo@example.com", " jo@example.com\n", true},
    {"OtherDomain", "jo@example.com", "jo@example.org", false},
    {"Tag", "jo@example.com", "jo+card@example.com", false},
    {"Dots", "j.o@example.com", "jo@example.com", false},
    {"NoAddressAtAll", "jo at example", "JO AT EXAMPLE", true},
};

INSTANTIATE_TEST_SUITE_P(Rows, SameEmail, testing::ValuesIn(kEmails), nameOf);

class SameHandle : public testing::TestWithParam<PairRow> {};

TEST_P(SameHandle, KeepsTheFirst) {
    const auto& row = GetParam();
    QVSocialProfile profile;
    profile.mergeWithTwitterSet(social::handles({row.first}));
    profile.mergeWithTwitterSet(social::handles({row.second}));
    std::vector<std::string> expected{row.first};
    if (!row.areTheSame) expected.emplace_back(row.second);
    EXPECT_EQ(social::handlesOf(profile), expected);
}

constexpr PairRow kHandles[] = {
    {"Exact", "jordan", "jordan", true},          {"AtSign", "@jordan", "jordan", true},
    {"Case", "Jordan", "@JORDAN", true},          {"Blanks", "jordan ", " @jordan", true},
    {"OneSignOnly", "@@jordan", "jordan", false}, {"Other", "jordan", "jordan_w", false},
};

INSTANTIATE_TEST_SUITE_P(Rows, SameHandle, testing::ValuesIn(kHandles), nameOf);

TEST(QVSocialProfileMerging, KeepsOrderAndLabelsWithinOneSet) {
    QVSocialProfile profile;
    profile.mergeWithEmailSet(social::emails({{"B", "b@example.com"}, {"A", "a@example.com"}, {"C", "B@example.com"}}));
    EXPECT_THAT(social::emailsOf(profile),
                ElementsAre(social::Entry("B", "b@example.com"), social::Entry("A", "a@example.com")));
}

TEST(QVSocialProfileMerging, PutsNewOnesBehindItsOwn) {
    QVSocialProfile profile;
    profile.mergeWithPhoneNumberSet(social::phones({{"Own", "555-0100"}}));
    profile.mergeWithPhoneNumberSet(social::phones({{"New", "555-0199"}, {"Same", "5550100"}}));
    EXPECT_THAT(social::phonesOf(profile),
                ElementsAre(social::Entry("Own", "555-0100"), social::Entry("New", "555-0199")));
}

TEST(QVSocialProfileMerging, TakesAbsentAndEmptySets) {
    QVSocialProfile profile;
    profile.mergeWithEmailSet(social::emails({{std::nullopt, "a@example.com"}}));
    profile.mergeWithEmailSet(nullptr);
    profile.mergeWithEmailSet(social::emails({}));
    profile.mergeWithPhoneNumberSet(nullptr);
    profile.mergeWithTwitterSet(nullptr);
    EXPECT_THAT(social::emailsOf(profile), ElementsAre(social::Entry(std::nullopt, "a@example.com")));
    EXPECT_THAT(profile.phoneNumbers(), IsEmpty());
    EXPECT_THAT(social::handlesOf(profile), IsEmpty());
}

TEST(QVSocialProfileMerging, LeavesNullsAndHandlesOfNothingOut) {
    auto set = std::make_shared<qv::OrderedSet<std::shared_ptr<const QVEmail>>>();
    set->insert(nullptr);
    QVSocialProfile profile;
    profile.mergeWithEmailSet(set);
    profile.mergeWithTwitterSet(social::handles({"", "@", " "}));
    profile.setEmailAddresses({nullptr});
    profile.setPhoneNumbers({nullptr});
    profile.setAddressList({nullptr, QVPostalAddress::addressWithLabel("Home", "1 Main St")});
    EXPECT_THAT(profile.emailAddresses(), IsEmpty());
    EXPECT_THAT(profile.phoneNumbers(), IsEmpty());
    EXPECT_THAT(social::handlesOf(profile), IsEmpty());
    ASSERT_EQ(profile.addressList().size(), 1U);
    EXPECT_EQ(profile.addressList().front()->formattedAddress(), "1 Main St");
}

TEST(QVSocialProfileMerging, TakesItsOwnListAgain) {
    QVSocialProfile profile;
    profile.mergeWithEmailSet(social::emails({{"A", "a@example.com"}, {"B", "b@example.com"}}));
    const QVEmailList list = profile.emailAddresses();
    profile.setEmailAddresses(profile.emailAddresses());
    EXPECT_EQ(profile.emailAddresses(), list);
}

QVPhoneNumberList manyNumbers(const std::string& beginning, const std::string& ending) {
    QVPhoneNumberList list;
    for (int number = 0; number < 20000; ++number) {
        const std::string text = beginning + std::to_string(5000000 + number) + ending;
        list.push_back(QVPhoneNumber::phoneNumberWithNumber(text, "Work"));
    }
    return list;
}

TEST(QVSocialProfileMerging, CopesWithVeryManyNumbers) {
    for (const std::string ending : {"", "0000"}) {
        const QVPhoneNumberList list = manyNumbers("+1202", ending);
        QVSocialProfile profile;
        profile.setPhoneNumbers(list);
        EXPECT_EQ(profile.phoneNumbers().size(), list.size());
    }
}

TEST(QVSocialProfileCopy, IsIndependent) {
    QVSocialProfile profile;
    profile.setProfileType(QVSocialProfileSourceAddressBook);
    profile.setAddressBookUID("uid-1");
    profile.setFormattedName("Jordan Example");
    profile.setJobTitle("Head");
    profile.setJobTitleSource(1);
    profile.setCompany("Example Ltd.");
    profile.setCompanySource(8);
    profile.mergeWithEmailSet(social::emails({{"Work", "a@example.com"}}));
    profile.mergeWithPhoneNumberSet(social::phones({{"Work", "555-0100"}}));
    profile.mergeWithTwitterSet(social::handles({"jordan"}));
    profile.setAddressList({QVPostalAddress::addressWithLabel("Work", "1 Main St")});
    profile.setProfileURLLinkedInPublic("https://example.com/in");
    profile.setProfileURLFacebook("https://example.com/fb");
    profile.setAvatarURLLinkedIn("https://example.com/in.png");
    profile.setAvatarURLFacebookBig("https://example.com/fb.png");
    profile.setAddressBookAvatarData(social::bytes("picture"));
    const auto copy = profile.copy();

    profile.setFormattedName("Somebody Else");
    profile.setAddressBookUID(std::nullopt);
    profile.mergeWithEmailSet(social::emails({{"Home", "b@example.com"}}));
    profile.mergeWithPhoneNumberSet(social::phones({{"Home", "555-0199"}}));
    profile.mergeWithTwitterSet(social::handles({"other"}));
    profile.setAddressBookAvatarData(std::nullopt);

    EXPECT_EQ(copy->profileType(), 4);
    EXPECT_EQ(copy->addressBookUID(), "uid-1");
    EXPECT_EQ(copy->formattedName(), "Jordan Example");
    EXPECT_EQ(copy->jobTitle(), "Head");
    EXPECT_EQ(copy->jobTitleSource(), 1);
    EXPECT_EQ(copy->company(), "Example Ltd.");
    EXPECT_EQ(copy->companySource(), 8);
    EXPECT_THAT(social::emailsOf(*copy), ElementsAre(social::Entry("Work", "a@example.com")));
    EXPECT_THAT(social::phonesOf(*copy), ElementsAre(social::Entry("Work", "555-0100")));
    EXPECT_THAT(social::handlesOf(*copy), ElementsAre("jordan"));
    EXPECT_EQ(copy->addressList().size(), 1U);
    EXPECT_EQ(copy->profileURLLinkedInPublic(), "https://example.com/in");
    EXPECT_EQ(copy->profileURLFacebook(), "https://example.com/fb");
    EXPECT_EQ(copy->avatarURLLinkedIn(), "https://example.com/in.png");
    EXPECT_EQ(copy->avatarURLFacebookBig(), "https://example.com/fb.png");
    EXPECT_EQ(copy->addressBookAvatarData(), social::bytes("picture"));
}

TEST(QVSocialProfileHandles, AreACopyForEachCaller) {
    QVSocialProfile profile;
    profile.twitterAccounts()->insert("intruder");
    EXPECT_THAT(social::handlesOf(profile), IsEmpty());
}

TEST(QVSocialProfileDescription, TellsAbsentFromEmptyAndLeavesThePictureOut) {
    QVSocialProfile profile;
    profile.setFormattedName("Jordan %@");
    profile.setJobTitle("");
    profile.mergeWithEmailSet(social::emails({{std::nullopt, "a@example.com"}}));
    profile.setAddressBookAvatarData(social::bytes("picture"));
    EXPECT_EQ(profile.description(),
              "Social profile of type 0, record (null): Jordan %@, , (null)\n"
              "  (null): a@example.com\n"
              "  LinkedIn: (null)\n"
              "  Facebook: (null)");
}

TEST(QVSocialProfileDescription, HasALineForEachNumberHandleAndAddress) {
    QVSocialProfile profile;
    profile.mergeWithPhoneNumberSet(social::phones({{"Work", "555-0100"}}));
    profile.mergeWithTwitterSet(social::handles({"jordan"}));
    profile.setAddressList({QVPostalAddress::addressWithLabel("Home", "1 Example Lane")});
    EXPECT_EQ(profile.description(),
              "Social profile of type 0, record (null): (null), (null), (null)\n"
              "  Work: 555-0100\n"
              "  Twitter: jordan\n"
              "  Home: 1 Example Lane\n"
              "  LinkedIn: (null)\n"
              "  Facebook: (null)");
}

}  // namespace
