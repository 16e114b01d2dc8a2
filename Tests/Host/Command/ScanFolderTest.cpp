#include "Host/Command/ScanFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>

namespace {

namespace fs = std::filesystem;
using nlohmann::ordered_json;
using testing::HasSubstr;
using testing::Not;
using testsupport::hostData;
using testsupport::readFile;
using testsupport::runProcess;
using testsupport::ScriptedServer;

/// The folder that `scan` writes.
class ScanFolder : public testsupport::ScanFixture {};

TEST_F(ScanFolder, WritesEveryFile) {
    answerWith("front-poor.xml");
    answerWith("back-turned.xml");
    const fs::path out = mFolder / "deep/er/out";
    const auto result = scan({mFront, mBack, "-o", out.string(), "--json"});
    ASSERT_EQ(result.status, 0) << result.error;
    const ordered_json object = ordered_json::parse(result.output);
    EXPECT_EQ(ordered_json::parse(readFile(out / "card.json")), object["card"]);
    EXPECT_EQ(ordered_json::parse(readFile(out / "contact.json")), object["contact"]);
    EXPECT_EQ(readFile(out / "result-front.xml"), readFile(hostData("front-poor.xml")));
    EXPECT_EQ(readFile(out / "result-back.xml"), readFile(hostData("back-turned.xml")));
    EXPECT_THAT(readFile(out / "note.qvml"), HasSubstr("Bo Sample"));
    EXPECT_THAT(readFile(out / "note.html"), HasSubstr("<title>Bo Sample</title>"));
    for (const auto& entry : fs::recursive_directory_iterator(out))
        EXPECT_THAT(entry.path().filename().string(), Not(testing::StartsWith("."))) << "a temporary file was left";
}

TEST_F(ScanFolder, EachHashInTheNoteFindsItsBytes) {
    answerWith("front-poor.xml");
    answerWith("back-turned.xml");
    const fs::path out = mFolder / "out";
    ASSERT_EQ(scan({mFront, mBack, "-o", out.string()}).status, 0);
    const std::string note = readFile(out / "note.qvml");
    std::size_t count = 0;
    for (std::size_t at = note.find("hash=\""); at != std::string::npos; at = note.find("hash=\"", at + 1), ++count) {
        const std::string hash = note.substr(at + 6, 32);
        fs::path found;
        for (const auto& entry : fs::directory_iterator(out / "resources")) {
            if (entry.path().stem() == hash) found = entry.path();
        }
        ASSERT_FALSE(found.empty()) << hash;
        EXPECT_EQ(md5Of(readFile(found)), hash);
    }
    EXPECT_EQ(count, 3U) << "the placeholder avatar, the back and the front";
    EXPECT_EQ(readFile(out / "resources" / (md5Of(readFile(mFront)) + ".jpg")), readFile(mFront));
    EXPECT_EQ(readFile(out / "resources" / (md5Of(readFile(mBack)) + ".png")), readFile(mBack));
}

TEST_F(ScanFolder, TurnsTheRightPictureInThePage) {
    answerWith("front-poor.xml");
    answerWith("back-turned.xml");
    ASSERT_EQ(scan({mFront, mBack, "-o", (mFolder / "out").string()}).status, 0);
    const std::string page = readFile(mFolder / "out/note.html");
    const std::size_t turned = page.find("rotate(90deg)");
    ASSERT_NE(turned, std::string::npos);
    EXPECT_EQ(page.find("rotate(", turned + 1), std::string::npos) << "only one picture is turned";
    EXPECT_THAT(page.substr(turned, 60), HasSubstr("data:image/png;base64,"));
}

TEST_F(ScanFolder, ThePageIsSafeAndSelfContained) {
    answerWith("hostile.xml");
    ASSERT_EQ(scan({mFront, "-o", (mFolder / "out").string()}).status, 0);
    const std::string page = readFile(mFolder / "out/note.html");
    EXPECT_THAT(page, HasSubstr("http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; img-src data:; "
                                "style-src 'unsafe-inline'"));
    EXPECT_THAT(page, HasSubstr("&lt;script&gt;"));
    EXPECT_THAT(page, Not(HasSubstr("<script")));
    EXPECT_THAT(page, Not(HasSubstr("<qv-media ")));
    EXPECT_THAT(page, Not(HasSubstr("src=\"http")));
    EXPECT_THAT(page, HasSubstr("src=\"data:image/jpeg;base64,"));
    EXPECT_THAT(page, HasSubstr("src=\"data:image/png;base64,"));
}

TEST_F(ScanFolder, ReplacesWhatAnEarlierScanLeft) {
    answerWith("front-poor.xml");
    answerWith("back-turned.xml");
    answerWith("front.xml");
    const std::string out = (mFolder / "out").string();
    ASSERT_EQ(scan({mFront, mBack, "-o", out}).status, 0);
    ASSERT_EQ(scan({mFront, "-o", out}).status, 0);
    EXPECT_THAT(readFile(mFolder / "out/note.qvml"), HasSubstr("Ada Example"));
    EXPECT_FALSE(fs::exists(mFolder / "out/result-back.xml")) << "it belongs to another card";
}

TEST_F(ScanFolder, TakesAwayPicturesOfTheCardBeforeAndNothingElse) {
    answerWith("front-poor.xml");
    answerWith("back-turned.xml");
    answerWith("front.xml");
    const fs::path out = mFolder / "out";
    ASSERT_EQ(scan({mFront, mBack, "-o", out.string()}).status, 0);
    const fs::path before = out / "resources" / (md5Of(readFile(mBack)) + ".png");
    ASSERT_TRUE(fs::exists(before));
    const std::string hash(32, 'a');
    for (const std::string name : {"holiday.jpg", "0123.jpg"})
        mFolder.write(fs::path("out/resources") / name, "mine");
    for (const std::string& name : {hash, hash + ".txt", "A" + hash.substr(1) + ".jpg", hash + "a.jpg"})
        mFolder.write(fs::path("out/resources") / name, "mine");
    ASSERT_EQ(scan({mFront, "-o", out.string()}).status, 0);
    EXPECT_FALSE(fs::exists(before)) << "no note refers to it";
    EXPECT_TRUE(fs::exists(out / "resources" / (md5Of(readFile(mFront)) + ".jpg")));
    std::size_t mine = 0;
    for (const auto& entry : fs::directory_iterator(out / "resources"))
        mine += readFile(entry.path()) == "mine" ? 1U : 0U;
    EXPECT_EQ(mine, 6U);
}

TEST_F(ScanFolder, AFailedScanLeavesTheFolderAsItWas) {
    answerWith("front.xml");
    answerWith("no-card.xml");
    mServer.respond(ScriptedServer::answer(503, ""));
    const fs::path out = mFolder / "out";
    ASSERT_EQ(scan({mFront, "-o", out.string()}).status, 0);
    const std::string note = readFile(out / "note.qvml");
    for (int i = 0; i < 2; ++i) {
        const auto result = scan({mBack, "-o", out.string()});
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.output, Not(HasSubstr("Note:")));
        EXPECT_THAT(result.error, HasSubstr("Nothing was written to \"" + out.string()));
        EXPECT_EQ(readFile(out / "note.qvml"), note);
        EXPECT_THAT(readFile(out / "contact.json"), HasSubstr("Ada Example"));
    }
}

