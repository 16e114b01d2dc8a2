#include "Picture/JPEGDecoder.h"
#include "Recognition/DrawnCard.h"

#include <gtest/gtest.h>

#include <string>

namespace qv::recognition {
namespace {

std::vector<std::uint8_t> grey(int width, int height, int flags = 0) {
    return asJPEG(cv::Mat(height, width, CV_8UC3, cv::Scalar(10, 120, 240)), flags);
}

/// The same picture with another size written in its frame header.
std::vector<std::uint8_t> claiming(std::vector<std::uint8_t> jpeg, int width, int height) {
    for (std::size_t i = 2; i + 9 < jpeg.size(); ++i) {
        if (jpeg[i] != 0xFF || (jpeg[i + 1] != 0xC0 && jpeg[i + 1] != 0xC2)) continue;
        jpeg[i + 5] = static_cast<std::uint8_t>(height >> 8);
        jpeg[i + 6] = static_cast<std::uint8_t>(height & 0xFF);
        jpeg[i + 7] = static_cast<std::uint8_t>(width >> 8);
        jpeg[i + 8] = static_cast<std::uint8_t>(width & 0xFF);
        break;
    }
    return jpeg;
}

TEST(JPEGDecoderTest, DecodesColours) {
    const auto picture = decodeJPEG(grey(64, 32));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->width, 64);
    EXPECT_EQ(picture->height, 32);
    ASSERT_EQ(picture->colour.size(), cv::Size(64, 32));
    const auto pixel = picture->colour.at<cv::Vec3b>(16, 32);
    EXPECT_NEAR(pixel[0], 10, 4);
    EXPECT_NEAR(pixel[1], 120, 4);
    EXPECT_NEAR(pixel[2], 240, 4);
}

TEST(JPEGDecoderTest, DecodesProgressive) {
    const auto picture = decodeJPEG(grey(64, 32, TJFLAG_PROGRESSIVE));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->colour.size(), cv::Size(64, 32));
}

TEST(JPEGDecoderTest, DecodesALargePictureAtASmallerScale) {
    const auto picture = decodeJPEG(grey(5000, 3000));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->width, 5000);
    EXPECT_GE(picture->colour.cols, kDecodedSide);
    EXPECT_LT(picture->colour.cols, 5000);
}

TEST(JPEGDecoderTest, UsesWhatACutPictureHolds) {
    auto jpeg = asJPEG(drawnCard({"Jane Doe"}));
    jpeg.resize(jpeg.size() / 2);
    EXPECT_TRUE(decodeJPEG(jpeg));
}

TEST(JPEGDecoderTest, RefusesWhatIsNoJPEG) {
    const std::string text = "this is no picture at all";
    EXPECT_FALSE(decodeJPEG({}));
    EXPECT_FALSE(decodeJPEG({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}));
    const auto jpeg = grey(64, 32);
    for (const std::size_t length : {1U, 2U, 4U, 20U})
        EXPECT_FALSE(decodeJPEG({jpeg.data(), length})) << length;
}

TEST(JPEGDecoderTest, RefusesMorePixelsThanItWouldHold) {
    EXPECT_FALSE(decodeJPEG(claiming(grey(64, 32), 65000, 65000)));
    EXPECT_FALSE(decodeJPEG(claiming(grey(64, 32, TJFLAG_PROGRESSIVE), 6000, 6000)));
    EXPECT_FALSE(decodeJPEG(claiming(grey(64, 32), 0, 32)));
}

}  // namespace
}  // namespace qv::recognition
