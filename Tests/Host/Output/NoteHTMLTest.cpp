#include "Output/NoteHTML.h"
#include "QVPlatform/MD5.h"
#include "Support/HostProgram.h"
#include "Support/ReadFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using qvhost::noteHTML;
using qvhost::Resources;
using testing::HasSubstr;
using testing::Not;

/// A picture of the test data in `resources`; its hash.
std::string addPicture(Resources& resources, const char* name) {
    const std::string text = testsupport::readFile(testsupport::hostData(name));
    const qv::Data bytes(text.begin(), text.end());
    resources.add(bytes);
    return qv::lowerHexMD5(bytes);
}

std::string media(const std::string& hash) {
    return "<qv-media style=\"width:50%\" hash=\"" + hash + "\" type=\"image/jpeg\"/>";
}

TEST(NoteHTML, TheTitleIsText) {
    EXPECT_THAT(noteHTML("", "A & <b>\"'", {}, nullptr), HasSubstr("<title>A &amp; &lt;b&gt;&quot;&apos;</title>"));
}

TEST(NoteHTML, LinksOpenElsewhere) {
    const std::string page = noteHTML("<a href=\"mailto:a@example.com\">a</a>", "", {}, nullptr);
    EXPECT_LT(page.find("<base target=\"_blank\">"), page.find("</head>"));
    EXPECT_THAT(page, HasSubstr("<a href=\"mailto:a@example.com\">a</a>")) << "the note itself stays as it is";
}

TEST(NoteHTML, KeepsTheNoteAroundItsPictures) {
    Resources resources;
    const std::string hash = addPicture(resources, "front.jpg");
    const std::string page =
        noteHTML("<p>one" + media(hash) + "two" + media(hash) + "three</p>", "", resources, nullptr);
    EXPECT_THAT(
        page, testing::ContainsRegex("<p>one<img alt=\"\" style=\"width:50%\" src=\"data:image/jpeg;base64,[^\"]+\">two"
                                     "<img [^>]+>three</p>"));
}

TEST(NoteHTML, TurnsOnlyThePictureInTheMap) {
    Resources resources;
    const std::string front = addPicture(resources, "front.jpg");
    const std::string back = addPicture(resources, "back.png");
    const auto rotation = std::make_shared<std::map<std::string, std::int64_t>>();
    (*rotation)[back] = 270;
    const std::string page = noteHTML(media(front) + "|" + media(back), "", resources, rotation);
    const std::size_t middle = page.find('|');
    EXPECT_THAT(page.substr(0, middle), Not(HasSubstr("rotate(")));
    EXPECT_THAT(page.substr(middle), HasSubstr("rotate(270deg)"));
    EXPECT_THAT(page.substr(middle), HasSubstr("aspect-ratio:110.0000/60.0000")) << "the picture is 60 by 110";
}

TEST(NoteHTML, APictureThatIsNotThereIsLeftOut) {
    const std::string page = noteHTML("a" + media("0123") + "b", "", {}, nullptr);
    EXPECT_THAT(page, HasSubstr("ab"));
    EXPECT_THAT(page, Not(HasSubstr("<img")));
}

TEST(NoteHTML, AllowsNoScriptAndNothingFromOutside) {
    EXPECT_THAT(noteHTML("", "", {}, nullptr),
                HasSubstr("<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; img-src data:; "
                          "style-src 'unsafe-inline'; base-uri 'none'; form-action 'none'\">"));
}

}  // namespace
