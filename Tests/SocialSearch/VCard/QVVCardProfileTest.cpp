#include "QVSocialSearch/QVVCardProfile.h"
#include "SocialSearch/VCard/CardProfileSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace cardprofile;
using testing::HasSubstr;
using testing::Not;

/// Everything that a card can hold, with texts that are hard to write.
QVSocialProfile fullProfile() {
    QVSocialProfile profile;
    profile.setFormattedName("Dr. Zoë van den Berg; 山田, \\ Jr.");
    profile.setJobTitle("Head, R&D; \"Things\"\nand more");
    profile.setCompany("Exämple; Söhne, Inc.");
    addEmail(profile, "Work", "zoe@example.com");
    addEmail(profile, std::nullopt, "z@example.org");
    addEmail(profile, "Büro; \"oben\", 2", "zoe@buero.example");
    addEmail(profile, "Email", "e@example.net");
    addPhone(profile, "Mobile", "+1 202 555 0142");
    addPhone(profile, "Work Fax", "+1 202 555 0143");
    addPhone(profile, "Zentrale", "+49 30 901820");
    addPhone(profile, std::nullopt, "+44 20 7946 0000 ext. 5");
    profile.setAddressList({QVPostalAddress::addressWithLabel("Home", "1, Main St.; Rear\nSpringfield, IL 62701\nUSA"),
                            QVPostalAddress::addressWithLabel("Lager", "Hafenstraße 5")});
    addHandle(profile, "zoe");
    addHandle(profile, "zoë/b?");
    profile.setProfileURLLinkedInPublic("https://www.linkedin.com/in/zoe");
    profile.setProfileURLFacebook("https://www.facebook.com/zoe");
    return profile;
}

void expectSameContact(const QVSocialProfile& actual, const QVSocialProfile& expected) {
    EXPECT_EQ(actual.formattedName(), expected.formattedName());
    EXPECT_EQ(actual.jobTitle(), expected.jobTitle());
    EXPECT_EQ(actual.company(), expected.company());
    EXPECT_EQ(emailsOf(actual), emailsOf(expected));
    EXPECT_EQ(phonesOf(actual), phonesOf(expected));
    EXPECT_EQ(addressesOf(actual), addressesOf(expected));
    EXPECT_EQ(handlesOf(actual), handlesOf(expected));
    EXPECT_EQ(actual.profileURLLinkedInPublic(), expected.profileURLLinkedInPublic());
    EXPECT_EQ(actual.profileURLFacebook(), expected.profileURLFacebook());
    EXPECT_EQ(actual.addressBookAvatarData(), expected.addressBookAvatarData());
}

class VCardProfileVersions : public testing::TestWithParam<std::string> {};

TEST_P(VCardProfileVersions, ReadingBackGivesTheSameContact) {
    QVSocialProfile profile = fullProfile();
    profile.setAddressBookAvatarData(testsupport::makeJPEG(picture(40, 30)));
    QVVCard card = readCard(cardWithLines(GetParam(), "X-A:b\r\n"));
    qv::updateCard(card, profile, "u-1");
    const auto again = qv::profileOfCard(readCard(card.bytes()), "other");
    expectSameContact(*again, profile);
    EXPECT_EQ(again->addressBookUID(), "u-1");
    EXPECT_EQ(again->profileType(), QVSocialProfileSourceAddressBook);
    EXPECT_EQ(again->jobTitleSource(), QVSocialProfileSourceAddressBook);
    EXPECT_EQ(again->companySource(), QVSocialProfileSourceAddressBook);
}

TEST_P(VCardProfileVersions, WritingTwiceChangesNothing) {
    QVSocialProfile profile = fullProfile();
    profile.setAddressBookAvatarData(testsupport::makePNG(picture(800, 30)));
    QVVCard card = readCard(cardWithLines(GetParam(), ""));
    qv::updateCard(card, profile, "u-1");
    const std::string bytes = card.bytes();
    QVVCard again = readCard(bytes);
    qv::updateCard(again, profile, "u-2");
    EXPECT_EQ(again.bytes(), bytes);
    qv::updateCard(again, *qv::profileOfCard(again, ""), "u-3");
    EXPECT_EQ(again.bytes(), bytes);
}

