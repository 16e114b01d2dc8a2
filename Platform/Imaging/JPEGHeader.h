#pragma once

#include "Orientation.h"
#include "Plane.h"
#include "QVPlatform/Data.h"

#include <optional>

namespace qv::imaging {

/// What a JPEG says before its first scan.
struct JPEGHeader {
    /// How the samples are to be read.
    enum class Kind {
        Planar,  ///< grey or YCbCr
        RGB,     ///< three components that are red, green and blue
        CMYK     ///< four components, also YCCK
    };
    PixelSize size;
    Kind kind = Kind::Planar;
    /// Whether 0 means full ink, as Adobe's programs write CMYK.
    bool isInverted = false;
    /// Whether the decoder must hold the coefficients of the whole picture (progressive, or one scan per component).
    bool isBuffered = false;
    Orientation orientation;

    /// Reads it; nothing when it is broken or of a kind that is not decoded here (lossless, 12 bits, two components).
    static std::optional<JPEGHeader> read(const Data& data);
};

}  // namespace qv::imaging
