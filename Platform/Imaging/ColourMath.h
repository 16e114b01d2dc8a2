#pragma once

#include "Picture.h"

namespace qv::imaging {

/// Weights the colours of an RGBA picture with their opacity, in place.
void premultiply(Picture& picture);

/// The reverse; a colour brighter than its opacity allows becomes white, and a clear pixel black.
void unpremultiply(Picture& picture);

/// The RGB picture of an RGBA one that lies on white.
Picture flattenedOnWhite(Picture picture);

/// Spreads the samples of a YCbCr picture from the video range to the full one, in place.
void spreadVideoRange(Picture& picture);

/// The RGB picture of a YCbCr one without subsampling (ITU-T T.871, 7).
Picture convertedToRGB(Picture picture);

}  // namespace qv::imaging