TEST_P(VCardProfileVersions, UnknownLinesStayByteForByte) {
    const std::string odd = "X-ODD;;A=:  \r\nitem1.X-B:c\r\n  d\r\n\r\nNOTE:a\\q\r\n";
    const std::string known = "UID:u\r\nfn:Ada\r\nN:Example;Ada;;;\r\nTITLE;X=y:Old\r\n  title\r\n";
    QVVCard card = readCard(cardWithLines(GetParam(), known + odd));
    QVSocialProfile profile;
    profile.setJobTitle("New");
    addEmail(profile, std::nullopt, "a@example.com");
    qv::updateCard(card, profile, "other");
    EXPECT_EQ(card.bytes(), cardWithLines(GetParam(), "UID:u\r\nfn:Ada\r\nN:Example;Ada;;;\r\nTITLE;X=y:New\r\n" + odd +
                                                          "EMAIL:a@example.com\r\n"));
}

INSTANTIATE_TEST_SUITE_P(Versions, VCardProfileVersions, testing::Values("2.1", "3.0", "4.0"), [](const auto& row) {
    return row.param == "2.1" ? "V21" : row.param == "3.0" ? "V30" : "V40";
});

TEST(QVVCardProfileTest, NewCardsLookLikeThis) {
    QVSocialProfile profile;
    profile.setFormattedName("Dr. Ada Example");
    profile.setJobTitle("Engineer");
    profile.setCompany("Example, Inc.");
    addEmail(profile, "Work", "ada@example.com");
    addPhone(profile, "Mobile", "+1 202 555 0142");
    addPhone(profile, "Reception", "+1 202 555 0100");
    addHandle(profile, "@ada");
    profile.setProfileURLLinkedInPublic("https://www.linkedin.com/in/ada,b;c");
    QVVCard card = QVVCard::emptyCard();
    qv::updateCard(card, profile, "u-1");
    EXPECT_EQ(card.bytes(), cardWithLines("3.0",
                                          "UID:u-1\r\n"
                                          "FN:Dr. Ada Example\r\n"
                                          "N:Example;Ada;;Dr.;\r\n"
                                          "TITLE:Engineer\r\n"
                                          "ORG:Example\\, Inc.\r\n"
                                          "EMAIL;TYPE=INTERNET,WORK:ada@example.com\r\n"
                                          "TEL;TYPE=CELL:+1 202 555 0142\r\n"
                                          "item1.TEL:+1 202 555 0100\r\n"
                                          "item1.X-ABLabel:Reception\r\n"
                                          "X-SOCIALPROFILE;TYPE=linkedin:https://www.linkedin.com/in/ada%2Cb%3Bc\r\n"
                                          "X-SOCIALPROFILE;TYPE=twitter:https://twitter.com/ada\r\n"));
}

TEST(QVVCardProfileTest, AbsentAndBlankValuesChangeNothing) {
    const std::string bytes = cardWithLines("3.0", "UID:u\r\nFN:Ada\r\nN:;Ada;;;\r\nTITLE:t\r\nORG:o;d\r\n");
    QVVCard card = readCard(bytes);
    qv::updateCard(card, QVSocialProfile(), "other");
    QVSocialProfile blank;
    blank.setFormattedName(" ");
    blank.setJobTitle("");
    blank.setCompany("\n");
    blank.setProfileURLLinkedInPublic("");
    blank.setProfileURLFacebook("javascript:alert(1)");
    blank.setAddressBookAvatarData(qv::Data());
    qv::updateCard(card, blank, "other");
    EXPECT_EQ(card.bytes(), bytes);
}

