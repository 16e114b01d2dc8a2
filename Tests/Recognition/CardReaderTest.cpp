#include "CardReader.h"
#include "Picture/CardOutline.h"
#include "Recognition/DrawnCard.h"
#include "Recognition/DrawnCode.h"
#include "Text/Reading.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace qv::recognition {
namespace {

const std::vector<std::string> kLines = {
    "Jane Miller",      "Sales Manager", "Acme Tools Ltd", "Tel: 312-555-0142", "jane.miller@acmetools.com",
    "www.acmetools.com"};

class CardReaderTest : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        CardReader::Options options;
        options.models = installedModels();
        options.timeLimit = std::chrono::minutes(10);  // a busy machine must not change what is read
        sReader = CardReader::open(options);
    }
    static void TearDownTestSuite() { sReader.reset(); }
    void SetUp() override { ASSERT_TRUE(sReader) << "the English language model is not installed"; }

    static Recognition read(const cv::Mat& picture, const std::string& language = "en") {
        return sReader->recognise(asJPEG(picture), language);
    }
    static bool holds(const Recognition& recognition, const std::string& text) {
        return recognition.xml.find(text) != std::string::npos;
    }
    static bool hasItem(const Recognition& recognition, const std::string& type, const std::string& text) {
        const auto at = recognition.xml.find("fldType=\"" + type + '"');
        return at != std::string::npos && recognition.xml.find('>' + text + "</t>", at) != std::string::npos;
    }

    static std::unique_ptr<CardReader> sReader;
};

std::unique_ptr<CardReader> CardReaderTest::sReader;

TEST_F(CardReaderTest, ReadsACardInEveryTurn) {
    for (const int turn : {0, 90, 180, 270}) {
        const auto recognition = read(turned(drawnCard(kLines), (360 - turn) % 360));
        EXPECT_TRUE(hasItem(recognition, "name", "Jane Miller")) << turn << recognition.xml;
        EXPECT_TRUE(hasItem(recognition, "title", "Sales Manager")) << turn << recognition.xml;
        EXPECT_TRUE(hasItem(recognition, "phone", "312-555-0142")) << turn << recognition.xml;
        EXPECT_TRUE(hasItem(recognition, "email", "jane.miller@acmetools.com")) << turn << recognition.xml;
        EXPECT_TRUE(holds(recognition, "orient=\"" + std::to_string(turn) + '"')) << turn;
    }
}

// The name stands in the upper left quarter of the card, wherever the turn brings that.
TEST_F(CardReaderTest, SaysPlacesInThePictureAsSent) {
    const auto recognition = read(turned(drawnCard(kLines), 180));
    const auto at = recognition.xml.find("fldType=\"name\"");
    ASSERT_NE(at, std::string::npos);
    const int y = std::stoi(recognition.xml.substr(recognition.xml.find(" y=\"", at) + 4));
    EXPECT_GT(y, 300);
    EXPECT_TRUE(holds(recognition, "objWidth=\"1000\" objHeight=\"600\""));
}

TEST_F(CardReaderTest, ReadsLightTypeOnADarkCard) {
    EXPECT_TRUE(hasItem(read(cv::Scalar::all(255) - drawnCard(kLines)), "email", "jane.miller@acmetools.com"));
}

TEST_F(CardReaderTest, ReadsATiltedCardOnADesk) {
    cv::Mat desk(900, 1300, CV_8UC3, cv::Scalar(40, 60, 80));
    const std::vector<cv::Point2f> from = {{0, 0}, {1000, 0}, {1000, 600}, {0, 600}};
    const std::vector<cv::Point2f> to = {{150, 120}, {1150, 240}, {1100, 820}, {100, 720}};
    cv::warpPerspective(drawnCard(kLines), desk, cv::getPerspectiveTransform(from, to), desk.size(), cv::INTER_CUBIC,
                        cv::BORDER_TRANSPARENT);
    const auto recognition = read(desk);
    EXPECT_TRUE(hasItem(recognition, "email", "jane.miller@acmetools.com")) << recognition.xml;
    EXPECT_TRUE(hasItem(recognition, "name", "Jane Miller")) << recognition.xml;
}

/// A desk with a card on it whose right half is as dark as the desk: only the left half has an outline.
cv::Mat halfDarkCard(const std::string& onTheLightHalf) {
    const cv::Mat sheet = drawnCard(kLines);
    cv::Mat desk(900, 1500, CV_8UC3, cv::Scalar::all(50));
    cv::Mat light = desk(cv::Rect(60, 160, 360, 580));
    light.setTo(cv::Scalar::all(245));
    cv::putText(light, onTheLightHalf, {60, 300}, cv::FONT_HERSHEY_SIMPLEX, 2.0, cv::Scalar::all(0), 4, cv::LINE_AA);
    cv::Mat lightType;
    cv::bitwise_not(sheet(cv::Rect(40, 0, 960, 500)), lightType);
    cv::Mat dark = desk(cv::Rect(480, 200, 960, 500));
    cv::max(dark, lightType, dark);
    return desk;
}

