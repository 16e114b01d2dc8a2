#include "Text/Reading.h"

#include <gtest/gtest.h>

namespace qv::recognition {
namespace {

TEST(ReadingTest, LaysColumnsLevel) {
    const auto words = laidLevel({{"右", {900, 50, 40, 200}, 90, {}}, {"左", {100, 60, 40, 100}, 90, {}}}, 1000);
    EXPECT_EQ(words[0].box, (Box{50, 60, 200, 40})) << "the column on the right is the first line";
    EXPECT_EQ(words[1].box, (Box{60, 860, 100, 40}));
}

TEST(ReadingTest, KnowsPlainText) {
    const Word sure{"abcdefghijkl", {0, 0, 9, 9}, 95, {}};
    const Word unsure{"abcdefghijkl", {0, 0, 9, 9}, 30, {}};
    EXPECT_TRUE(isPlain({sure, sure}));
    EXPECT_FALSE(isPlain({sure}));
    EXPECT_FALSE(isPlain({sure, sure, unsure, unsure, unsure}));
    EXPECT_FALSE(isPlain({}));
}

TEST(ReadingTest, KnowsWhatIsNoCard) {
    const Word plain{"abcdefgh", {0, 0, 9, 9}, 95, {}};
    const Word scrap{"/", {0, 0, 9, 9}, 30, {}};
    const auto crowd = [](std::size_t count, const Word& word) { return std::vector<Word>(count, word); };
    EXPECT_TRUE(isNoCard(crowd(201, plain))) << "a page";
    EXPECT_FALSE(isNoCard(crowd(200, plain)));
    EXPECT_TRUE(isNoCard(crowd(201, scrap))) << "a texture";
    EXPECT_FALSE(isNoCard(crowd(200, scrap)));
    EXPECT_FALSE(isNoCard({}));
    auto cardOnTexture = crowd(400, scrap);
    cardOnTexture.insert(cardOnTexture.end(), 10, plain);
    EXPECT_FALSE(isNoCard(cardOnTexture));
}

TEST(ReadingTest, Turns) {
    const cv::Mat picture = (cv::Mat_<unsigned char>(1, 2) << 1, 2);
    EXPECT_EQ(turned(picture, 90).at<unsigned char>(0, 0), 1);
    EXPECT_EQ(turned(picture, 180).at<unsigned char>(0, 0), 2);
    EXPECT_EQ(turned(picture, 270).at<unsigned char>(0, 0), 2);
    EXPECT_EQ(turned(picture, 0).at<unsigned char>(0, 0), 1);
}

}  // namespace
}  // namespace qv::recognition
