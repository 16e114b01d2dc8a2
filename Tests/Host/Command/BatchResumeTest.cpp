#include "Host/Batch/BatchFixture.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <chrono>

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// How a batch goes on.
class BatchResume : public testsupport::BatchFixture {
  protected:
    BatchResume() { recogniseEverybody(); }
    std::size_t sent() const { return mServer.requests().size(); }
    static void touch(const fs::path& file) {
        fs::last_write_time(file, fs::last_write_time(file) + std::chrono::seconds(5));
    }
};

TEST_F(BatchResume, AnEarlierBatchIsNotOverwritten) {
    addPictures(2);
    ASSERT_EQ(batch().status, 0);
    const auto result = batch();
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.error,
                AllOf(HasSubstr("holds an earlier batch (cards: 2)"), HasSubstr("--resume"), HasSubstr("-o")));
    EXPECT_EQ(sent(), 2U);
}

TEST_F(BatchResume, FinishedCardsAreNotReadAgain) {
    addPictures(2);
    ASSERT_EQ(batch().status, 0);
    addPicture("card3.jpg", 3);
    const auto result = batch({"--resume"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("1 card read, 2 finished before.\n"));
    EXPECT_EQ(sent(), 3U);
    EXPECT_THAT(list("contacts.csv"), AllOf(HasSubstr("cards/card1\r\n"), HasSubstr("cards/card3\r\n")));
}

TEST_F(BatchResume, StartsWhereThereIsNothingYet) {
    addPictures(1);
    EXPECT_THAT(batch({"--resume"}).output, HasSubstr("1 card read.\n"));
}

TEST_F(BatchResume, WhatFailedIsTriedAgain) {
    addPictures(1);
    mFolder.write("in/card2.jpg", "no picture yet");
    ASSERT_EQ(batch().status, 1);
    addPicture("card2.jpg", 2);
    EXPECT_THAT(batch({"--resume"}).output, HasSubstr("1 card read, 1 finished before.\n"));
}

TEST_F(BatchResume, ChangedPicturesAreReadAgainUnderTheirName) {
    addPictures(2);
    ASSERT_EQ(batch().status, 0);
    const std::string before = record("card1")["contact"]["fullName"];
    addPicture("card1.jpg", 9);
    touch(mFolder / "in/card1.jpg");
    EXPECT_THAT(batch({"--resume"}).output, HasSubstr("1 card read, 1 finished before.\n"));
    EXPECT_THAT(cards(), ElementsAre("card1", "card2"));
    EXPECT_NE(record("card1")["contact"]["fullName"], before);
}

TEST_F(BatchResume, ANewDateAloneIsNoChange) {
    addPictures(1);
    ASSERT_EQ(batch().status, 0);
    touch(mFolder / "in/card1.jpg");
    EXPECT_THAT(batch({"--resume"}).output, HasSubstr("0 cards read, 1 finished before.\n"));
}

TEST_F(BatchResume, PicturesThatWereMovedAreKnownByTheirBytes) {
    addPictures(2);
    ASSERT_EQ(batch().status, 0);
    fs::rename(mFolder / "in", mFolder / "moved");
    auto moved = call({"--resume"});
    moved.arguments[1] = (mFolder / "moved").string();
    EXPECT_THAT(testsupport::runProcess(moved).output, HasSubstr("0 cards read, 2 finished before.\n"));
}

TEST_F(BatchResume, ABackThatCameLaterIsReadWithItsFront) {
    addPicture("x-front.jpg", 1);
    ASSERT_EQ(batch().status, 0);
    addPicture("x-back.jpg", 2);
    EXPECT_THAT(batch({"--resume"}).output, HasSubstr("1 card read.\n"));
    EXPECT_EQ(record("x-front")["pictures"].size(), 2U);
    EXPECT_THAT(cards(), ElementsAre("x-front"));
}

TEST_F(BatchResume, OtherPicturesOfTheSameNameTakeAnotherFolder) {
    addPictures(1);
    ASSERT_EQ(batch().status, 0);
    addPicture("more/card1.jpg", 2);
    auto other = call({"--resume"});
    other.arguments[1] = in() + "/more";
    ASSERT_EQ(testsupport::runProcess(other).status, 0);
    EXPECT_THAT(cards(), ElementsAre("card1", "card1-2"));
    EXPECT_THAT(batch({"--resume"}).output, HasSubstr("0 cards read, 2 finished before.\n"));
}

TEST_F(BatchResume, LanguageAndPairsAreThoseOfTheBatch) {
    addPictures(3);
    ASSERT_EQ(batch({"--language", "de", "--pairs"}).status, 0);
    fs::remove_all(mFolder / "out/cards/card3");
    EXPECT_THAT(batch({"--resume"}).output, HasSubstr("1 card read, 1 finished before.\n"));
    EXPECT_EQ(mServer.requests().back().header("content-language"), "de");
    EXPECT_THAT(batch({"--resume", "--language", "fr"}).output, HasSubstr("2 cards read.\n"));
}

TEST_F(BatchResume, RemarksAreSaidOnceAndCountTheCardsOfThisRun) {
    recogniseEverybody();
    addPictures(2);
    addPicture("x-back.jpg", 3);
    const std::string language = ": The card was read as \"en\", because the server does not have \"de\". Install";
    const std::string output = batch({"--language", "de"}).output;
    EXPECT_THAT(output, HasSubstr("3 cards read.\nRemarks:\n  1 card: As to the pictures, there is no front for this "
                                  "back.\n  3 cards" +
                                  language));
    EXPECT_THAT(batch({"--resume"}).output, testing::Not(HasSubstr("Remarks")));
}

TEST_F(BatchResume, WhatIsWishedForInAdditionIsDone) {
    addPictures(2);
    ASSERT_EQ(batch().status, 0);
    EXPECT_THAT(batch({"--resume", "--save", "--address-book", book()}).output, HasSubstr("2 cards read.\n"));
    EXPECT_EQ(namesIn(mFolder / "book").size(), 2U);
    EXPECT_THAT(batch({"--resume", "--save", "--address-book", book()}).output, HasSubstr("2 finished before.\n"));
    EXPECT_THAT(batch({"--resume"}).output, HasSubstr("2 finished before.\n"));
}

TEST_F(BatchResume, NobodyIsSavedTwiceWithOrWithoutAnAddress) {
    addPictures(2);
    const std::vector<std::string> saving{"--resume", "--save", "--address-book", book()};
    ASSERT_EQ(batch(saving).status, 0);
    const auto saved = namesIn(mFolder / "book");
    ASSERT_EQ(saved.size(), 2U);
    // As when the power went between saving and writing.
    fs::remove_all(mFolder / "out/cards/card1");
    EXPECT_THAT(batch(saving).output, HasSubstr("1 card read, 1 finished before.\n"));
    EXPECT_EQ(namesIn(mFolder / "book"), saved);
}

TEST_F(BatchResume, TracesOfAnEndInTheMiddleGo) {
    addPictures(2);
    ASSERT_EQ(batch().status, 0);
    const std::string first = testsupport::readFile(mFolder / "out/cards/card1/batch.json");
    fs::rename(mFolder / "out/cards/card1", mFolder / "out/cards/.qvcardscan-old-card1");
    fs::copy(mFolder / "out/cards/card2", mFolder / "out/cards/.qvcardscan-old-card2");
    mFolder.write("out/cards/.qvcardscan-new/note.qvml", "half");
    mFolder.write("out/.qvcardscan-contacts.csv.a1b2c3", "half");
    mFolder.write("out/contacts.csv", "old");
    EXPECT_THAT(batch({"--resume"}).output, HasSubstr("0 cards read, 2 finished before.\n"));
    EXPECT_THAT(namesIn(mFolder / "out/cards"), ElementsAre("card1", "card2"));
    EXPECT_EQ(testsupport::readFile(mFolder / "out/cards/card1/batch.json"), first);
    EXPECT_THAT(namesIn(mFolder / "out"), Not(testing::Contains(HasSubstr(".a1b2c3"))));
    EXPECT_THAT(list("contacts.csv"), HasSubstr("cards/card1\r\n"));
}

TEST_F(BatchResume, CardsThatSomebodyBrokeAreReadAgain) {
    addPictures(3);
    ASSERT_EQ(batch().status, 0);
    mFolder.write("out/cards/card1/batch.json", "{\"pictures\": 3");
    mFolder.write("out/cards/card2/batch.json", "{\"pictures\": [{\"file\": 1}]}");
    fs::create_directory(mFolder / "out/cards/empty");
    const auto result = batch({"--resume"});
    EXPECT_EQ(result.status, 0) << result.error;
    EXPECT_THAT(result.output, HasSubstr("2 cards read, 1 finished before.\n"));
}

TEST_F(BatchResume, OneBatchWritesAtATime) {
    addPictures(1);
    fs::create_directories(mFolder / "out");
    const std::string lock = (mFolder / "out/.qvcardscan-lock").string();
    const int file = ::open(lock.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    ASSERT_EQ(::flock(file, LOCK_EX), 0);
    const auto result = batch({"--resume"});
    ::close(file);
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.error, HasSubstr("Another batch is writing"));
    EXPECT_EQ(batch({"--resume"}).status, 0);
}

TEST_F(BatchResume, AFolderThatCannotBeWrittenEndsTheBatchOnce) {
    addPictures(8);
    ASSERT_EQ(batch().status, 0);
    fs::remove_all(mFolder / "out/cards");
    // Nothing can be made in a file.
    mFolder.write("out/cards", "");
    const auto result = batch({"--resume"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.error, HasSubstr("could not be written"));
    fs::remove(mFolder / "out/cards");
    EXPECT_THAT(batch({"--resume"}).output, HasSubstr("8 cards read.\n"));
}

}  // namespace