TEST_F(CardReaderTest, ReadsTheWholePictureWhenWhatWasCutOutSaysLittle) {
    const cv::Mat desk = halfDarkCard("ACME");
    const auto outline = findOutline(desk);
    ASSERT_TRUE(outline);
    ASSERT_LT((*outline)[1].x, 500) << "the card's light half";
    const auto recognition = read(desk);
    EXPECT_TRUE(hasItem(recognition, "name", "Jane Miller")) << recognition.xml;
    EXPECT_TRUE(hasItem(recognition, "email", "jane.miller@acmetools.com")) << recognition.xml;
    EXPECT_TRUE(holds(recognition, "orient=\"0\""));
}

TEST_F(CardReaderTest, BelievesACodeMoreThanThePrint) {
    cv::Mat card = drawnCard(kLines);
    drawCode(card, {740, 40, 240, 240}, "MECARD:N:Müller,Jane;TEL:312-555-0142;EMAIL:jane@acme.example;;");
    const auto recognition = read(card);
    EXPECT_TRUE(hasItem(recognition, "name", "Jane Müller")) << recognition.xml;
    EXPECT_FALSE(holds(recognition, "Jane Miller"));
    EXPECT_TRUE(hasItem(recognition, "email", "jane@acme.example")) << recognition.xml;
    EXPECT_TRUE(hasItem(recognition, "title", "Sales Manager")) << recognition.xml;
    EXPECT_TRUE(holds(recognition, "<t w=\"100\">Jane M"));
}

TEST_F(CardReaderTest, ReadsACardWithNothingButACode) {
    cv::Mat card(600, 1000, CV_8UC3, cv::Scalar::all(255));
    drawCode(card, {380, 180, 240, 240}, "BEGIN:VCARD\nFN:Jane Doe\nEND:VCARD");
    EXPECT_TRUE(hasItem(read(card), "name", "Jane Doe"));
}

TEST_F(CardReaderTest, TakesNoMoreLinesThanACardHas) {
    cv::Mat page(2000, 1500, CV_8UC3, cv::Scalar::all(255));
    for (int i = 0; i < 40; ++i) {
        for (const int column : {0, 1}) {
            const std::string number = "312-555-" + std::to_string(1000 + 97 * i + 11 * column);
            cv::putText(page, number, {100 + 800 * column, 60 + 48 * i}, cv::FONT_HERSHEY_SIMPLEX, 1.1,
                        cv::Scalar::all(0), 2, cv::LINE_AA);
        }
    }
    const auto recognition = read(page);
    EXPECT_GT(recognition.fields, 30);
    EXPECT_LE(recognition.fields, 60);
}

/// A page of prose, small and closely printed.
cv::Mat bookPage() {
    const std::vector<std::string> words = {"the",    "river",   "went",  "down",  "behind", "old",   "walls",  "and",
                                            "nobody", "knew",    "where", "their", "way",    "would", "lead",   "when",
                                            "at",     "evening", "all",   "lamps", "burned", "in",    "windows"};
    cv::Mat page(1100, 1000, CV_8UC3, cv::Scalar(225, 235, 240));
    std::size_t next = 0;
    for (int y = 80; y < 1060; y += 32) {
        std::string line;
        for (; line.size() < 58; ++next)
            line += words[(next * 7 + next / 5) % words.size()] + ' ';
        cv::putText(page, line, {70, y}, cv::FONT_HERSHEY_SIMPLEX, 0.75, cv::Scalar::all(30), 2, cv::LINE_AA);
    }
    return page;
}

TEST_F(CardReaderTest, FindsNothingInAPageOfABook) {
    for (const int turn : {0, 90}) {
        const auto recognition = read(turned(bookPage(), turn));
        EXPECT_EQ(recognition.fields, 0) << turn << recognition.xml;
        const auto passes =
            std::count_if(recognition.stages.begin(), recognition.stages.end(), [](const StageTime& stage) {
                return std::string(stage.stage) == "again" || std::string(stage.stage) == "page";
            });
        EXPECT_EQ(passes, 0) << "one reading tells that it is no card";
    }
}

