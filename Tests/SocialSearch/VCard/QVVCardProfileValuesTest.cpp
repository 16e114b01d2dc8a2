#include "SocialSearch/VCard/CardProfileSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;
using namespace cardprofile;

struct LabelRow {
    std::string name;
    std::string version;
    std::string lines;
    QVString label;
};

class VCardLabels : public testing::TestWithParam<LabelRow> {};

TEST_P(VCardLabels, AreRead) {
    const auto profile = profileOf(GetParam().version, GetParam().lines);
    const Entries entries = phonesOf(*profile).empty() ? emailsOf(*profile) : phonesOf(*profile);
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries.front().first, GetParam().label);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, VCardLabels,
    testing::Values(LabelRow{"None", "3.0", "TEL:1\r\n", std::nullopt},
                    LabelRow{"Cell", "3.0", "TEL;TYPE=cell,pref:1\r\n", "Mobile"},
                    LabelRow{"Cell21", "2.1", "TEL;CELL:1\r\n", "Mobile"},
                    LabelRow{"Cell40", "4.0", "TEL;VALUE=uri;TYPE=\"voice,cell\":tel:+1\r\n", "Mobile"},
                    LabelRow{"WorkCell", "3.0", "TEL;TYPE=WORK;TYPE=CELL:1\r\n", "Work Mobile"},
                    LabelRow{"WorkFax", "2.1", "TEL;WORK;FAX:1\r\n", "Work Fax"},
                    LabelRow{"HomeFax", "3.0", "TEL;TYPE=FAX,HOME:1\r\n", "Home Fax"},
                    LabelRow{"Fax", "3.0", "TEL;TYPE=FAX:1\r\n", "Fax"},
                    LabelRow{"WorkVoice", "3.0", "TEL;TYPE=WORK,VOICE:1\r\n", "Work"},
                    LabelRow{"Home", "3.0", "TEL;TYPE=HOME:1\r\n", "Home"},
                    LabelRow{"Pager", "3.0", "TEL;TYPE=PAGER:1\r\n", "Pager"},
                    LabelRow{"Voice", "3.0", "TEL;TYPE=VOICE:1\r\n", "Phone"},
                    LabelRow{"Unknown", "3.0", "TEL;TYPE=X-CAR:1\r\n", std::nullopt},
                    LabelRow{"Internet", "3.0", "EMAIL;TYPE=INTERNET:a@b.example\r\n", "Email"},
                    LabelRow{"EmailWork", "3.0", "EMAIL;TYPE=internet,work:a@b.example\r\n", "Work"},
                    LabelRow{"Free", "3.0", "item1.TEL;TYPE=WORK:1\r\nITEM1.X-ABLABEL:Front\\, desk\r\n",
                             "Front, desk"},
                    LabelRow{"Wrapped", "3.0", "a.TEL:1\r\na.X-ABLabel:_$!<Mobile>!$_\r\n", "Mobile"},
                    LabelRow{"EmptyFree", "3.0", "a.TEL;TYPE=CELL:1\r\na.X-ABLabel: \r\n", "Mobile"},
                    LabelRow{"OtherGroup", "3.0", "a.TEL;TYPE=CELL:1\r\nb.X-ABLabel:No\r\n", "Mobile"}),
    [](const auto& row) { return row.param.name; });

struct LinkRow {
    std::string name;
    std::string lines;
    QVString linkedIn;
    QVString facebook;
    std::vector<std::string> handles;
};

class VCardLinks : public testing::TestWithParam<LinkRow> {};

TEST_P(VCardLinks, AreRead) {
    const auto profile = profileOf("3.0", GetParam().lines);
    EXPECT_EQ(profile->profileURLLinkedInPublic(), GetParam().linkedIn);
    EXPECT_EQ(profile->profileURLFacebook(), GetParam().facebook);
    EXPECT_EQ(handlesOf(*profile), GetParam().handles);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, VCardLinks,
    testing::Values(
        LinkRow{"LinkedIn",
                "X-SOCIALPROFILE;TYPE=linkedin:https://de.linkedin.com/in/a\r\n",
                "https://de.linkedin.com/in/a",
                {},
                {}},
        LinkRow{"PlainURL", "URL:http://www.facebook.com/a\r\n", {}, "http://www.facebook.com/a", {}},
        LinkRow{"EscapedColon", "URL:https\\://fb.com/a\r\n", {}, "https://fb.com/a", {}},
        LinkRow{
            "TypeIsNotBelieved", "X-SOCIALPROFILE;TYPE=linkedin:https://linkedin.com.evil.example/\r\n", {}, {}, {}},
        LinkRow{"EndingIsNotEnough", "URL:https://notlinkedin.com/in/a\r\n", {}, {}, {}},
        LinkRow{"OtherScheme", "URL:ftp://linkedin.com/in/a\r\n", {}, {}, {}},
        LinkRow{"Twitter", "X-SOCIALPROFILE;TYPE=twitter:http://twitter.com/ada?x=y\r\n", {}, {}, {"ada"}},
        LinkRow{"X", "URL:https://x.com/ada/\r\n", {}, {}, {"ada"}},
        LinkRow{"TwitterWithoutHandle", "URL:https://twitter.com\r\n", {}, {}, {}},
        LinkRow{"TwitterUser", "X-SOCIALPROFILE;type=twitter;x-user=ada:x-apple:ada\r\n", {}, {}, {"ada"}},
        LinkRow{"TwitterBare", "X-SOCIALPROFILE;type=twitter:@ada\r\n", {}, {}, {"@ada"}},
        LinkRow{
            "SocialProfile", "SOCIALPROFILE;SERVICE-TYPE=Twitter;USERNAME=ada:https://a.example/\r\n", {}, {}, {"ada"}},
        LinkRow{
            "XTwitter", "X-TWITTER:ada\r\nX-SOCIALPROFILE;TYPE=twitter:https://twitter.com/ADA\r\n", {}, {}, {"ADA"}}),
    [](const auto& row) { return row.param.name; });

