#include "Host/Batch/BatchFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace {

namespace fs = std::filesystem;
using nlohmann::ordered_json;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testsupport::recognitionOf;
using testsupport::ScriptedServer;

std::size_t linesIn(const std::string& text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

/// What `batch` reads, writes and says.
class BatchCommand : public testsupport::BatchFixture {};

TEST_F(BatchCommand, WritesForEachCardWhatScanWrites) {
    addPicture("ada.jpg", 1);
    recognise({{"name", "Ada Example"}, {"title", "Engineer"}, {"email", "ada@example.com"}});
    const auto result = batch();
    EXPECT_EQ(result.status, 0) << result.error;
    EXPECT_THAT(result.output, testing::StartsWith("1 card read.\n"));
    EXPECT_THAT(cards(), ElementsAre("ada"));
    EXPECT_THAT(namesIn(mFolder / "out/cards/ada"),
                ElementsAre("batch.json", "card.json", "contact.json", "contact.vcf", "note.html", "note.qvml",
                            "resources", "result-front.xml", "thumbnail-front.jpg"));
    EXPECT_THAT(namesIn(mFolder / "out"), ElementsAre(".qvcardscan-lock", "cards", "contacts.csv", "contacts.vcf",
                                                      "index.html", "qvcardscan-batch.json"));
    EXPECT_TRUE(record("ada")["complete"].get<bool>());
    EXPECT_EQ(record("ada")["contact"]["fullName"], "Ada Example");
}

TEST_F(BatchCommand, ListsAllCards) {
    addPictures(3);
    recogniseEverybody();
    ASSERT_EQ(batch().status, 0);
    EXPECT_EQ(linesIn(list("contacts.csv")), 4U);
    EXPECT_THAT(list("contacts.csv"), AllOf(HasSubstr(",+1 202 555 0142,"), HasSubstr(",cards/card2\r\n")));
    const std::string contacts = list("contacts.vcf");
    std::size_t count = 0;
    for (std::size_t at = contacts.find("BEGIN:VCARD\r\n"); at != std::string::npos;
         at = contacts.find("BEGIN:VCARD\r\n", at + 1))
        ++count;
    EXPECT_EQ(count, 3U);
    EXPECT_THAT(list("index.html"), AllOf(HasSubstr("3 cards"), HasSubstr("cards/card3/thumbnail-front.jpg")));
}

TEST_F(BatchCommand, ReadsBothSides) {
    addPicture("x-front.jpg", 1);
    addPicture("x-back.jpg", 2);
    addPicture("y-back.jpg", 3);
    recognise({{"name", "Ada Example"}});
    const auto result = batch();
    EXPECT_EQ(result.status, 0) << result.error;
    EXPECT_THAT(cards(), ElementsAre("x-front", "y-back"));
    EXPECT_EQ(record("x-front")["pictures"].size(), 2U);
    EXPECT_TRUE(fs::exists(mFolder / "out/cards/x-front/result-back.xml"));
    EXPECT_THAT(record("y-back")["remarks"].dump(), HasSubstr("there is no front for this back"));
    EXPECT_THAT(list("index.html"), HasSubstr("there is no front for this back"));
}

TEST_F(BatchCommand, PairsAreTakenInNaturalOrder) {
    addPictures(10);
    recognise({{"name", "Ada Example"}});
    ASSERT_EQ(batch({"--pairs"}).status, 0);
    EXPECT_THAT(cards(), ElementsAre("card1", "card3", "card5", "card7", "card9"));
    EXPECT_THAT(record("card9")["pictures"][1]["file"].get<std::string>(), HasSubstr("card10.jpg"));
}

TEST_F(BatchCommand, ABadPictureIsALineNotTheEnd) {
    addPictures(2);
    mFolder.write("in/bad.jpg", "no picture");
    mFolder.write("in/notes.txt", "text");
    recogniseEverybody();
    const auto result = batch({(mFolder / "nowhere.jpg").string()});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(cards(), ElementsAre("card1", "card2"));
    EXPECT_THAT(result.output, AllOf(HasSubstr("2 cards read, 2 failed.\n"), HasSubstr("/in/bad.jpg: is not an image"),
                                     HasSubstr("/nowhere.jpg: cannot be read: No such file"),
                                     HasSubstr("1 file that is no picture was passed over.\n"), HasSubstr("--resume")));
    EXPECT_THAT(result.error, HasSubstr("bad: failed: is not an image"));
    EXPECT_THAT(list("index.html"), HasSubstr("2 cards could not be read"));
}

TEST_F(BatchCommand, ABadBackCostsItsFieldsNotTheCard) {
    addPicture("x-front.jpg", 1);
    mFolder.write("in/x-back.jpg", "no picture yet");
    recognise({{"name", "Ada Example"}, {"email", "ada@example.com"}});
    const auto result = batch({"--save", "--address-book", book()});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.output, AllOf(HasSubstr("0 cards read, 1 failed.\n"),
                                     HasSubstr("/in/x-front.jpg: Read without its back: "), HasSubstr("x-back.jpg\"")));
    ASSERT_THAT(cards(), ElementsAre("x-front"));
    EXPECT_THAT(list("contacts.csv"), HasSubstr("cards/x-front\r\n"));
    EXPECT_EQ(record("x-front")["pictures"].size(), 1U);
    EXPECT_EQ(namesIn(book()).size(), 1U);

    addPicture("x-back.jpg", 2);
    EXPECT_THAT(batch({"--resume", "--save", "--address-book", book()}).output, HasSubstr("1 card read.\n"));
    ASSERT_THAT(cards(), ElementsAre("x-front"));
    EXPECT_EQ(record("x-front")["pictures"].size(), 2U);
    EXPECT_EQ(namesIn(book()).size(), 1U) << "the person is there twice";
}

