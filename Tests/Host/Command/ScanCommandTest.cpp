#include "Host/Command/ScanFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>

#include <filesystem>

namespace {

namespace fs = std::filesystem;
using nlohmann::ordered_json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testsupport::hostData;
using testsupport::readFile;
using testsupport::runProcess;
using testsupport::ScriptedServer;

/// What `scan` shows and how it ends.
class ScanCommand : public testsupport::ScanFixture {};

TEST_F(ScanCommand, ShowsTheFieldsThatWereRead) {
    answerWith("front.xml");
    const auto result = scan({mFront});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, IsEmpty());
    EXPECT_THAT(result.output, HasSubstr("Field    Text"));
    EXPECT_THAT(result.output, HasSubstr("Name     Ada Example                  91\n"));
}

TEST_F(ScanCommand, ShowsProgressOnATerminalAndTakesItAway) {
    answerWith("front.xml");
    auto onTerminal = call({mFront});
    onTerminal.errorIsTerminal = true;
    const auto result = runProcess(onTerminal);
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, HasSubstr("Reading the card with the recognition server at " + mServer.url()));
    EXPECT_THAT(result.error, testing::EndsWith("\r\x1b[K"));
}

TEST_F(ScanCommand, SendsPictureTokenAndLanguage) {
    answerWith("front.xml");
    ASSERT_EQ(scan({mFront, "--language", "de"}).status, 0);
    const auto requests = mServer.requests();
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_EQ(requests[0].method, "POST");
    EXPECT_EQ(requests[0].target, "/recognise");
    EXPECT_EQ(requests[0].header("auth"), kSecret);
    EXPECT_EQ(requests[0].header("content-language"), "de");
    EXPECT_EQ(requests[0].header("content-type"), "image/jpeg");
    EXPECT_TRUE(requests[0].body.starts_with("\xFF\xD8"));
}