// Short strokes that lie along each other, as hair does.
TEST_F(CardReaderTest, FindsNothingInFur) {
    cv::Mat fur(768, 1024, CV_8UC3, cv::Scalar(90, 120, 150));
    cv::RNG random(11);
    for (int i = 0; i < 9000; ++i) {
        const cv::Point root(random.uniform(0, fur.cols), random.uniform(0, fur.rows));
        const double lie = 1.2 + 0.6 * std::sin(root.x / 130.0) + random.gaussian(0.25);
        const int length = random.uniform(12, 40);
        const cv::Point tip(root.x + static_cast<int>(length * std::cos(lie)),
                            root.y + static_cast<int>(length * std::sin(lie)));
        const double shade = random.uniform(0.3, 1.5);
        cv::line(fur, root, tip, cv::Scalar(80, 110, 140) * shade, 1, cv::LINE_AA);
    }
    const auto recognition = read(fur);
    EXPECT_TRUE(recognition.isPicture);
    EXPECT_EQ(recognition.fields, 0) << recognition.xml;
}

TEST_F(CardReaderTest, FindsNothingInATexture) {
    cv::Mat texture(768, 1024, CV_8UC3);
    cv::RNG random(5);
    random.fill(texture, cv::RNG::NORMAL, 120, 40);
    cv::GaussianBlur(texture, texture, {0, 0}, 3);
    cv::normalize(texture, texture, 0, 255, cv::NORM_MINMAX);
    const auto recognition = read(texture);
    EXPECT_TRUE(recognition.isPicture);
    EXPECT_EQ(recognition.fields, 0) << recognition.xml;
}

TEST_F(CardReaderTest, FindsNothingWhereNothingIs) {
    for (const int level : {0, 130, 255}) {
        const auto recognition = read(cv::Mat(768, 1024, CV_8UC3, cv::Scalar::all(level)));
        EXPECT_TRUE(recognition.isPicture);
        EXPECT_EQ(recognition.fields, 0);
        EXPECT_TRUE(holds(recognition, "<recoIndex lang=\"en\" objWidth=\"1024\" objHeight=\"768\"/>"));
    }
}

TEST_F(CardReaderTest, TakesPicturesOfAnySize) {
    for (const cv::Size size : {cv::Size(1, 1), cv::Size(1, 700), cv::Size(700, 2), cv::Size(9, 9)}) {
        EXPECT_TRUE(read(cv::Mat(size, CV_8UC3, cv::Scalar::all(255))).isPicture) << size.width << 'x' << size.height;
        cv::Mat noise(size, CV_8UC3);
        cv::RNG random(3);
        random.fill(noise, cv::RNG::UNIFORM, 0, 256);
        EXPECT_TRUE(read(noise).isPicture) << size.width << 'x' << size.height;
    }
}

TEST_F(CardReaderTest, SaysWhatIsNoPicture) {
    const std::vector<std::uint8_t> bytes(100, 'x');
    const auto recognition = sReader->recognise(bytes, "en");
    EXPECT_FALSE(recognition.isPicture);
    EXPECT_TRUE(recognition.xml.empty());
}

TEST_F(CardReaderTest, FallsBackToEnglishAndSaysSo) {
    const auto recognition = read(drawnCard(kLines), "tlh");
    EXPECT_TRUE(holds(recognition, "lang=\"en\""));
    EXPECT_FALSE(recognition.remark.empty());
    EXPECT_TRUE(read(cv::Mat(8, 8, CV_8UC3, cv::Scalar::all(0)), "").remark.empty());
}

TEST_F(CardReaderTest, EndsAtItsTimeLimit) {
    CardReader::Options options;
    options.models = installedModels();
    options.timeLimit = std::chrono::milliseconds(0);
    const auto recognition = CardReader::open(options)->recognise(asJPEG(drawnCard(kLines)), "en");
    EXPECT_TRUE(recognition.isPicture);
    EXPECT_EQ(recognition.fields, 0);
    EXPECT_TRUE(recognition.isCutShort);
    EXPECT_FALSE(read(drawnCard({"Jane Miller"})).isCutShort);
}

TEST(CardReaderOpenTest, NeedsTheEnglishModel) {
    CardReader::Options options;
    options.models = "/nonexistent";
    EXPECT_FALSE(CardReader::open(options));
}

TEST(LanguagesTest, NamesTheModels) {
    const auto models = installedModels();
    EXPECT_EQ(readingLanguage("en-GB", models).models, "eng");
    EXPECT_EQ(readingLanguage("EN, de;q=0.5", models).models, "eng");
    EXPECT_EQ(readingLanguage("", models).isFallback, false);
    EXPECT_EQ(readingLanguage("xx", models).isFallback, true);
    EXPECT_EQ(readingLanguage("../../etc", models).models, "eng");
    EXPECT_EQ(readingLanguage("de_AT", models).models, isInstalled(models, "deu") ? "deu" : "eng");
    EXPECT_TRUE(readingLanguage("de", "/nonexistent").isFallback);
}

}  // namespace
}  // namespace qv::recognition
