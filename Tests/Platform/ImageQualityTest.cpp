#include "QVPlatform/Image.h"
#include "Support/TestImages.h"

#include <gtest/gtest.h>

namespace {

using qv::Image;
using qv::ImageFileType;
using namespace testsupport;

Pixels drawnPixels(const std::shared_ptr<Image>& image, qv::Size size) {
    return readPNG(*Image::initWithSize(size, image)->representationUsingType(ImageFileType::PNG));
}

TEST(ImageQuality, OfTwelveMegapixelsReducedIsThatOfTheWholePicture) {
    const Pixels large = photograph(4000, 3000);
    const Pixels reference = boxReduced(large, 1024, 768);
    const auto image =
        Image::initWithData(makeJPEG(large, {.horizontalSampling = 2, .verticalSampling = 2, .quality = 92}));
    const auto drawn = Image::initWithSize({1024, 768}, image);
    const Pixels exact = readPNG(*drawn->representationUsingType(ImageFileType::PNG));
    EXPECT_GT(psnr(exact, reference), 30);
    const Pixels compressed = readJPEG(*drawn->representationUsingType(ImageFileType::JPEG, 0.7));
    EXPECT_GT(psnr(compressed, reference), 28);
    const auto mean = meanColour(compressed);
    const auto expected = meanColour(reference);
    for (std::size_t index = 0; index < 3; ++index)
        EXPECT_NEAR(mean[index], expected[index], 1);
}

TEST(ImageQuality, IsTheSameAtEveryScaleOfTheDecoder) {
    const Pixels large = photograph(800, 600);
    const auto jpeg = Image::initWithData(makeJPEG(large, {.horizontalSampling = 2, .verticalSampling = 2}));
    // PNG is always decoded at its full size.
    const auto whole = Image::initWithData(makePNG(readJPEG(jpeg->encodedData())));
    for (int eighth = 1; eighth <= 8; ++eighth) {
        for (const int less : {0, 3}) {
            const qv::Size size{100.0 * eighth - less, 75.0 * eighth - less};
            EXPECT_GT(psnr(drawnPixels(jpeg, size), drawnPixels(whole, size)), 25) << size.width;
        }
    }
}

}  // namespace
