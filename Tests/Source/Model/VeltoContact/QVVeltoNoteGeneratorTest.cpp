#include "ContactFixtures.h"
#include "QVCardScan/QVVeltoNoteGenerator.h"
#include "Support/ResourceFolder.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace {

using fixtures::card;
using fixtures::cardField;
using fixtures::entrySet;
using fixtures::strings;
using testing::HasSubstr;
using testing::Not;

class Stranger : public qv::Object {};
class SpecialCard : public QVBusinessCard {};
class SpecialContact : public QVVeltoContact {};

class QVVeltoNoteGeneratorTest : public fixtures::UntranslatedWords {
  protected:
    QVVeltoNoteGenerator mGenerator;
    std::shared_ptr<QVVeltoContact> mContact = std::make_shared<QVVeltoContact>();
};

TEST_F(QVVeltoNoteGeneratorTest, TakesCardsAndContactsAndNothingElse) {
    mContact->setFullName("Jordan Example");
    mContact->setEmailFields(entrySet({{"Email", "a@example.com"}}));
    const auto sameAsCard = card({cardField(1, "NAME", "Jordan Example"), cardField(2, "EMAIL", "a@example.com")});
    const QVString note = mGenerator.noteFromContactInfo(mContact);
    ASSERT_NE(note, std::nullopt);
    EXPECT_EQ(mGenerator.noteFromObject(mContact), note);
    EXPECT_EQ(mGenerator.noteFromObject(sameAsCard), note);
    EXPECT_EQ(mGenerator.noteFromCard(sameAsCard), note);
    EXPECT_EQ(mGenerator.noteFromContactInfo(mContact, /*producingFullNote=*/true), note);
    EXPECT_NE(mGenerator.noteFromContactInfo(mContact, /*producingFullNote=*/false), note);
    EXPECT_NE(mGenerator.noteFromObject(std::make_shared<SpecialCard>()), std::nullopt);
    EXPECT_NE(mGenerator.noteFromObject(std::make_shared<SpecialContact>()), std::nullopt);
    EXPECT_EQ(mGenerator.noteFromObject(std::make_shared<Stranger>()), std::nullopt);
}

TEST_F(QVVeltoNoteGeneratorTest, NobodyGivesNoNote) {
    EXPECT_EQ(mGenerator.noteFromObject(nullptr), std::nullopt);
    EXPECT_EQ(mGenerator.noteFromCard(nullptr), std::nullopt);
    EXPECT_EQ(mGenerator.noteFromContactInfo(nullptr), std::nullopt);
    EXPECT_EQ(mGenerator.noteFromContactInfo(nullptr, /*producingFullNote=*/false), std::nullopt);
}

TEST_F(QVVeltoNoteGeneratorTest, IsAGeneratorOfNotes) {
    QVNoteGenerating& generating = mGenerator;
    QVNoteGenerator& base = mGenerator;
    EXPECT_NE(generating.noteFromObject(mContact), std::nullopt);
    EXPECT_FALSE(base.description().empty());
}

TEST_F(QVVeltoNoteGeneratorTest, ANoteOfACardHasNoAttachments) {
    const auto withImages = card({cardField(1, "NAME", "Jordan Example")});
    withImages->setFrontImage(qv::Image::initWithData({}));
    const QVString note = mGenerator.noteFromCard(withImages);
    EXPECT_THAT(*note, Not(HasSubstr("<!--x-quorvane:attachments-->")));
    EXPECT_THAT(*note, Not(HasSubstr("x-quorvane:card-image;")));
}

TEST_F(QVVeltoNoteGeneratorTest, TheNameIsEscapedAndAnAbsentOneKeepsItsPlace) {
    EXPECT_THAT(*mGenerator.noteFromContactInfo(mContact), HasSubstr("<!--x-quorvane:display-as-->"));
    mContact->setFullName("A & B <C>");
    EXPECT_THAT(*mGenerator.noteFromContactInfo(mContact),
                HasSubstr("<span style=\"x-quorvane:display-as\">A &amp; B &lt;C&gt;</span>"));
    mContact->setFullName("");
    EXPECT_THAT(*mGenerator.noteFromContactInfo(mContact), HasSubstr("<span style=\"x-quorvane:display-as\"></span>"));
}

struct Role {
    const char* name;
    QVString title, company;
    std::string expectedTitle, expectedCompany;
};

class RoleTest : public fixtures::UntranslatedWords, public testing::WithParamInterface<Role> {};

