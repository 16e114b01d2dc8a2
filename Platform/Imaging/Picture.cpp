#include "Picture.h"

#include <utility>

namespace qv::imaging {

static std::vector<Plane> newPlanes(const PictureLayout& layout) {
    std::vector<Plane> planes;
    for (std::size_t index = 0; index < layout.planeCount(); ++index)
        planes.emplace_back(layout.sizeOfPlane(index));
    return planes;
}

Picture::Picture(const PictureLayout& layout) : Picture(layout, newPlanes(layout)) {
}

Picture::Picture(const PictureLayout& layout, std::vector<Plane> planes)
    : mLayout(layout),
      mContentWidth(layout.size.width),
      mContentHeight(layout.size.height),
      mPlanes(std::move(planes)) {
}

void Picture::setContentSize(double width, double height) {
    mContentWidth = width;
    mContentHeight = height;
}

// The channel count is a template argument because a constant stride lets the compiler use vector shuffles.
template <int Channels>
static void split(std::vector<Plane>& planes, int y, int width, const std::uint8_t* interleaved) {
    for (int channel = 0; channel < Channels; ++channel) {
        std::uint8_t* out = planes[static_cast<std::size_t>(channel)].row(y);
        for (int x = 0; x < width; ++x)
            out[x] = interleaved[x * Channels + channel];
    }
}

template <int Channels>
static void join(const std::vector<Plane>& planes, int y, int width, std::uint8_t* interleaved) {
    for (int channel = 0; channel < Channels; ++channel) {
        const std::uint8_t* in = planes[static_cast<std::size_t>(channel)].row(y);
        for (int x = 0; x < width; ++x)
            interleaved[x * Channels + channel] = in[x];
    }
}

void Picture::setRow(int y, const std::uint8_t* interleaved) {
    if (planeCount() == 1) return split<1>(mPlanes, y, size().width, interleaved);
    if (planeCount() == 3) return split<3>(mPlanes, y, size().width, interleaved);
    split<4>(mPlanes, y, size().width, interleaved);
}

void Picture::getRow(int y, std::uint8_t* interleaved) const {
    if (planeCount() == 1) return join<1>(mPlanes, y, size().width, interleaved);
    if (planeCount() == 3) return join<3>(mPlanes, y, size().width, interleaved);
    join<4>(mPlanes, y, size().width, interleaved);
}

}  // namespace qv::imaging