TEST_F(BatchCommand, ACardWithoutTextFailsAndIsNotWritten) {
    addPicture("a.jpg", 1);
    recognise({});
    const auto result = batch();
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(cards(), IsEmpty());
    EXPECT_THAT(result.output, AllOf(HasSubstr("0 cards read, 1 failed."), HasSubstr("Nothing could be read")));
}

TEST_F(BatchCommand, SaysALineForEachCardWhereThereIsNoTerminal) {
    addPictures(2);
    recognise({{"name", "Ada\u202e Example"}, {"company", "Example Ltd"}});
    const auto result = batch();
    EXPECT_EQ(linesIn(result.error), 2U);
    EXPECT_THAT(result.error, AllOf(HasSubstr("1/2 card"), HasSubstr("2/2 card"), HasSubstr(": read\n")));
    EXPECT_THAT(result.error, AllOf(Not(HasSubstr("Ada")), Not(HasSubstr("Example"))));
}

TEST_F(BatchCommand, SaysWhatStandsOnEachCardWhenTheLogIsAskedFor) {
    addPictures(1);
    recognise({{"name", "Ada\u202e Example"}, {"company", "Example Ltd"}});
    const auto result = batch({"--verbose"});
    EXPECT_THAT(result.error, AllOf(HasSubstr("1/1 card"), HasSubstr(": Ada"), Not(HasSubstr("\u202e"))));
}

TEST_F(BatchCommand, ShowsABarOnATerminalAndTakesItAway) {
    addPictures(3);
    recogniseEverybody();
    auto onTerminal = call();
    onTerminal.errorIsTerminal = true;
    const auto result = testsupport::runProcess(onTerminal);
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error,
                AllOf(HasSubstr("[...."), HasSubstr("0/3"), Not(HasSubstr("Person")), testing::EndsWith("\r\x1b[K")));
    EXPECT_THAT(result.output, HasSubstr("3 cards read.\n"));
}

TEST_F(BatchCommand, JSONIsAnObjectOnALineForEachCard) {
    addPictures(2);
    mFolder.write("in/bad.jpg", "no picture");
    recogniseEverybody();
    const auto result = batch({"--json"});
    EXPECT_EQ(result.status, 1);
    std::istringstream lines(result.output);
    std::vector<std::string> names;
    for (std::string line; std::getline(lines, line);) {
        const ordered_json object = ordered_json::parse(line);
        names.push_back(object["name"]);
        EXPECT_EQ(object["complete"].get<bool>(), object["name"] != "bad");
        EXPECT_EQ(object.contains("contact"), object["name"] != "bad");
    }
    EXPECT_THAT(names, testing::UnorderedElementsAre("bad", "card1", "card2"));
    EXPECT_THAT(result.error, HasSubstr("2 cards read, 1 failed.\n"));
}