TEST_P(RoleTest, FillsTitleAndOrganisation) {
    const testsupport::ResourceFolder resources;
    resources.write("velto-note-template-new.html", "<!--x-quorvane:contact-title-->|<!--x-quorvane:contact-org-->");
    const auto contact = std::make_shared<QVVeltoContact>();
    contact->setJobTitle(GetParam().title);
    contact->setCompany(GetParam().company);
    EXPECT_EQ(QVVeltoNoteGenerator().noteFromContactInfo(contact),
              GetParam().expectedTitle + "|" + GetParam().expectedCompany);
}

constexpr char kTitlePlace[] = "<!--x-quorvane:contact-title-->";
constexpr char kOrgPlace[] = "<!--x-quorvane:contact-org-->";

const Role kRoles[] = {
    {"NeitherIsThere", std::nullopt, std::nullopt, "&nbsp;", "&nbsp;"},
    {"OnlyTitle", "R&D", std::nullopt, "R&amp;D", kOrgPlace},
    {"OnlyCompany", std::nullopt, "A & B", kTitlePlace, "A &amp; B"},
    {"Both", "Head", "Example Ltd.", "Head", "Example Ltd."},
    {"EmptyTitle", "", std::nullopt, kTitlePlace, kOrgPlace},
    {"EmptyCompany", std::nullopt, "", kTitlePlace, kOrgPlace},
    {"BothEmpty", "", "", kTitlePlace, kOrgPlace},
    {"EmptyTitleWithCompany", "", "Example Ltd.", kTitlePlace, "Example Ltd."},
};

