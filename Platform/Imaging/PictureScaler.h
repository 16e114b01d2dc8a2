#pragma once

#include "Orientation.h"
#include "Picture.h"

namespace qv::imaging {

/// Resamples a stored picture to `size` pixels, its chroma to `sampling`, and stands it upright: `size` is the upright
/// one. Planes that fit already are kept. Colours are weighted with their opacity. Throws `std::bad_alloc` or
/// `std::runtime_error`.
Picture scaledPicture(Picture stored, PixelSize size, Sampling sampling, const Orientation& orientation = {});

}  // namespace qv::imaging