TEST_F(BatchCommand, NamesOfFoldersAreToldApart) {
    addPicture("a/card.jpg", 1);
    addPicture("b/Card.jpg", 2);
    addPicture("b/card.jpeg", 3);
    recogniseEverybody();
    ASSERT_EQ(batch().status, 0);
    EXPECT_EQ(cards().size(), 3U);
    EXPECT_THAT(cards(), testing::Contains("card"));
    std::vector<std::string> lower;
    for (std::string name : cards()) {
        std::transform(name.begin(), name.end(), name.begin(), [](char c) { return c == 'C' ? 'c' : c; });
        lower.push_back(name);
    }
    EXPECT_THAT(lower, testing::UnorderedElementsAre("card", "card-2", "card-3")) << "also where case does not count";
}

TEST_F(BatchCommand, NamesOfFilesMayBeAnything) {
    const std::vector<std::string> names = {"a b",     "-rf",    "new\nline", "\xFF\xFE", std::string(240, 'x'),
                                            "<b>&\"'", "a:b*?|", "..x",       "e "};
    int number = 0;
    for (const std::string& name : names)
        addPicture(name + ".jpg", ++number);
    recogniseEverybody();
    const auto result = batch();
    EXPECT_EQ(result.status, 0) << result.error << result.output;
    EXPECT_EQ(cards().size(), names.size() - 1) << "the hidden one is passed over";
    EXPECT_THAT(result.error, Not(HasSubstr("\xFF")));
    for (const std::string& card : cards()) {
        EXPECT_LE(card.size(), 110U);
        EXPECT_THAT(card, testing::MatchesRegex("[^-./:*?|<>\"\n][^/:*?|<>\"\n]*"));
    }
    EXPECT_THAT(list("index.html"), AllOf(Not(HasSubstr("<b>&")), HasSubstr("cards/a%20b/")));
    EXPECT_EQ(linesIn(list("contacts.csv")), names.size());
    EXPECT_THAT(batch({"--resume"}).output, HasSubstr("0 cards read, 8 finished before.\n"));
}

TEST_F(BatchCommand, CardTextIsNeverMarkup) {
    addPicture("a.jpg", 1);
    recognise({{"name", "&lt;script&gt;alert(1)&lt;/script&gt;"}, {"company", "&lt;img src=x onerror=alert(1)&gt;"}});
    ASSERT_EQ(batch().status, 0);
    EXPECT_THAT(list("index.html"),
                AllOf(Not(HasSubstr("<script>alert")), Not(HasSubstr("<img src=x")), HasSubstr("&lt;script&gt;")));
}

TEST_F(BatchCommand, DoesNotReadItsOwnOutput) {
    addPictures(2);
    recogniseEverybody();
    const std::string inside = in() + "/out";
    auto own = call();
    own.arguments[3] = inside;
    ASSERT_EQ(testsupport::runProcess(own).status, 0);
    own.arguments.emplace_back("--resume");
    EXPECT_THAT(testsupport::runProcess(own).output, HasSubstr("0 cards read, 2 finished before.\n"));
    EXPECT_THAT(batch().output, HasSubstr("2 cards read.\n")) << "another batch passes it over";
}