INSTANTIATE_TEST_SUITE_P(Roles, RoleTest, testing::ValuesIn(kRoles),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(QVVeltoNoteGeneratorTest, WithoutAvatarThePlaceholderIsReferredTo) {
    mContact->setProfileImageQVURLString("app://avatar");
    const std::string hash = QVVeltoNoteGenerator::hashStringForPlaceholderAvatar();
    const std::string full = *mGenerator.noteFromContactInfo(mContact);
    EXPECT_THAT(full, HasSubstr(QVVeltoNoteGenerator::profileImageStringFromImageHash(hash, "image/png")));
    EXPECT_THAT(full, Not(HasSubstr("app://avatar")));
    const std::string info = *mGenerator.noteFromContactInfo(mContact, /*producingFullNote=*/false);
    EXPECT_THAT(info, HasSubstr("x-quorvane-mime=\"image/png\" src=\"app://avatar\" id=\"app://avatar\""));
    EXPECT_THAT(info, Not(HasSubstr(hash)));
}

TEST_F(QVVeltoNoteGeneratorTest, AnAvatarIsReferredToAsJPEG) {
    const auto avatar = QVVeltoNoteGenerator::placeholderAvatar();
    mContact->setAvatar(avatar);
    const std::string hash = QVVeltoNoteGenerator::lowerHexStringForDataHashFromNSImage(avatar, "image/jpeg");
    EXPECT_THAT(*mGenerator.noteFromContactInfo(mContact),
                HasSubstr(QVVeltoNoteGenerator::profileImageStringFromImageHash(hash, "image/jpeg")));
    EXPECT_THAT(*mGenerator.noteFromContactInfo(mContact, /*producingFullNote=*/false),
                HasSubstr("x-quorvane-mime=\"image/jpeg\" src=\"\" id=\"\""));
}

TEST_F(QVVeltoNoteGeneratorTest, AnAvatarThatCannotBeEncodedHasTheHashOfNothing) {
    mContact->setAvatar(qv::Image::initWithData({'x'}));
    EXPECT_THAT(*mGenerator.noteFromContactInfo(mContact),
                HasSubstr("hash=\"d41d8cd98f00b204e9800998ecf8427e\" type=\"image/jpeg\""));
}

// The places are filled one after the other in the text as it then is, so that what brings a place in decides by its
// own position whether that place is filled.
class FillingOrder : public QVVeltoNoteGeneratorTest {
  protected:
    std::string filled(const std::string& text) {
        mResources.write("velto-note-template-new.html", text);
        return mGenerator.noteFromContactInfo(mContact).value_or("");
    }

    testsupport::ResourceFolder mResources;
};

TEST_F(FillingOrder, ALaterPlaceInALabelIsFilled) {
    mContact->setPhoneFields(entrySet({{"<!--x-quorvane:contact-title-->", "555"}}));
    mContact->setJobTitle("Head");
    const std::string note = filled("<!--x-quorvane:phones-->");
    EXPECT_THAT(note, Not(HasSubstr("<!--x-quorvane:contact-title-->")));
    EXPECT_THAT(note, HasSubstr("-quorvane-context-name:Head\">Head</span>"));
}

TEST_F(FillingOrder, AnEarlierPlaceInALabelStays) {
    mContact->setPhoneFields(entrySet({{"<!--x-quorvane:emails-->", "555"}}));
    mContact->setEmailFields(entrySet({{"Email", "a@example.com"}}));
    EXPECT_THAT(filled("<!--x-quorvane:phones-->"),
                HasSubstr("-quorvane-context-name:<!--x-quorvane:emails-->\"><!--x-quorvane:emails--></span>"));
}

TEST_F(FillingOrder, ItsOwnPlaceInALabelStays) {
    mContact->setPhoneFields(entrySet({{"<!--x-quorvane:phones-->", "555"}}));
    EXPECT_THAT(filled("<!--x-quorvane:phones-->"), HasSubstr("\"><!--x-quorvane:phones--></span>"));
}

TEST_F(FillingOrder, PlacesFollowOneAnotherAsPublished) {
    // The word of each section brings in the place of the next one: only in this order all of them are filled.
    const std::vector<std::pair<std::string, std::string>> chain = {
        {"Twitter", "weibos"},    {"Weibo", "place-address"},    {"Address", "linkedin"},
        {"LinkedIn", "facebook"}, {"Facebook", "profile-image"},
    };
    qv::Bundle::setLocalizer([&chain](std::string_view key) -> std::optional<std::string> {
        for (const auto& [word, place] : chain) {
            if (word == key) return "<!--x-quorvane:" + place + "-->";
        }
        return std::nullopt;
    });
    mContact->setOrderedTwitterHandles(strings({"t"}));
    mContact->setOrderedWeiboHandles(strings({"w"}));
    mContact->setAddress("a");
    mContact->setLinkedInProfileURL("l");
    mContact->setFacebookProfileURL("f");
    const std::string note = filled("<!--x-quorvane:twitters-->");
    EXPECT_THAT(note, HasSubstr("href=\"http://weibo.com/w\""));
    EXPECT_THAT(note, HasSubstr("?q=a\""));
    EXPECT_THAT(note, HasSubstr("href=\"l\""));
    EXPECT_THAT(note, HasSubstr("href=\"f\""));
    EXPECT_THAT(note, HasSubstr("<qv-media "));
    EXPECT_THAT(note, Not(HasSubstr("<!--")));
}

TEST_F(FillingOrder, NameThenEmailsThenPhonesThenHandles) {
    mContact->setFullName("Jordan Example");
    mContact->setEmailFields(entrySet({{"<!--x-quorvane:display-as--><!--x-quorvane:phones-->", "a@example.com"}}));
    mContact->setPhoneFields(entrySet({{"<!--x-quorvane:twitters-->", "555"}}));
    mContact->setTwitterHandles(fixtures::handleSet({"jordan"}));
    const std::string note = filled("<!--x-quorvane:emails-->");
    EXPECT_THAT(note, HasSubstr("<!--x-quorvane:display-as-->"));
    EXPECT_THAT(note, Not(HasSubstr("Jordan Example")));
    EXPECT_THAT(note, HasSubstr(">555</span>"));
    EXPECT_THAT(note, HasSubstr(">jordan</a>"));
}

TEST_F(FillingOrder, TheProfileImageComesBeforeTheTitle) {
    mContact->setProfileImageQVURLString("<!--x-quorvane:contact-title--><!--x-quorvane:emails-->");
    mContact->setJobTitle("Head");
    mResources.write("velto-note-contact-info-template.html", "<!--x-quorvane:profile-image-->");
    EXPECT_THAT(*mGenerator.noteFromContactInfo(mContact, /*producingFullNote=*/false),
                HasSubstr(" src=\"Head<!--x-quorvane:emails-->\""));
}

TEST_F(FillingOrder, TextsOfTheContactBringNoPlacesIn) {
    mContact->setFullName("<!--x-quorvane:emails-->");
    EXPECT_EQ(filled("<!--x-quorvane:display-as-->"),
              "<span style=\"x-quorvane:display-as\">&lt;!--x-quorvane:emails--&gt;</span>");
}

TEST_F(FillingOrder, AttachmentsComeLast) {
    mContact->setProfileImageQVURLString("unused");
    mContact->setResourceHashes(strings({"<!--x-quorvane:contact-org-->"}));
    mContact->setCompany("Example Ltd.");
    EXPECT_THAT(filled("<!--x-quorvane:attachments-->"), HasSubstr("hash=\"<!--x-quorvane:contact-org-->\""));
}

}  // namespace
