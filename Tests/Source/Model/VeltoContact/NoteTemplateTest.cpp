#include "ContactFixtures.h"
#include "QVCardScan/QVCardScanDefines.h"
#include "QVCardScan/QVVeltoNoteGenerator.h"
#include "QVPlatform/Text.h"
#include "Support/CapturedLog.h"
#include "Support/ResourceFolder.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kFullFile[] = "velto-note-template-new.html";
constexpr char kInfoFile[] = "velto-note-contact-info-template.html";

class NoteTemplateFile : public fixtures::UntranslatedWords {
  protected:
    QVString note(bool full) { return QVVeltoNoteGenerator().noteFromContactInfo(mContact, full); }

    testsupport::ResourceFolder mResources;
    testsupport::CapturedLog mLog;
    std::shared_ptr<QVVeltoContact> mContact = std::make_shared<QVVeltoContact>();
};

TEST_F(NoteTemplateFile, MissingGivesNoNoteAndOneLineThatNamesThePath) {
    EXPECT_EQ(note(/*full=*/true), std::nullopt);
    EXPECT_THAT(mLog.messages(),
                ElementsAre("<ERROR> Error when opening template file: " + (mResources.path() / kFullFile).string()));
    mLog.clear();
    EXPECT_EQ(note(/*full=*/false), std::nullopt);
    EXPECT_THAT(mLog.messages(),
                ElementsAre("<ERROR> Error when opening template file: " + (mResources.path() / kInfoFile).string()));
}

TEST_F(NoteTemplateFile, ThatIsNoUTF8GivesNoNote) {
    mResources.write(kFullFile, "caf\xe9");
    EXPECT_EQ(note(/*full=*/true), std::nullopt);
    EXPECT_EQ(mLog.messages().size(), 1u);
}

TEST_F(NoteTemplateFile, IsChosenByTheKindOfNote) {
    mResources.write(kFullFile, "full <!--x-quorvane:attachments-->.");
    mResources.write(kInfoFile, "info <!--x-quorvane:attachments-->.");
    mContact->setResourceHashes(fixtures::strings({""}));
    EXPECT_EQ(note(/*full=*/true), "full .");
    EXPECT_EQ(note(/*full=*/false), "info <!--x-quorvane:attachments-->.");
    EXPECT_THAT(mLog.messages(), IsEmpty());
}

TEST_F(NoteTemplateFile, IsReadOnEveryCall) {
    mResources.write(kFullFile, "first");
    EXPECT_EQ(note(/*full=*/true), "first");
    mResources.write(kFullFile, "second");
    EXPECT_EQ(note(/*full=*/true), "second");
    mResources.write(kFullFile, "");
    EXPECT_EQ(note(/*full=*/true), "");
}

TEST_F(NoteTemplateFile, EveryOccurrenceIsFilledAndOnlyTheExactText) {
    mContact->setFullName("J");
    mResources.write(kFullFile,
                     "<!--x-quorvane:display-as-->|<!--x-quorvane:display-as--><!--x-quorvane:display-as-->|"
                     "<!--X-quorvane:display-as-->|<!-- x-quorvane:display-as -->");
    const std::string name = "<span style=\"x-quorvane:display-as\">J</span>";
    EXPECT_EQ(note(/*full=*/true),
              name + "|" + name + name + "|<!--X-quorvane:display-as-->|<!-- x-quorvane:display-as -->");
}

TEST_F(NoteTemplateFile, HalfAPlaceIsNone) {
    mContact->setFullName("J");
    const std::string half = "!--x-quorvane:display-as-->";
    const std::string name = "<span style=\"x-quorvane:display-as\">J</span>";
    mResources.write(kFullFile, half + "x" + half + "<<" + half + half + "<!--x-quorvane:display-as--");
    EXPECT_EQ(note(/*full=*/true), half + "x" + half + "<" + name + half + "<!--x-quorvane:display-as--");
}

TEST_F(NoteTemplateFile, PlacesOfTheHostStay) {
    std::string places;
    for (const auto place :
         {QVFamilyNamePlaceholder, QVGivenNamePlaceholder, QVPFamilyNamePlaceholder, QVPGivenNamePlaceholder,
          QVURLPlaceholder, QVDatePlaceholder, QVPlaceNamePlaceholder, QVNoteContentPlaceholder}) {
        places += place;
    }
    mResources.write(kFullFile, places);
    mContact->setFullName("Jordan Example");
    mContact->setURL("www.example.com");
    mContact->setAddress("1 Main St");
    EXPECT_EQ(note(/*full=*/true), places);
}

std::string published(const char* file) {
    return qv::Text::stringWithContentsOfFile((std::filesystem::path(QV_SOURCE_DIR) / "Resources" / file).string())
        .value_or("");
}

std::size_t occurrences(const std::string& text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size()))
        ++count;
    return count;
}

constexpr std::string_view kFilledInBoth[] = {QVDisplayAsPlaceholder, QVTitlePlaceholder,        QVOrgPlaceholder,
                                              QVEmailsPlaceholder,    QVPhonesPlaceholder,       QVTwittersPlaceholder,
                                              QVWeibosPlaceholder,    QVPlaceAddressPlaceholder, QVLinkedInPlaceholder,
                                              QVFacebookPlaceholder,  QVProfileImagePlaceholder};

TEST(PublishedTemplates, HoldEveryPlaceThatIsFilledOnce) {
    for (const auto place : kFilledInBoth) {
        EXPECT_EQ(occurrences(published(kFullFile), place), 1u) << place;
        EXPECT_EQ(occurrences(published(kInfoFile), place), 1u) << place;
    }
    EXPECT_EQ(occurrences(published(kFullFile), QVNoteAttachmentsPlaceHolder), 1u);
    EXPECT_EQ(occurrences(published(kInfoFile), QVNoteAttachmentsPlaceHolder), 0u);
}

// A section without rows is recognised by its style sheet as empty, which white space would prevent.
TEST(PublishedTemplates, HaveNoWhiteSpaceBetweenThePlacesOfRows) {
    for (const char* file : {kFullFile, kInfoFile}) {
        std::string rows;
        for (const auto place :
             {QVPhonesPlaceholder, QVEmailsPlaceholder, QVPlaceAddressPlaceholder, QVLinkedInPlaceholder,
              QVFacebookPlaceholder, QVTwittersPlaceholder, QVWeibosPlaceholder}) {
            rows += place;
        }
        EXPECT_EQ(occurrences(published(file), ">" + rows + "</div>"), 1u) << file;
    }
    EXPECT_EQ(occurrences(published(kFullFile), ">" + std::string(QVNoteAttachmentsPlaceHolder) + "</div>"), 1u);
}

// Notes travel: they must look the same wherever they are opened, and call nobody.
TEST(PublishedTemplates, ReferToNothingOutside) {
    for (const char* file : {kFullFile, kInfoFile}) {
        for (const char* reference : {"http:", "https:", "url(", "@import", "<script", "src=", "href="})
            EXPECT_EQ(occurrences(published(file), reference), 0u) << file << " " << reference;
    }
}

}  // namespace