TEST_F(BatchCommand, WrongCallsAreFoundOutBeforeAnythingIsSent) {
    addPictures(1);
    mFolder.write("full/file", "x");
    mFolder.write("empty/notes.txt", "x");
    const struct {
        std::vector<std::string> arguments;
        int status;
        const char* why;
    } rows[] = {
        {{in()}, 2, "--output"},
        {{"-o", out()}, 2, "DIR|FILE"},
        {{in(), "-o", ""}, 2, "--output"},
        {{in(), "-o", out(), "--jobs", "0"}, 2, "from 1 to 64"},
        {{in(), "-o", out(), "--jobs", "two"}, 2, "from 1 to 64"},
        {{in(), "-o", out(), "--jobs", "2", "--server", mServer.url()}, 2, "--jobs"},
        {{in(), "-o", (mFolder / "full").string(), "--server", mServer.url()}, 2, "holds is no batch"},
        {{in(), "-o", in(), "--server", mServer.url()}, 2, "holds is no batch"},
        {{in(), "-o", (mFolder / "full").string(), "--resume", "--server", mServer.url()}, 2, "holds is no batch"},
        {{(mFolder / "empty").string(), "-o", out(), "--server", mServer.url()}, 2, "no picture to read"},
        {{(mFolder / "nowhere").string(), "-o", out(), "--server", mServer.url()}, 2, "No such file"},
        {{in(), "-o", (mFolder / "full/file").string(), "--server", mServer.url()}, 3, "could not be written"},
        {{in(), "-o", out(), "--address-book", book(), "--server", mServer.url()}, 2, "--search or --save"},
        {{in(), "-o", out(), "--skip-note", "--server", mServer.url()}, 2, "--skip-note"},
    };
    for (const auto& row : rows) {
        auto wrong = call();
        wrong.arguments = row.arguments;
        wrong.arguments.insert(wrong.arguments.begin(), "batch");
        const auto result = testsupport::runProcess(wrong);
        EXPECT_EQ(result.status, row.status) << testing::PrintToString(row.arguments) << result.error;
        EXPECT_THAT(result.error, HasSubstr(row.why)) << testing::PrintToString(row.arguments);
    }
    EXPECT_EQ(mServer.connectionCount(), 0U);
    EXPECT_EQ(namesIn(mFolder / "full").size(), 1U);
    recogniseEverybody();
    EXPECT_EQ(batch().status, 0) << "what came to nothing is in nobody's way";
}

TEST_F(BatchCommand, AServerThatIsGoneEndsTheBatch) {
    addPictures(20);
    auto gone = call();
    gone.arguments[5] = "http://127.0.0.1:1/";
    const auto result = testsupport::runProcess(gone);
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, HasSubstr("Nobody answers any more"));
    EXPECT_THAT(result.output, AllOf(HasSubstr("5 failed"), HasSubstr("15 left"), HasSubstr("--resume")));
    recogniseEverybody();
    EXPECT_THAT(batch({"--resume"}).output, HasSubstr("20 cards read.\n"));
}

TEST_F(BatchCommand, MergesEachCardWithItsOwnContact) {
    for (int i = 1; i <= 6; ++i) {
        addPicture("card" + std::to_string(i) + ".jpg", i);
        const std::string name = "Person " + std::to_string(i);
        mFolder.write("book/" + std::to_string(i) + ".vcf",
                      "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:" + std::to_string(i) + "\r\nFN:" + name +
                          "\r\nN:" + std::to_string(i) + ";Person;;;\r\nEMAIL:p" + std::to_string(i) +
                          "@example.com\r\nTITLE:Title " + std::to_string(i) + "\r\nEND:VCARD\r\n");
    }
    for (int i = 1; i <= 6; ++i)
        recognise({{"name", "Person " + std::to_string(i)}, {"email", "p" + std::to_string(i) + "@example.com"}});
    ASSERT_EQ(batch({"--contacts", book()}).status, 0);
    ASSERT_EQ(cards().size(), 6U);
    for (const std::string& card : cards()) {
        const ordered_json one = record(card);
        const std::string number = one["contact"]["fullName"].get<std::string>().substr(7);
        EXPECT_EQ(one["contact"]["jobTitle"], "Title " + number);
        EXPECT_EQ(one["merged"]["uid"], number);
    }
}

TEST_F(BatchCommand, FailuresToSaveAreToldAndTriedAgain) {
    addPictures(1);
    recognise({{"name", "Ada Example"}, {"email", "ada@example.com"}});
    for (const char* UID : {"one", "two"})
        mFolder.write(std::string("book/") + UID + ".vcf",
                      std::string("BEGIN:VCARD\r\nVERSION:3.0\r\nUID:") + UID +
                          "\r\nFN:Ada Example\r\nN:Example;Ada;;;\r\nEMAIL:ada@example.com\r\nEND:VCARD\r\n");
    const auto result = batch({"--save", "--address-book", book()});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.output, AllOf(HasSubstr("1 failed"), HasSubstr("was not saved")));
    EXPECT_THAT(cards(), ElementsAre("card1")) << "what was read is kept";
    fs::remove(mFolder / "book/two.vcf");
    EXPECT_EQ(batch({"--save", "--address-book", book(), "--resume"}).status, 0);
    EXPECT_EQ(record("card1")["savedIn"], "the folder \"" + book() + "\"");
}

}  // namespace