TEST_F(ScanCommand, JSONIsOneObjectWithExactlyThePublishedKeys) {
    answerWith("front.xml");
    const auto result = scan({mFront, "--json"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, IsEmpty());
    const ordered_json object = ordered_json::parse(result.output);
    std::vector<std::string> keys;
    for (const auto& item : object.items())
        keys.push_back(item.key());
    EXPECT_THAT(keys, ElementsAre("noteUUID", "errors", "rotation", "card", "contact"));
    EXPECT_THAT(object["noteUUID"].get<std::string>(),
                testing::MatchesRegex("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}"));
    EXPECT_EQ(object["errors"], ordered_json::array());
    EXPECT_EQ(object["rotation"], 0);
    EXPECT_EQ(object["card"]["fullName"], "Ada Example");
    EXPECT_EQ(object["contact"]["fullName"], "Ada Example");
}

TEST_F(ScanCommand, EachScanHasItsOwnNote) {
    answerWith("front.xml");
    const auto first = ordered_json::parse(scan({mFront, "--json"}).output);
    const auto second = ordered_json::parse(scan({mFront, "--json"}).output);
    EXPECT_NE(first["noteUUID"], second["noteUUID"]);
}

TEST_F(ScanCommand, ContactHasThePropertyNamesInOrder) {
    answerWith("front.xml");
    const ordered_json contact = ordered_json::parse(scan({mFront, "--json"}).output)["contact"];
    const ordered_json expected = {
        {"fullName", "Ada Example"},
        {"emailFields", ordered_json::array({{{"label", "Email"}, {"text", "ada@example.com"}}})},
        {"phoneFields", ordered_json::array({{{"label", "Phone"}, {"text", "+1 555 0100"}}})},
        {"avatar", nullptr},
        {"resources", ordered_json::array({md5Of(readFile(mFront))})},
        {"resourceHashes", ordered_json::array({md5Of(readFile(mFront))})},
        {"twitterHandles", nullptr},
        {"weiboHandles", nullptr},
        {"jobTitle", "Engineer"},
        {"company", nullptr},
        {"URL", nullptr},
        {"address", "1 Main Street, 東京"},
        {"linkedInProfileURL", nullptr},
        {"facebookProfileURL", nullptr},
        {"orderedEmailFields", nullptr},
        {"orderedPhoneFields", nullptr},
        {"orderedTwitterHandles", nullptr},
        {"orderedWeiboHandles", nullptr},
        {"profileImageQVURLString", nullptr},
        {"cardImageQVURLStrings", nullptr},
    };
    EXPECT_EQ(contact.dump(1), expected.dump(1));
}

TEST_F(ScanCommand, SkippingTheNoteLeavesTheCard) {
    answerWith("front.xml");
    const auto result = scan({mFront, "--skip-note", "--json", "-o", (mFolder / "out").string()});
    EXPECT_EQ(result.status, 0);
    const ordered_json object = ordered_json::parse(result.output);
    EXPECT_TRUE(object["contact"].is_null());
    EXPECT_EQ(object["card"]["fullName"], "Ada Example");
    EXPECT_FALSE(fs::exists(mFolder / "out/note.qvml"));
    EXPECT_FALSE(fs::exists(mFolder / "out/note.html"));
    EXPECT_EQ(readFile(mFolder / "out/contact.json"), "null\n");
    EXPECT_EQ(ordered_json::parse(readFile(mFolder / "out/card.json")), object["card"]);
}

TEST_F(ScanCommand, MergesFrontAndBackAsTheNoteWas) {
    answerWith("front-poor.xml");
    answerWith("back-turned.xml");
    const ordered_json object = ordered_json::parse(scan({mFront, mBack, "--json"}).output);
    EXPECT_EQ(object["card"]["fullName"], "Bo Sample");
    EXPECT_EQ(object["card"]["language"], "en") << "the back won";
    EXPECT_EQ(object["card"]["fields"].size(), 3U);
    EXPECT_EQ(object["card"]["fields"][2]["text"], "Example & Co");
    EXPECT_EQ(object["rotation"], 90);
    EXPECT_EQ(object["contact"]["resourceHashes"],
              ordered_json::array({md5Of(readFile(mBack)), md5Of(readFile(mFront))}));
}

TEST_F(ScanCommand, HostileTextCannotActOnTheTerminal) {
    answerWith("hostile.xml");
    const auto result = scan({mFront});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("\\x9b31m red"));
    EXPECT_THAT(result.output, Not(HasSubstr("\xC2\x9B")));
}

TEST_F(ScanCommand, NothingRecognisedIsStatusOne) {
    answerWith("no-card.xml");
    const auto result = scan({mFront, "--json"});
    EXPECT_EQ(result.status, 1);
    const ordered_json object = ordered_json::parse(result.output);
    EXPECT_TRUE(object["card"].is_null());
    EXPECT_EQ(object["errors"], ordered_json::array());
    const auto table = scan({mFront});
    EXPECT_EQ(table.status, 1);
    EXPECT_THAT(table.output, HasSubstr("No fields were recognised"));
}

TEST_F(ScanCommand, AnEmptyAnswerIsErrorThree) {
    mServer.respond(ScriptedServer::answer(401, ""));
    const auto result = scan({mFront, "--json"});
    EXPECT_EQ(result.status, 1);
    const ordered_json expected =
        ordered_json::array({{{"domain", "kQVCardProcessingErrorDomain"}, {"code", 3}, {"underlying", nullptr}}});
    EXPECT_EQ(ordered_json::parse(result.output)["errors"], expected);
    EXPECT_THAT(result.error, HasSubstr(mServer.url("/recognise")));
    EXPECT_THAT(result.error, HasSubstr("token"));
}

