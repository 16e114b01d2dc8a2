#include "QVPlatform/Image.h"
#include "Support/TestImages.h"

#include <gtest/gtest.h>

namespace {

using qv::Image;
using qv::ImageFileType;
using namespace testsupport;

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
    for (int eighth = 1; eighth <= 8; ++eighth) {
        for (const int more : {0, 3}) {
            const int width = 100 * eighth - more;
            const int height = 75 * eighth - more;
            const auto drawn = Image::initWithSize({double(width), double(height)}, jpeg);
            const Pixels pixels = readPNG(*drawn->representationUsingType(ImageFileType::PNG));
            EXPECT_GT(psnr(pixels, boxReduced(large, width, height)), 26) << width;
        }
    }
}

}  // namespace
