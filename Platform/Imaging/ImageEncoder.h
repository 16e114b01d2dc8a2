#pragma once

#include "Picture.h"
#include "QVPlatform/Data.h"

#include <optional>

/// Encoders without any state: the same picture gives the same bytes. Nothing comes back where the format cannot hold
/// the picture. They throw `std::bad_alloc`.
namespace qv::imaging {

/// YCbCr in 4:2:0 or 4:4:4 and grey are encoded as they lie; RGB is converted and gets `sampling`; RGBA lies on white.
/// `quality` is 1…100.
std::optional<Data> encodeJPEG(Picture picture, int quality, Sampling sampling);

/// Eight bits per sample, straight alpha. YCbCr must not be subsampled.
std::optional<Data> encodePNG(Picture picture);

/// As `encodePNG`; uncompressed.
std::optional<Data> encodeTIFF(Picture picture);

}  // namespace qv::imaging
