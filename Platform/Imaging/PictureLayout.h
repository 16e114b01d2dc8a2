#pragma once

#include "Plane.h"

#include <cstddef>

namespace qv::imaging {

/// What the planes of a picture mean, in their order. `YCbCr` is BT.601 as in JFIF; alpha is not premultiplied.
enum class ColourModel { Grey, YCbCr, RGB, RGBA };

/// Which samples stand for darkest and brightest in a YCbCr picture: 0…255 as in JFIF, or 16…235 (chroma 16…240) as in
/// video (ITU-R BT.601). Only decoders make the latter; resampling a picture makes it full.
enum class SampleRange { Full, Video };

/// How many pixels one chroma sample spans in each direction (2×2 is 4:2:0). Chroma is centred, as in JFIF.
struct Sampling {
    int x = 1;
    int y = 1;
    Sampling transposed() const { return {y, x}; }
    friend bool operator==(const Sampling&, const Sampling&) = default;
};

inline constexpr Sampling k444{1, 1};
inline constexpr Sampling k420{2, 2};

/// How a picture lies in planes, as planar JPEG has it: the luma plane is padded to a multiple of the chroma sampling,
/// and a chroma plane is that divided by the sampling. Only YCbCr has a sampling other than 1×1.
struct PictureLayout {
    ColourModel model = ColourModel::RGB;
    PixelSize size;
    Sampling sampling = k444;
    SampleRange range = SampleRange::Full;

    std::size_t planeCount() const;
    Sampling samplingOfPlane(std::size_t index) const;
    PixelSize sizeOfPlane(std::size_t index) const;
    PictureLayout transposed() const { return {model, size.transposed(), sampling.transposed(), range}; }
};

}  // namespace qv::imaging
