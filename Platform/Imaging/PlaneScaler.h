#pragma once

#include "Plane.h"

namespace qv::imaging {

/// One direction of a resampling: the stretch of `sourceCount` samples from `start`, `span` samples long, becomes
/// `count` samples. The stretch may lie partly outside the samples and need not be whole.
struct ScaleAxis {
    int sourceCount = 0;
    double start = 0;
    double span = 0;
    int count = 0;
    /// Whether the samples stay as they are.
    bool isIdentity() const { return start == 0 && span == count && sourceCount == count; }
    friend bool operator==(const ScaleAxis&, const ScaleAxis&) = default;
};

/// Resamples the upper left `horizontal.sourceCount` × `vertical.sourceCount` samples of a plane with a bicubic filter
/// (Catmull-Rom, widened when it reduces). Throws `std::bad_alloc` or `std::runtime_error`. Any thread may call.
Plane scaledPlane(const Plane& source, const ScaleAxis& horizontal, const ScaleAxis& vertical);

}  // namespace qv::imaging