TEST_F(ScanFolder, TheSameFileTwiceIsFine) {
    answerWith("front-poor.xml");
    const fs::path out = mFolder / "out";
    EXPECT_EQ(scan({mFront, mFront, "-o", out.string()}).status, 0);
    EXPECT_TRUE(fs::exists(out / "resources" / (md5Of(readFile(mFront)) + ".jpg")));
}

TEST_F(ScanFolder, ReadsPNGWebPAndTIFF) {
    answerWith("front.xml");
    for (const char* name : {"back.png", "card.webp", "card.tiff"}) {
        const fs::path out = mFolder / name;
        EXPECT_EQ(scan({hostData(name), "-o", out.string()}).status, 0) << name;
        const std::string hash = md5Of(readFile(hostData(name)));
        EXPECT_TRUE(fs::exists(out / "resources" / (hash + fs::path(name).extension().string()))) << name;
        EXPECT_THAT(readFile(out / "note.html"), Not(HasSubstr("data:image/tiff"))) << "no browser shows it";
    }
}

TEST_F(ScanFolder, FoundOutBeforeSendingThatTheFolderCannotBe) {
    const auto file = mFolder.write("file", "x");
    const auto result = scan({mFront, "-o", (file / "out").string()});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.error, HasSubstr((file / "out").string()));
    EXPECT_EQ(mServer.connectionCount(), 0U);
    EXPECT_EQ(scan({mFront, "-o", file.string()}).status, 3);
}

TEST_F(ScanFolder, AFileThatCannotBeReplacedIsStatusThree) {
    answerWith("front.xml");
    fs::create_directories(mFolder / "out/note.qvml/in-the-way");
    const auto result = scan({mFront, "-o", (mFolder / "out").string()});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.error, HasSubstr((mFolder / "out/note.qvml").string()));
    EXPECT_THAT(result.output, HasSubstr("Ada Example")) << "what was read is shown all the same";
}

TEST_F(ScanFolder, WorksWithNonASCIINamesInTheCLocale) {
    answerWith("front.xml");
    const auto picture = mFolder.write("Vorderseite \xC3\xBC \xE8\xA1\xA8.jpg", readFile(mFront));
    auto scanCall = call({picture.string(), "-o", (mFolder / "Ergebnis \xC3\xB6").string()});
    scanCall.environment["LC_ALL"] = "C";
    EXPECT_EQ(runProcess(scanCall).status, 0);
    EXPECT_TRUE(fs::exists(mFolder / "Ergebnis \xC3\xB6/note.html"));
}

}  // namespace