TEST(QVVCardProfileTest, MissingNamesAreStoodFor) {
    const auto nameFor = [](const QVSocialProfile& profile) {
        QVVCard card = QVVCard::emptyCard();
        qv::updateCard(card, profile, "u");
        EXPECT_EQ(card.propertyNamed("N")->value, ";;;;");
        return card.propertyNamed("FN")->text();
    };
    QVSocialProfile profile;
    EXPECT_EQ(nameFor(profile), "Unnamed");
    addHandle(profile, "handle");
    EXPECT_EQ(nameFor(profile), "handle");
    addPhone(profile, std::nullopt, "123");
    EXPECT_EQ(nameFor(profile), "123");
    addEmail(profile, std::nullopt, "a@example.com");
    EXPECT_EQ(nameFor(profile), "a@example.com");
    profile.setCompany("Example");
    EXPECT_EQ(nameFor(profile), "Example");
}

TEST(QVVCardProfileTest, ACorrectedNameStaysWithItsDisplayName) {
    const std::string bytes =
        cardWithLines("3.0", "UID:u\r\nFN:Gabriel García Márquez\r\nN:García Márquez;Gabriel;;;\r\n");
    QVVCard card = readCard(bytes);
    QVSocialProfile profile;
    profile.setFormattedName("Gabriel García Márquez");
    qv::updateCard(card, profile, "u");
    EXPECT_EQ(card.bytes(), bytes);
    profile.setFormattedName("Ada Example");
    qv::updateCard(card, profile, "u");
    EXPECT_EQ(card.bytes(), cardWithLines("3.0", "UID:u\r\nFN:Ada Example\r\nN:Example;Ada;;;\r\n"));
}

TEST(QVVCardProfileTest, OldCardsWithoutDisplayNameGetTheirOwn) {
    QVVCard card = readCard(cardWithLines("2.1", "N:Example;Ada;B.;Dr.;PhD\r\n"));
    EXPECT_EQ(qv::profileOfCard(card, "u")->formattedName(), "Dr. Ada B. Example PhD");
    QVSocialProfile profile;
    addEmail(profile, std::nullopt, "a@example.com");
    qv::updateCard(card, profile, "u");
    EXPECT_THAT(card.bytes(), HasSubstr("N:Example;Ada;B.;Dr.;PhD\r\n"));
    EXPECT_THAT(card.bytes(), HasSubstr("FN:Dr. Ada B. Example PhD\r\n"));
}

TEST(QVVCardProfileTest, DepartmentsStay) {
    QVVCard card = readCard(cardWithLines("3.0", "UID:u\r\nFN:a\r\nN:;a;;;\r\nORG:Old\\, Inc.;R\\;D;Lab\r\n"));
    EXPECT_EQ(qv::profileOfCard(card, "u")->company(), "Old, Inc.");
    QVSocialProfile profile;
    profile.setCompany("New");
    qv::updateCard(card, profile, "u");
    EXPECT_THAT(card.bytes(), HasSubstr("ORG:New;R\\;D;Lab\r\n"));
}

/// What is written over a text in base64 would be taken for base64 itself, and would break the lines of an old card.
TEST(QVVCardProfileTest, TextsInBase64AreReplacedByPlainOnes) {
    for (const std::string version : {"2.1", "3.0"}) {
        const std::string lines = "N;ENCODING=b:QQ==\r\nFN;ENCODING=b:QQ==\r\nTITLE;ENCODING=b:QQ==\r\n";
        QVVCard card = readCard(cardWithLines(version, lines + "ORG;ENCODING=b:QQ==\r\n"));
        QVSocialProfile profile;
        profile.setFormattedName("Ada Example");
        profile.setJobTitle("Countess\nof Lovelace");
        profile.setCompany("Example");
        qv::updateCard(card, profile, "u");
        const auto read = qv::profileOfCard(readCard(card.bytes()), "u");
        EXPECT_EQ(read->formattedName(), "Ada Example");
        EXPECT_EQ(read->jobTitle(), "Countess\nof Lovelace");
        EXPECT_EQ(read->company(), "Example");
        EXPECT_EQ(card.bytes().find("ENCODING=b"), std::string::npos);
    }
}

