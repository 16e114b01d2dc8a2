#include "PictureLayout.h"

namespace qv::imaging {

std::size_t PictureLayout::planeCount() const {
    if (model == ColourModel::Grey) return 1;
    return model == ColourModel::RGBA ? 4 : 3;
}

Sampling PictureLayout::samplingOfPlane(std::size_t index) const {
    return model == ColourModel::YCbCr && index > 0 ? sampling : k444;
}

static int unitsCovering(int pixels, int pixelsPerUnit) {
    return (pixels + pixelsPerUnit - 1) / pixelsPerUnit;
}

PixelSize PictureLayout::sizeOfPlane(std::size_t index) const {
    const PixelSize units{unitsCovering(size.width, sampling.x), unitsCovering(size.height, sampling.y)};
    if (samplingOfPlane(index) == sampling) return units;
    return {units.width * sampling.x, units.height * sampling.y};
}

}  // namespace qv::imaging
