#include "Host/Batch/BatchFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <map>
#include <random>

namespace {

namespace fs = std::filesystem;
using nlohmann::ordered_json;
using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testsupport::ProcessCall;
using testsupport::ProcessResult;
using testsupport::readFile;
using testsupport::runProcess;

/// How a batch ends before its time.
class BatchEnd : public testsupport::BatchFixture {
  protected:
    /// With a server of its own, which a stand-in plays.
    ProcessCall ownServer(std::vector<std::string> more = {}) const {
        std::vector<std::string> arguments{"batch", in(), "-o", out(), "--recognizer", testsupport::fakeRecognizer()};
        arguments.insert(arguments.end(), more.begin(), more.end());
        ProcessCall call = testsupport::hostCall(std::move(arguments));
        call.environment["FAKE_RECOD"] = mFolder.path().string();
        return call;
    }
    void prepareOwnServer(const std::string& mode) const {
        mFolder.write("answer.xml", testsupport::recognitionOf({{"name", "Ada Example"}}));
        mFolder.write("mode", mode);
    }
    std::size_t starts() const {
        const std::string text = readFile(mFolder / "starts");
        std::size_t count = 0;
        for (std::size_t at = text.find("--embedded"); at != std::string::npos; at = text.find("--embedded", at + 1))
            ++count;
        return count;
    }
    void addLargePicture(const std::string& name) const {
        testsupport::Pixels pixels(300, 200);
        std::mt19937 random(5);
        for (std::uint8_t& value : pixels.rgba)
            value = static_cast<std::uint8_t>(random());
        const qv::Data bytes = testsupport::makeJPEG(pixels);
        mFolder.write("in/" + name, std::string(bytes.begin(), bytes.end()));
    }
};

TEST_F(BatchEnd, JobsAreTheServersWorkers) {
    addPictures(1);
    prepareOwnServer("");
    ASSERT_EQ(runProcess(ownServer({"--jobs", "2"})).status, 0);
    EXPECT_THAT(readFile(mFolder / "starts"), testing::StartsWith("--embedded --workers 2 --quiet\n"));
}

TEST_F(BatchEnd, AnInterruptedBatchKeepsWhatIsFinishedAndSaysHowToGoOn) {
    addPictures(12);
    prepareOwnServer("interrupts 6");
    const auto result = runProcess(ownServer());
    // The two share standard error: that it was read to its end shows that both have ended.
    EXPECT_FALSE(result.timedOut);
    EXPECT_EQ(result.status, 130) << result.error;
    EXPECT_THAT(result.output, AllOf(HasSubstr(" left.\n"), HasSubstr("run the same command with --resume")));
    const auto finished = cards();
    EXPECT_GE(finished.size(), 1U);
    EXPECT_LT(finished.size(), 12U);
    EXPECT_THAT(finished, Not(Contains(HasSubstr(".qvcardscan"))));
    const std::string table = list("contacts.csv");
    EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), static_cast<std::ptrdiff_t>(finished.size() + 1));
    mFolder.write("mode", "");
    const auto rest = runProcess(ownServer({"--resume"}));
    EXPECT_EQ(rest.status, 0) << rest.error;
    EXPECT_THAT(rest.output, HasSubstr(std::to_string(12 - finished.size()) + " card"));
    EXPECT_EQ(cards().size(), 12U);
}

TEST_F(BatchEnd, OtherSignalsEndItInGoodOrderToo) {
    addPictures(3);
    const auto gate = std::make_shared<testsupport::Gate>();
    mServer.respondAfter(gate, answer(testsupport::recognitionOf({{"name", "Ada Example"}})));
    auto slow = call();
    slow.limit = std::chrono::milliseconds(700);
    slow.signalAtLimit = SIGTERM;
    const auto result = runProcess(slow);
    EXPECT_TRUE(result.timedOut);
    EXPECT_EQ(result.status, 143);
}

TEST_F(BatchEnd, AServerThatDiesIsStartedAgainAndNoCardIsLost) {
    addPictures(12);
    prepareOwnServer("dies 5");
    const auto result = runProcess(ownServer());
    EXPECT_EQ(result.status, 0) << result.error << result.output;
    EXPECT_EQ(cards().size(), 12U);
    EXPECT_EQ(starts(), 2U);
}