/// Where a long text is broken, a line may begin like the one that tells the version.
TEST(QVVCardProfileTest, CardsStayReadableWhateverALineBeginsWith) {
    for (std::size_t length = 1; length < 80; ++length) {
        QVVCard card = readCard(cardWithLines("2.1", ""));
        QVSocialProfile profile;
        profile.setJobTitle(std::string(length, 'x') + "\nVERSION:9.9\n" + std::string(80, 'y'));
        qv::updateCard(card, profile, "u");
        EXPECT_EQ(qv::profileOfCard(readCard(card.bytes()), "u")->jobTitle(), profile.jobTitle());
    }
}

TEST(QVVCardProfileTest, KnownEntriesAreNotAddedAgain) {
    const std::string bytes = cardWithLines(
        "3.0",
        "UID:u\r\nFN:a\r\nN:;a;;;\r\nEMAIL;TYPE=HOME:Ada@Example.com\r\nTEL:202-555-0142\r\n"
        "ADR:;;1 Main St.;Springfield;IL;62701;USA\r\nX-TWITTER:@Ada\r\nURL:https://linkedin.com/in/ada\r\n");
    QVVCard card = readCard(bytes);
    QVSocialProfile profile;
    addEmail(profile, "Work", "ada@example.COM");
    addPhone(profile, "Mobile", "+1 202 555 0142");
    addHandle(profile, "ADA");
    profile.setProfileURLLinkedInPublic("https://linkedin.com/in/ada");
    profile.setAddressList({QVPostalAddress::addressWithLabel("Work", "1 main st.\nSpringfield, IL 62701\nUSA")});
    qv::updateCard(card, profile, "u");
    EXPECT_EQ(card.bytes(), bytes);
}

TEST(QVVCardProfileTest, NumbersWithAndWithoutTheirSchemeAreTheSame) {
    for (const std::string number :
         {"tel:110", "tel: 5", "tel:", " tel: ", "tel:tel:", "tel:tel:none", "tel:+1 202 555 0142"}) {
        QVVCard card = QVVCard::emptyCard();
        QVSocialProfile profile;
        addPhone(profile, "Mobile", number);
        qv::updateCard(card, profile, "u");
        const std::string once = card.bytes();
        qv::updateCard(card, profile, "u");
        EXPECT_EQ(card.bytes(), once);
        qv::updateCard(card, *qv::profileOfCard(readCard(once), "u"), "u");
        EXPECT_EQ(card.bytes(), once);
    }
}

/// Work that grew with the square of the lines would not end in the test's time.
TEST(QVVCardProfileTest, HostileCardsTakeNoLongerThanTheirSize) {
    std::string lines = "UID:u\r\nFN:a\r\n";
    for (int i = 0; i < 4500; ++i) {
        const std::string number = std::to_string(i);
        lines += "i" + number + ".TEL;TYPE=\"a,b,c,d,e,f,g,h\":+1202" + std::to_string(1000000 + i) + "\r\n";
        lines += "i" + number + ".X-ABLabel:L" + number + "\r\n";
        lines += "i" + number + ".EMAIL:e" + number + "@example.com\r\nTITLE: \r\n";
    }
    lines += "TITLE:Boss\r\nN:" + std::string(1000000, ';') + "\r\nADR:" + std::string(1000000, ';') + "\r\n";
    QVVCard card = readCard(cardWithLines("3.0", lines));
    const auto profile = qv::profileOfCard(card, "");
    EXPECT_EQ(phonesOf(*profile).size(), 4500U);
    EXPECT_EQ(phonesOf(*profile).back().first, "L4499");
    EXPECT_EQ(emailsOf(*profile).size(), 4500U);
    EXPECT_EQ(profile->jobTitle(), "Boss");
    const std::string bytes = card.bytes();
    qv::updateCard(card, *profile, "");
    EXPECT_EQ(card.bytes(), bytes);
}