TEST(QVVCardProfileValuesTest, ReadsAddresses) {
    const auto profile = profileOf("4.0",
                                   "ADR;TYPE=home:;;5 Rue\\, A;Paris;;75001;France\r\n"
                                   "ADR;TYPE=work:PO 1;Floor 2;1 Main St.;Springfield;IL;62701;USA\r\n"
                                   "ADR;LABEL=\"Line 1^nLine 2\":;;x;;;;\r\nADR:;;;;;;\r\nADR:short\r\n");
    EXPECT_THAT(
        addressesOf(*profile),
        ElementsAre(std::pair(QVString("Home"), std::string("5 Rue, A\n75001 Paris\nFrance")),
                    std::pair(QVString("Work"), std::string("PO 1\nFloor 2\n1 Main St.\nSpringfield, IL 62701\nUSA")),
                    std::pair(QVString(), std::string("Line 1\nLine 2")), std::pair(QVString(), std::string("short"))));
}

qv::Data photoOf(const QVVCard& card) {
    return qv::profileOfCard(card, "u")->addressBookAvatarData().value_or(qv::Data());
}

QVVCard cardWithPicture(const std::string& version, const qv::Data& data) {
    QVVCard card = readCard(cardWithLines(version, ""));
    QVSocialProfile profile;
    profile.setAddressBookAvatarData(data);
    qv::updateCard(card, profile, "u");
    return readCard(card.bytes());
}

TEST(QVVCardProfileValuesTest, PicturesAreScaledTo512Pixels) {
    for (const std::string version : {"2.1", "3.0", "4.0"}) {
        const auto facts =
            testsupport::factsOfJPEG(photoOf(cardWithPicture(version, testsupport::makeJPEG(picture(1000, 600)))));
        EXPECT_EQ(facts.width, 512);
        EXPECT_EQ(facts.height, 307);
    }
    const auto tall =
        testsupport::factsOfJPEG(photoOf(cardWithPicture("3.0", testsupport::makeTIFF(picture(2, 1024)))));
    EXPECT_EQ(tall.width, 1);
    EXPECT_EQ(tall.height, 512);
}

TEST(QVVCardProfileValuesTest, SmallPicturesStayAsTheyAre) {
    const qv::Data jpeg = testsupport::makeJPEG(picture(512, 512));
    EXPECT_EQ(photoOf(cardWithPicture("3.0", jpeg)), jpeg);
    const QVVCard card = cardWithPicture("3.0", testsupport::makePNG(picture(8, 8)));
    EXPECT_EQ(photoOf(card), testsupport::makePNG(picture(8, 8)));
    EXPECT_THAT(card.propertyNamed("PHOTO")->types(), ElementsAre("PNG"));
}

TEST(QVVCardProfileValuesTest, OtherFormatsBecomeJPEG) {
    const auto facts =
        testsupport::factsOfJPEG(photoOf(cardWithPicture("3.0", testsupport::makeWebP(picture(20, 10)))));
    EXPECT_EQ(facts.width, 20);
    EXPECT_EQ(facts.height, 10);
}

TEST(QVVCardProfileValuesTest, WhatIsNoPictureIsNotWritten) {
    EXPECT_EQ(cardWithPicture("3.0", {'n', 'o'}).propertyNamed("PHOTO"), nullptr);
}

TEST(QVVCardProfileValuesTest, LinkedPicturesStay) {
    const std::string bytes =
        cardWithLines("3.0", "UID:u\r\nFN:a\r\nN:;a;;;\r\nPHOTO;VALUE=uri:https://a.example/b.jpg\r\n");
    QVVCard card = readCard(bytes);
    EXPECT_FALSE(qv::profileOfCard(card, "u")->addressBookAvatarData());
    QVSocialProfile profile;
    profile.setAddressBookAvatarData(testsupport::makeJPEG(picture(8, 8)));
    qv::updateCard(card, profile, "u");
    EXPECT_EQ(card.bytes(), bytes);
}

TEST(QVVCardProfileValuesTest, AnotherPictureReplacesTheCards) {
    QVVCard card = cardWithPicture("3.0", testsupport::makeJPEG(picture(8, 8)));
    const qv::Data other = testsupport::makeJPEG(picture(9, 9));
    QVSocialProfile profile;
    profile.setAddressBookAvatarData(other);
    qv::updateCard(card, profile, "u");
    EXPECT_EQ(photoOf(card), other);
    EXPECT_EQ(card.propertiesNamed("PHOTO").size(), 1U);
}

}  // namespace
