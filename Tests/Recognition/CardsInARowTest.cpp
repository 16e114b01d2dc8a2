#include "CardReader.h"
#include "Recognition/DrawnCard.h"
#include "Server/ProcessFigures.h"
#include "Support/ReadFile.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>

// What one card leaves behind for the next.

namespace qv::recognition {
namespace {

const std::vector<std::string> kLines = {
    "Jane Miller",      "Sales Manager", "Acme Tools Ltd", "Tel: 312-555-0142", "jane.miller@acmetools.com",
    "www.acmetools.com"};

struct Card {
    std::string name;
    std::string language;
    std::vector<std::uint8_t> jpeg;
};

std::unique_ptr<CardReader> open(const std::filesystem::path& models) {
    CardReader::Options options;
    options.models = models;
    options.timeLimit = std::chrono::minutes(10);  // a busy machine must not change what is read
    return CardReader::open(options);
}

Card sample(const std::string& name, const std::string& language) {
    const std::string bytes = testsupport::readFile(std::filesystem::path(QV_SOURCE_DIR) / "Samples" / name);
    return {name, language, {bytes.begin(), bytes.end()}};
}

/// As cards look that were cut out a little too large. The engine takes the edge for a line of text, and none is
/// longer.
cv::Mat cardWithItsEdge() {
    cv::Mat card = drawnCard(kLines);
    for (int x = 10; x < 990; x += 6)
        cv::line(card, {x, 0}, {x + 2, 0}, cv::Scalar::all(0));
    return card;
}

std::map<std::string, std::string> answers(const std::vector<Card>& cards) {
    std::map<std::string, std::string> found;
    const auto reader = open(installedModels());
    if (!reader) return found;
    for (const auto& card : cards) {
        found[card.name] = reader->recognise(card.jpeg, card.language).xml;
        reader->rest();
    }
    return found;
}

// More languages than engines are kept, so that some cards are read with engines that have read others and some are
// not.
TEST(CardsInARowTest, AnswersAreTheSameWhateverWasReadBefore) {
    std::vector<Card> cards = {sample("dark.jpg", "en"),
                               sample("german.jpg", "de"),
                               sample("plain.jpg", "fr"),
                               {"edge", "en", asJPEG(cardWithItsEdge())},
                               sample("two-sided-back.jpg", "es")};
    const auto forwards = answers(cards);
    std::reverse(cards.begin(), cards.end());
    const auto backwards = answers(cards);
    ASSERT_EQ(forwards.size(), cards.size()) << "the English language model is not installed";
    for (const auto& [name, answer] : forwards) {
        EXPECT_NE(answer.find("<item"), std::string::npos) << name;
        EXPECT_EQ(answer, backwards.at(name)) << name;
    }
}

double heapAfter(CardReader& reader, const cv::Mat& picture, const std::string& language) {
    (void)reader.recognise(asJPEG(picture), language);
    reader.rest();
    return processFigures().heapBytes.value_or(0);
}

constexpr double kMiB = 1024 * 1024;

TEST(CardsInARowTest, NothingIsKeptOfALineThatNoTextIsAsLongAs) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the sanitizer has an allocator of its own";
#endif
    const auto reader = open(installedModels());
    ASSERT_TRUE(reader) << "the English language model is not installed";
    (void)heapAfter(*reader, drawnCard(kLines), "en");
    const double before = heapAfter(*reader, drawnCard(kLines), "en");
    ASSERT_GT(before, 0);
    EXPECT_LT(heapAfter(*reader, cardWithItsEdge(), "en"), before + kMiB);
    EXPECT_LT(heapAfter(*reader, drawnCard(kLines), "en"), before + kMiB);
}

// As many languages as engines are kept beside English, so that every one goes for the next.
TEST(CardsInARowTest, NothingIsKeptOfALanguageWhoseEngineHadToGo) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the sanitizer has an allocator of its own";
#endif
    const auto reader = open(installedModels());
    ASSERT_TRUE(reader) << "the English language model is not installed";
    const auto visit = [&](const std::vector<std::string>& languages) {
        double heap = 0;
        for (const auto& language : languages) {
            EXPECT_FALSE(readingLanguage(language, installedModels()).isFallback) << language;
            heap = heapAfter(*reader, cv::Mat(8, 8, CV_8UC3, cv::Scalar::all(0)), language);
        }
        return heap;
    };
    const double before = visit({"de", "fr", "es"});
    const double after = visit({"it", "nl", "pt", "de", "fr", "es"});
    EXPECT_LT(after, before + kMiB / 4);
}

// The engine for English may have had to go for other languages, and may not come back.
TEST(CardsInARowTest, ACardIsReadWithItsOwnLanguageWhenEnglishIsGone) {
    const testsupport::TemporaryFolder models;
    for (const char* language : {"eng", "deu", "fra", "spa"}) {
        const std::string model = language + std::string(".traineddata");
        std::filesystem::create_symlink(installedModels() / model, models / model);
    }
    const auto reader = open(models.path());
    ASSERT_TRUE(reader) << "the English language model is not installed";
    for (const char* language : {"fr", "es", "de"})
        (void)reader->recognise(asJPEG(cv::Mat(8, 8, CV_8UC3, cv::Scalar::all(0))), language);
    std::filesystem::remove(models / "eng.traineddata");
    const auto recognition = reader->recognise(asJPEG(drawnCard(kLines)), "de");
    EXPECT_NE(recognition.xml.find("lang=\"de\""), std::string::npos);
    EXPECT_NE(recognition.xml.find(">jane.miller@acmetools.com<"), std::string::npos) << recognition.xml;
}

}  // namespace
}  // namespace qv::recognition