TEST(QVVCardProfileTest, AHugeNameIsNotTakenApart) {
    const std::string name(std::size_t{2} << 20, ',');
    QVVCard card = readCard(cardWithLines("3.0", "UID:u\r\nFN:a " + name + "\r\n"));
    QVSocialProfile profile;
    profile.setJobTitle("t");
    qv::updateCard(card, profile, "u");
    EXPECT_EQ(qv::profileOfCard(readCard(card.bytes()), "u")->formattedName(), "a " + name);
}

/// Whatever single bytes are wrong in a card: it is refused, or kept to the byte and still a card after an update.
TEST(QVVCardProfileTest, DamagedCardsAreRefusedOrStayCards) {
    std::mt19937 random(7);
    const std::string interesting =
        "\r\n :;,=\"\\^.%\t\x80\xC3"
        "aBEGIN0";
    int kept = 0;
    for (int i = 0; i < 3000; ++i) {
        const std::string version = i % 3 == 0 ? "2.1" : i % 3 == 1 ? "3.0" : "4.0";
        std::string bytes =
            cardWithLines(version,
                          "UID:u\r\nFN;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:Zo=C3=AB=\r\n X=0D=0A\r\n"
                          "N:b;a\r\nORG;ENCODING=QUOTED-PRINTABLE:a;b=0D=0Ac\r\n"
                          "item1.TEL;TYPE=\"work,cell\";PREF=1:+1\r\nitem1.X-ABLabel:x\r\n"
                          "PHOTO;ENCODING=b:YQ\r\n ==\r\n\r\nADR;HOME:;;a\\;b;c\r\n");
        for (int k = 0; k < 1 + i % 4; ++k)
            bytes[random() % bytes.size()] = interesting[random() % interesting.size()];
        auto card = QVVCard::cardWithBytes(bytes, nullptr);
        if (!card) continue;
        ++kept;
        ASSERT_EQ(card->bytes(), bytes);
        qv::updateCard(*card, fullProfile(), "u");
        const auto again = QVVCard::cardWithBytes(card->bytes(), nullptr);
        ASSERT_TRUE(again) << bytes << card->bytes();
        const auto profile = qv::profileOfCard(*again, "u");
        ASSERT_EQ(profile->formattedName(), fullProfile().formattedName()) << bytes << card->bytes();
        ASSERT_EQ(profile->company(), fullProfile().company()) << bytes << card->bytes();
        ASSERT_TRUE(qv::cardHasEmailAddress(*again, "zoe@example.com")) << bytes << card->bytes();
    }
    EXPECT_GT(kept, 500);
}

TEST(QVVCardProfileTest, TellsWhetherThereIsAnythingToSave) {
    QVSocialProfile profile;
    profile.setProfileType(QVSocialProfileSourceAddressBook);
    profile.setAddressBookUID("u");
    profile.setFormattedName(" ");
    EXPECT_FALSE(qv::profileHasContents(profile));
    addHandle(profile, "a");
    EXPECT_TRUE(qv::profileHasContents(profile));
    EXPECT_TRUE(qv::profileHasContents(fullProfile()));
}

TEST(QVVCardProfileTest, FindsEmailAddressesWithoutRegardToCase) {
    const QVVCard card = readCard(cardWithLines("3.0", "EMAIL:A@Example.com\r\nitem1.EMAIL:b@example.com \r\n"));
    EXPECT_TRUE(qv::cardHasEmailAddress(card, "a@example.com"));
    EXPECT_TRUE(qv::cardHasEmailAddress(card, " B@EXAMPLE.COM"));
    EXPECT_FALSE(qv::cardHasEmailAddress(card, "c@example.com"));
    EXPECT_FALSE(qv::cardHasEmailAddress(card, ""));
}

}  // namespace
