#include "Support/HostProgram.h"
#include "Support/ReadFile.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>

namespace {

using nlohmann::ordered_json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testsupport::hostCall;
using testsupport::hostData;
using testsupport::readFile;
using testsupport::runHost;
using testsupport::runProcess;
using testsupport::TemporaryFolder;

std::vector<std::string> keysOf(const ordered_json& object) {
    std::vector<std::string> keys;
    for (const auto& item : object.items())
        keys.push_back(item.key());
    return keys;
}

TEST(ParseCommand, ShowsAnAlignedTable) {
    const auto result = runHost({"parse", hostData("front.xml")});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, IsEmpty());
    EXPECT_THAT(result.output, HasSubstr("Field    Text                 Confidence\n"
                                         "Name     Ada Example                  91\n"
                                         "Title    Engineer                     80\n"
                                         "Email    ada@example.com              88\n"
                                         "Phone    +1 555 0100                  77\n"
                                         "Address  1 Main Street, 東京          60\n"));
    EXPECT_THAT(result.output, HasSubstr("Full name   Ada Example\n"));
    EXPECT_THAT(result.output, HasSubstr("Size        120 x 70\n"));
}

TEST(ParseCommand, JSONHasExactlyThePublishedKeys) {
    const auto result = runHost({"parse", hostData("front.xml"), "--json"});
    ASSERT_EQ(result.status, 0);
    const ordered_json card = ordered_json::parse(result.output);
    EXPECT_THAT(keysOf(card),
                ElementsAre("language", "cardWidth", "cardHeight", "fields", "fullName", "emails", "phoneNumbers",
                            "hasTitleField", "score", "rotationByDegrees", "description"));
    ASSERT_EQ(card["fields"].size(), 5U);
    EXPECT_THAT(keysOf(card["fields"][0]), ElementsAre("type", "label", "name", "text", "frame", "weight", "orient"));
}

TEST(ParseCommand, JSONHoldsWhatTheParserRead) {
    const ordered_json card = ordered_json::parse(runHost({"parse", hostData("front.xml"), "--json"}).output);
    EXPECT_EQ(card["language"], "en");
    EXPECT_EQ(card["cardWidth"], 120);
    EXPECT_EQ(card["cardHeight"], 70);
    EXPECT_EQ(card["fullName"], "Ada Example");
    EXPECT_EQ(card["emails"], ordered_json::array({"ada@example.com"}));
    EXPECT_EQ(card["phoneNumbers"], ordered_json::array({"+1 555 0100"}));
    EXPECT_EQ(card["hasTitleField"], true);
    EXPECT_EQ(card["score"], 2);
    EXPECT_EQ(card["rotationByDegrees"], 0);
    const ordered_json expected = {
        {"type", 1},    {"label", 0}, {"name", "name"}, {"text", "Ada Example"}, {"frame", {1.5, 2.25, 30.0, 8.0}},
        {"weight", 91}, {"orient", 0}};
    EXPECT_EQ(card["fields"][0], expected);
    EXPECT_THAT(card["description"].get<std::string>(), HasSubstr("Business Card\n"));
}

TEST(ParseCommand, AbsentIsNull) {
    auto call = hostCall({"parse", "-", "--json"});
    call.input = "<recoIndex><item/></recoIndex>";
    const auto result = runProcess(call);
    ASSERT_EQ(result.status, 0);
    const ordered_json card = ordered_json::parse(result.output);
    for (const char* key : {"language", "fullName", "emails", "phoneNumbers"})
        EXPECT_TRUE(card[key].is_null()) << key;
    EXPECT_TRUE(card["fields"][0]["name"].is_null());
    EXPECT_TRUE(card["fields"][0]["text"].is_null());
}

TEST(ParseCommand, FieldsAreNullWhenTheRootNeverEnds) {
    auto call = hostCall({"parse", "-", "--json"});
    call.input = "<recoIndex lang=\"en\"><item fldType=\"name\"><t w=\"1\">X</t>";
    const auto result = runProcess(call);
    ASSERT_EQ(result.status, 0);
    EXPECT_TRUE(ordered_json::parse(result.output)["fields"].is_null());
}

TEST(ParseCommand, NumbersReadBackTheSame) {
    auto call = hostCall({"parse", "-", "--json"});
    call.input = "<recoIndex><item x=\"0.1\" y=\"16777217\" w=\"3.4e38\" h=\"-1e-7\"/></recoIndex>";
    const ordered_json frame = ordered_json::parse(runProcess(call).output)["fields"][0]["frame"];
    EXPECT_EQ(frame[0].get<double>(), static_cast<double>(0.1F));
    EXPECT_EQ(frame[1].get<double>(), 16777216.0);
    EXPECT_EQ(frame[2].get<double>(), static_cast<double>(3.4e38F));
    EXPECT_EQ(frame[3].get<double>(), static_cast<double>(-1e-7F));
}

