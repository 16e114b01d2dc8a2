#include "Codes/CodeReader.h"
#include "Recognition/DrawnCode.h"
#include "Text/Reading.h"

#include <gtest/gtest.h>

#include <string_view>

namespace qv::recognition {
namespace {

const std::string kText = "MECARD:N:Müller,Jörg;TEL:+49 30 23125000;;";
const cv::Rect kPlace(700, 300, 220, 220);

cv::Mat cardWithCode(const std::string& text) {
    cv::Mat card(600, 1000, CV_8U, cv::Scalar(255));
    drawCode(card, kPlace, text);
    return card;
}

/// A whole code whose first segment is of kind 10, which no standard defines.
constexpr std::string_view kUndefined = R"(
#######.##..#.#######
#.....#....#..#.....#
#.###.#.#.#...#.###.#
#.###.#.##..#.#.###.#
#.###.#.#..#..#.###.#
#.....#...#...#.....#
#######.#.#.#.#######
...........#.........
####..#.#.#..#..###.#
##..#..#....#..#..#..
.#...##...##..#..#..#
..#.##..#.#..#..#..#.
.##...#.#...#..#..#..
........#..#..#..#..#
#######..##..#..#..#.
#.....#..##.#..#..#..
#.###.#....#..#..#..#
#.###.#.###..#..#..#.
#.###.#.#...#..#..#..
#.....#.##.#..#..#...
#######.###..#..#..##
)";

TEST(CodeReaderTest, FindsACodeInEveryTurn) {
    for (const int turn : {0, 90, 180, 270}) {
        const auto codes = readCodes(turned(cardWithCode(kText), turn));
        ASSERT_EQ(codes.size(), 1U) << turn;
        EXPECT_EQ(codes[0].text, kText) << turn;
    }
}

TEST(CodeReaderTest, SaysWhereTheCodeLies) {
    const auto codes = readCodes(cardWithCode(kText));
    ASSERT_EQ(codes.size(), 1U);
    const Box box = codes[0].box();
    EXPECT_NEAR(box.x, kPlace.x, 25);
    EXPECT_NEAR(box.bottom(), kPlace.y + kPlace.height, 25);
}

TEST(CodeReaderTest, FindsALightCodeOnADarkCard) {
    EXPECT_EQ(readCodes(255 - cardWithCode(kText)).size(), 1U);
}

TEST(CodeReaderTest, FindsTwoCodes) {
    cv::Mat card = cardWithCode(kText);
    drawCode(card, {100, 300, 220, 220}, "https://acme.example");
    EXPECT_EQ(readCodes(card).size(), 2U);
}

TEST(CodeReaderTest, FindsNoneWhereNoneIs) {
    EXPECT_TRUE(readCodes(cv::Mat(600, 1000, CV_8U, cv::Scalar(255))).empty());
    EXPECT_TRUE(readCodes(cv::Mat(1, 1, CV_8U, cv::Scalar(0))).empty());
    EXPECT_TRUE(readCodes(cv::Mat(1, 2000, CV_8U, cv::Scalar(0))).empty());
    cv::Mat noise(600, 1000, CV_8U);
    cv::RNG(3).fill(noise, cv::RNG::UNIFORM, 0, 256);
    EXPECT_TRUE(readCodes(noise).empty());
}

TEST(CodeReaderTest, ReadsNothingFromACodeOfAnUndefinedKind) {
    cv::Mat modules(21, 21, CV_8U);
    for (std::size_t i = 0; i < modules.total(); ++i)
        modules.data[i] = kUndefined.at(1 + i / 21 * 22 + i % 21) == '#' ? 0 : 255;  // behind each row is a line end
    cv::Mat card(600, 1000, CV_8U, cv::Scalar(255));
    cv::resize(modules, card({100, 100, 210, 210}), {210, 210}, 0, 0, cv::INTER_NEAREST);
    EXPECT_TRUE(readCodes(card).empty());
}

TEST(CodeReaderTest, PaintsCodesOver) {
    cv::Mat card = cardWithCode(kText);
    const auto codes = readCodes(card);
    cv::Mat colour;
    cv::cvtColor(card, colour, cv::COLOR_GRAY2BGR);
    eraseCodes(colour, codes);
    EXPECT_GT(cv::mean(colour)[0], 252);
    EXPECT_GT(cv::mean(colour)[0], cv::mean(card)[0] + 3);
}

}  // namespace
}  // namespace qv::recognition
