#include "Soak/CardPictures.h"

#include "QVPlatform/Image.h"
#include "Support/TestImages.h"

#include <cstddef>
#include <utility>

namespace soak {

namespace {

using testsupport::Pixels;

/// One in each format, with its ways of storing.
std::vector<qv::Data> inEveryFormat(const Pixels& pixels) {
    return {testsupport::makeJPEG(pixels, {.horizontalSampling = 2, .verticalSampling = 2}),
            testsupport::makeJPEG(pixels, {.colours = testsupport::JPEGOptions::Colours::Grey}),
            testsupport::makeJPEG(pixels, {.isProgressive = true}),
            testsupport::makeJPEG(pixels, {.colours = testsupport::JPEGOptions::Colours::YCCK, .orientation = 3}),
            testsupport::makePNG(pixels, {.kind = testsupport::PNGOptions::Kind::RGBA}),
            testsupport::makePNG(pixels, {.kind = testsupport::PNGOptions::Kind::GreyAlpha, .isInterlaced = true}),
            testsupport::makeTIFF(pixels, {.compression = 5}),
            testsupport::makeWebP(pixels, {.isLossless = false})};
}

std::vector<qv::Data> inSizes(const std::vector<std::pair<int, int>>& sizes) {
    std::vector<qv::Data> pictures;
    for (const auto& [width, height] : sizes) {
        for (qv::Data& picture : inEveryFormat(testsupport::photograph(width, height)))
            pictures.push_back(std::move(picture));
    }
    return pictures;
}

/// Cut off in the header, and no picture at all.
std::vector<qv::Data> brokenOnes(const std::vector<qv::Data>& whole) {
    std::vector<qv::Data> broken{{}, {'n', 'o'}};
    for (const qv::Data& picture : whole)
        broken.emplace_back(picture.begin(), picture.begin() + 20);
    return broken;
}

std::shared_ptr<qv::Image> imageOf(const std::vector<qv::Data>& pictures, int number) {
    return qv::Image::initWithData(pictures[static_cast<std::size_t>(number) % pictures.size()]);
}

}  // namespace

CardPictures::CardPictures()
    : mFronts(inSizes({{90, 50}, {640, 400}, {1280, 720}})),
      mBacks(inSizes({{300, 500}})),
      mBroken(brokenOnes(mBacks)) {
}

QVImageArray CardPictures::picturesOf(const PlannedCard& card) const {
    auto pictures = std::make_shared<std::vector<std::shared_ptr<qv::Image>>>();
    pictures->push_back(imageOf(card.plan() == Plan::BrokenPicture ? mBroken : mFronts, card.number()));
    if (card.hasBack()) pictures->push_back(imageOf(mBacks, card.number()));
    return pictures;
}

}  // namespace soak