TEST_F(ScanCommand, AResetIsErrorTwoWithItsCause) {
    mServer.handle([](auto& connection, const auto&) { connection.reset(); });
    const auto result = scan({mFront, "--json"});
    EXPECT_EQ(result.status, 1);
    const ordered_json errors = ordered_json::parse(result.output)["errors"];
    ASSERT_EQ(errors.size(), 1U);
    EXPECT_EQ(errors[0]["code"], 2);
    EXPECT_EQ(errors[0]["underlying"]["domain"], "QVURLErrorDomain");
    EXPECT_NE(errors[0]["underlying"]["code"], 0);
    EXPECT_THAT(errors[0]["underlying"]["description"].get<std::string>(), Not(IsEmpty()));
    EXPECT_THAT(result.error, HasSubstr("failed"));
}

TEST_F(ScanCommand, AFailedFrontStillReadsTheBack) {
    mServer.respond(ScriptedServer::answer(503, ""));
    answerWith("back-turned.xml");
    const auto result = scan({mFront, mBack, "--json"});
    EXPECT_EQ(result.status, 1);
    const ordered_json object = ordered_json::parse(result.output);
    EXPECT_EQ(object["errors"].size(), 1U);
    EXPECT_EQ(object["card"]["fullName"], "Bo Sample");
}

TEST_F(ScanCommand, NothingIsSentThatIsNoPicture) {
    const std::string text = mFolder.write("text.jpg", "not a picture").string();
    const std::string empty = mFolder.write("empty.jpg", "").string();
    for (const std::string& file :
         {text, empty, hostData("header-only.jpg"), (mFolder / "missing.jpg").string(), mFolder.path().string()}) {
        const auto front = scan({file});
        EXPECT_EQ(front.status, 2) << file;
        EXPECT_THAT(front.output, IsEmpty());
        EXPECT_THAT(front.error, HasSubstr(file));
        const auto back = scan({mFront, file});
        EXPECT_EQ(back.status, 2) << file;
        EXPECT_THAT(back.error, HasSubstr(file));
    }
    EXPECT_EQ(mServer.connectionCount(), 0U);
}

TEST_F(ScanCommand, SaysWhetherAFileIsNoPictureOrOneThatCannotBeRead) {
    EXPECT_THAT(scan({mFolder.write("text.jpg", "not a picture").string()}).error,
                HasSubstr("is not an image that can be read"));
    EXPECT_THAT(scan({hostData("header-only.jpg")}).error, HasSubstr("is an image (image/jpeg), but it is damaged or"));
    // A good header of 65535 x 65535 pixels.
    const std::string huge = readFile(hostData("back.png")).replace(16, 8, std::string("\0\0\xFF\xFF\0\0\xFF\xFF", 8));
    EXPECT_THAT(scan({mFolder.write("huge.png", huge).string()}).error, HasSubstr("too large to be read"));
    EXPECT_EQ(mServer.connectionCount(), 0U);
}

TEST_F(ScanCommand, DoesNotWaitForAPipe) {
    const std::string pipe = (mFolder / "pipe.jpg").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const auto result = scan({pipe});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.error, HasSubstr("\"" + pipe + "\" is a pipe, not a file"));
    EXPECT_EQ(mServer.connectionCount(), 0U);
}

TEST_F(ScanCommand, SaysThatTheBackWasNotRead) {
    answerWith("front.xml");
    const auto result = scan({mFront, mBack});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, HasSubstr("The back was not read"));
    EXPECT_EQ(mServer.requests().size(), 1U);
}

TEST_F(ScanCommand, AFullDiskIsStatusThree) {
    answerWith("front.xml");
    auto full = call({mFront, "--json"});
    full.outputFile = "/dev/full";
    EXPECT_EQ(runProcess(full).status, 3);
    auto closed = call({mFront});
    closed.closesOutput = true;
    EXPECT_EQ(runProcess(closed).status, 3);
}

TEST_F(ScanCommand, CardTextIsLoggedOnlyWhenAsked) {
    answerWith("front.xml");
    EXPECT_THAT(scan({mFront, "--json"}).error, IsEmpty());
    const auto result = scan({mFront, "--json", "--log"});
    EXPECT_THAT(result.error, HasSubstr("ada@example.com"));
    EXPECT_TRUE(ordered_json::accept(result.output)) << "the log stays out of the result";
}

}  // namespace