TEST_F(BatchEnd, ACardThatTheServerDiesOfFailsAloneAndTheOthersAreRead) {
    addPictures(8);
    addLargePicture("card4-deadly.jpg");
    prepareOwnServer("chokes");
    const auto result = runProcess(ownServer());
    EXPECT_EQ(result.status, 1) << result.error;
    EXPECT_THAT(result.output,
                AllOf(HasSubstr("8 cards read, 1 failed."),
                      HasSubstr("card4-deadly.jpg: The recognition server ended while it read this card")));
    EXPECT_EQ(cards().size(), 8U);
    EXPECT_LE(starts(), 4U);
}

TEST_F(BatchEnd, AServerThatDiesOfEverythingEndsTheBatch) {
    for (int i = 0; i < 12; ++i)
        addLargePicture("card" + std::to_string(i) + ".jpg");
    // Each of other bytes, or they would be one.
    for (int i = 0; i < 12; ++i) {
        const std::string name = "in/card" + std::to_string(i) + ".jpg";
        mFolder.write(name, readFile(mFolder / name) + std::to_string(i));
    }
    prepareOwnServer("chokes");
    const auto result = runProcess(ownServer());
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, HasSubstr("ends again and again"));
    EXPECT_THAT(result.output, HasSubstr(" left.\n"));
    EXPECT_LE(starts(), 7U);
}

TEST_F(BatchEnd, AServerThatDoesNotStartEndsTheBatch) {
    addPictures(3);
    prepareOwnServer("ends");
    const auto result = runProcess(ownServer());
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, HasSubstr("ended before it was ready"));
    EXPECT_THAT(result.output, HasSubstr("0 cards read, 3 left.\n"));
    EXPECT_EQ(starts(), 1U);
}

/// Another course of kills with each seed; `Tests/kill-batch` sets it to run as many as one likes.
unsigned seedOfKills() {
    constexpr unsigned kUsual = 20250301;
    const char* const text = std::getenv("QV_KILL_SEED");
    return text == nullptr ? kUsual : static_cast<unsigned>(std::strtoul(text, nullptr, 10));
}

/// A batch that is killed again and again.
class BatchKilled : public BatchEnd {
  protected:
    static constexpr int kCards = 40;

    /// Every card's folder that is there is whole, and what was finished once stays as it is.
    void expectNothingLost() {
        for (const std::string& card : cards()) {
            if (card.starts_with(".qvcardscan-")) continue;
            const fs::path folder = mFolder / "out/cards" / card;
            for (const char* file : {"note.qvml", "note.html", "card.json", "contact.json", "contact.vcf",
                                     "result-front.xml", "thumbnail-front.jpg"})
                EXPECT_TRUE(fs::exists(folder / file)) << card << " " << file;
            const std::string text = readFile(folder / "batch.json");
            EXPECT_TRUE(ordered_json::parse(text)["complete"].get<bool>()) << card;
            const auto [known, isNew] = mFinished.emplace(card, text);
            EXPECT_EQ(known->second, text) << card << " was read twice";
        }
        for (const auto& [card, text] : mFinished)
            EXPECT_TRUE(fs::exists(mFolder / "out/cards" / card)) << card << " was lost";
    }

    std::map<std::string, std::string> mFinished;
};

TEST_F(BatchKilled, LosesNoFinishedCardAndSavesNobodyTwice) {
    addPictures(kCards);
    recogniseEverybody();
    auto killed = call({"--resume", "--save", "--address-book", book()});
    std::mt19937 random(seedOfKills());
    std::uniform_int_distribution<int> life(2, 70);
    constexpr int kMostKills = 20;
    int kills = 0;
    for (bool isDone = false; !isDone && kills < kMostKills;) {
        // When it dies is the point of this: nothing is waited for.
        killed.limit = std::chrono::milliseconds(life(random));
        const ProcessResult result = runProcess(killed);
        isDone = !result.timedOut;
        kills += isDone ? 0 : 1;
        expectNothingLost();
    }
    killed.limit = std::chrono::minutes(2);
    const auto last = runProcess(killed);
    EXPECT_EQ(last.status, 0) << last.error;
    expectNothingLost();
    EXPECT_EQ(cards().size(), static_cast<std::size_t>(kCards));
    EXPECT_THAT(cards(), Not(Contains(HasSubstr(".qvcardscan"))));
    EXPECT_EQ(namesIn(mFolder / "book").size(), static_cast<std::size_t>(kCards)) << "each is saved once";
    const std::string table = list("contacts.csv");
    EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), kCards + 1);
    std::cout << kills << " kills\n";
}

}  // namespace
