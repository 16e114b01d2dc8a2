#include "ContactFixtures.h"
#include "QVCardScan/QVBizCardParser.h"
#include "QVCardScan/QVVeltoNoteGenerator.h"
#include "QVPlatform/Text.h"
#include "Support/Golden.h"
#include "Support/TestSupport.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

/// From a recognition result to its note, both below the folder of goldens.
class NoteGoldenTest : public fixtures::UntranslatedWords, public testing::WithParamInterface<const char*> {
  protected:
    std::shared_ptr<QVVeltoContact> contact() {
        const auto file = testsupport::testsFolder() / folder() / "card.xml";
        const auto card = QVBizCardParser().parse(qv::Text::stringWithContentsOfFile(file.string()), nullptr);
        if (!card) return nullptr;
        auto contact = QVVeltoContact::initWithCard(card);
        contact->setResourceHashes(fixtures::strings({"0123456789abcdef0123456789abcdef", "", "back"}));
        contact->setProfileImageQVURLString("app://avatar");
        return contact;
    }
    std::string note(bool full) {
        const std::string note = QVVeltoNoteGenerator().noteFromContactInfo(contact(), full).value_or("no note");
        // The hash is that of a PNG encoding, which another version of the encoder may write differently.
        return qv::Text::replaceAll(note, QVVeltoNoteGenerator::hashStringForPlaceholderAvatar(),
                                    "(hash of the placeholder avatar)");
    }
    std::filesystem::path folder() const { return std::filesystem::path("Source/Golden") / GetParam(); }
};

TEST_P(NoteGoldenTest, IsTheNoteOfItsCard) {
    EXPECT_TRUE(testsupport::matchesGolden(note(/*full=*/true), folder() / "note.qvml"));
    EXPECT_TRUE(testsupport::matchesGolden(note(/*full=*/false), folder() / "contact-info.html"));
}

INSTANTIATE_TEST_SUITE_P(Cards, NoteGoldenTest,
                         testing::Values("full", "name-only", "two-names", "company-only", "markup", "scripts",
                                         "nothing"),
                         [](const auto& row) { return qv::Text::replaceAll(row.param, "-", "_"); });

}  // namespace
