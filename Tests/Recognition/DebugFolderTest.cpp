#include "DebugFolder.h"
#include "Support/ReadFile.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <thread>

namespace qv::recognition {
namespace {

using testing::ElementsAre;
using testsupport::TemporaryFolder;

std::set<std::string> namesIn(const std::filesystem::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.insert(entry.path().filename().string());
    return names;
}

void keepEverything(DebugFolder& folder) {
    const std::vector<std::uint8_t> jpeg = {0xFF, 0xD8, 0xFF};
    folder.keep("request", jpeg);
    folder.keep("sent", cv::Mat(2, 3, CV_8UC3, cv::Scalar(1, 2, 3)));
    folder.keep("even", cv::Mat(2, 3, CV_8UC1, cv::Scalar(9)));
    Word word;
    word.text = "Jane";
    word.box = {1, 2, 3, 4};
    word.confidence = 90;
    folder.keep("words", std::vector<Word>{word});
    folder.keep("fields", std::vector<Field>());
    Recognition recognition;
    recognition.xml = "<recoIndex/>";
    recognition.stages = {{"decode", std::chrono::microseconds(1500)}};
    recognition.isCutShort = true;
    folder.keep("answer", recognition);
}

TEST(DebugFolderTest, KeepsTheStagesOfACardInTheirOrder) {
    const TemporaryFolder temporary;
    DebugFolder folder(temporary / "kept");
    EXPECT_EQ(folder.nextCard(), "0001");
    keepEverything(folder);
    const auto card = temporary / "kept/0001";
    EXPECT_THAT(namesIn(card), ElementsAre("01-request.jpg", "02-sent.ppm", "03-even.pgm", "04-words.tsv",
                                           "05-fields.tsv", "06-answer.xml", "07-times.tsv"));
    EXPECT_EQ(testsupport::readFile(card / "01-request.jpg"), "\xFF\xD8\xFF");
    EXPECT_EQ(testsupport::readFile(card / "02-sent.ppm").substr(0, 14), "P6\n3 2\n255\n\3\2\1");
    EXPECT_EQ(testsupport::readFile(card / "03-even.pgm"), "P5\n3 2\n255\n\t\t\t\t\t\t");
    EXPECT_EQ(testsupport::readFile(card / "04-words.tsv"), "90\t1\t2\t3\t4\tJane\n");
    EXPECT_EQ(testsupport::readFile(card / "06-answer.xml"), "<recoIndex/>\n");
    EXPECT_EQ(testsupport::readFile(card / "07-times.tsv"), "decode\t1500 us\ncut short\n");
    EXPECT_EQ(folder.nextCard(), "0002");
}

TEST(DebugFolderTest, IsForTheServersUserAlone) {
    const TemporaryFolder temporary;
    DebugFolder folder(temporary / "kept");
    folder.nextCard();
    EXPECT_EQ(std::filesystem::status(temporary / "kept/0001").permissions(), std::filesystem::perms::owner_all);
}

TEST(DebugFolderTest, LeavesWhatIsThere) {
    const TemporaryFolder temporary;
    temporary.write("0001/mine", "mine");
    temporary.write("0002", "a file");
    EXPECT_EQ(DebugFolder(temporary.path()).nextCard(), "0003");
    EXPECT_EQ(testsupport::readFile(temporary / "0001/mine"), "mine");
}

TEST(DebugFolderTest, WorkersNeverShareANumber) {
    const TemporaryFolder temporary;
    std::vector<std::thread> workers;
    std::vector<std::set<std::string>> numbers(4);
    for (auto& mine : numbers) {
        workers.emplace_back([&] {
            DebugFolder folder(temporary.path());
            for (int i = 0; i < 25; ++i)
                mine.insert(folder.nextCard());
        });
    }
    for (auto& worker : workers)
        worker.join();
    EXPECT_EQ(namesIn(temporary.path()).size(), 100U);
}

TEST(DebugFolderTest, KeepsNothingWithoutAFolder) {
    const TemporaryFolder temporary;
    DebugFolder none;
    EXPECT_EQ(none.nextCard(), "");
    keepEverything(none);
    DebugFolder file(temporary.write("file", "") / "below");
    EXPECT_EQ(file.nextCard(), "");
    keepEverything(file);
    EXPECT_THAT(namesIn(temporary.path()), ElementsAre("file"));
}

}  // namespace
}  // namespace qv::recognition