TEST(ParseCommand, NoCardIsDone) {
    const auto json = runHost({"parse", hostData("no-card.xml"), "--json"});
    EXPECT_EQ(json.status, 0);
    EXPECT_EQ(json.output, "null\n");
    const auto text = runHost({"parse", hostData("no-card.xml")});
    EXPECT_EQ(text.status, 0);
    EXPECT_THAT(text.output, HasSubstr("no card"));
    auto empty = hostCall({"parse", "-", "--json"});
    EXPECT_EQ(runProcess(empty).output, "null\n");
}

TEST(ParseCommand, ReadsStandardInput) {
    auto call = hostCall({"parse", "-"});
    call.input = readFile(hostData("front.xml"));
    const auto result = runProcess(call);
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("Ada Example"));
}

TEST(ParseCommand, WantsUTF8) {
    const TemporaryFolder folder;
    const auto file = folder.write("latin1.xml", "<recoIndex lang=\"\xE4\"/>");
    const auto result = runHost({"parse", file.string(), "--json"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.output, IsEmpty());
    EXPECT_THAT(result.error, HasSubstr(file.string()));
    EXPECT_THAT(result.error, HasSubstr("UTF-8"));
}

TEST(ParseCommand, SaysWhichFileCannotBeRead) {
    const TemporaryFolder folder;
    const auto missing = runHost({"parse", (folder / "missing.xml").string()});
    EXPECT_EQ(missing.status, 2);
    EXPECT_THAT(missing.error, HasSubstr("missing.xml"));
    const auto isFolder = runHost({"parse", folder.path().string()});
    EXPECT_EQ(isFolder.status, 2);
    EXPECT_EQ(isFolder.error, "qvcardscan: \"" + folder.path().string() + "\" is a folder. Name a file in it.\n");
}

TEST(ParseCommand, DoesNotWaitForAPipeInAFolder) {
    const TemporaryFolder folder;
    const std::string pipe = (folder / "pipe").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (const char* command : {"parse", "note"}) {
        auto call = hostCall({command, pipe});
        call.limit = std::chrono::seconds(20);
        const auto result = runProcess(call);
        EXPECT_FALSE(result.timedOut) << command;
        EXPECT_EQ(result.status, 2) << command;
        EXPECT_EQ(result.error, "qvcardscan: \"" + pipe +
                                    "\" is a pipe, not a file. Save what comes out of it in a file, or hand it in on "
                                    "standard input and give - for the file.\n");
    }
}

TEST(ParseCommand, PointsFromAPictureToScan) {
    const auto result = runHost({"parse", hostData("front.jpg")});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.error, HasSubstr("Did you mean \"qvcardscan scan " + hostData("front.jpg") + "\"?"));
}

TEST(ParseCommand, RefusesMoreThanItReads) {
    const auto result = runHost({"parse", "/dev/zero"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.error, HasSubstr("16 MiB"));
}

TEST(ParseCommand, CardTextCannotActOnTheTerminal) {
    const auto result = runHost({"parse", hostData("hostile.xml")});
    ASSERT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("\\x9b31m red \\x80"));
    EXPECT_THAT(result.output, HasSubstr("(logo\\t\\x85)"));
    EXPECT_THAT(result.output, HasSubstr("\\u202egnp.exe"));
    for (const char* control : {"\xC2\x9B", "\xC2\x80", "\xC2\x85", "\xE2\x80\xAE", "\x1b"})
        EXPECT_THAT(result.output, Not(HasSubstr(control)));
}

TEST(ParseCommand, WorksInTheCLocaleAndWithAnyFileName) {
    const TemporaryFolder folder;
    const auto file = folder.write("Visitenkarte \xC3\xA4 \xE6\x9D\xB1.xml", readFile(hostData("front.xml")));
    auto call = hostCall({"parse", file.string(), "--json"});
    call.environment["LC_ALL"] = "C";
    const auto result = runProcess(call);
    ASSERT_EQ(result.status, 0);
    EXPECT_EQ(ordered_json::parse(result.output)["fields"][4]["text"], "1 Main Street, 東京");
}

TEST(ParseCommand, AFullDiskIsStatusThree) {
    auto call = hostCall({"parse", hostData("front.xml"), "--json"});
    call.outputFile = "/dev/full";
    EXPECT_EQ(runProcess(call).status, 3);
}

TEST(ParseCommand, LogsOnlyWhenAsked) {
    EXPECT_THAT(runHost({"parse", hostData("front.xml")}).error, IsEmpty());
    const auto asked = runHost({"parse", hostData("front.xml"), "--verbose"});
    EXPECT_THAT(asked.error, HasSubstr("Parser started element: recoIndex"));
    auto byEnvironment = hostCall({"parse", hostData("front.xml")});
    byEnvironment.environment["QVCARDSCAN_LOG"] = "1";
    EXPECT_THAT(runProcess(byEnvironment).error, HasSubstr("Parser started element: recoIndex"));
    byEnvironment.environment["QVCARDSCAN_LOG"] = "0";
    EXPECT_THAT(runProcess(byEnvironment).error, IsEmpty());
}

}  // namespace
