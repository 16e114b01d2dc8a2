#pragma once

#include "Support/TestPixels.h"

#include <vector>

namespace benchmarksupport {

/// The luma of a picture (BT.601), as fractions.
struct Luma {
    int width = 0;
    int height = 0;
    std::vector<float> samples;
};

/// Transparent pixels lie on white.
Luma lumaOf(const testsupport::Pixels& pixels);

/// Resampled with a Lanczos filter of three lobes, widened when it reduces.
Luma resampledWithLanczos(const Luma& source, int width, int height);

/// Mean structural similarity of two pictures of one size, over windows of 8 × 8 pixels, 4 apart (Wang et al., "Image
/// quality assessment: from error visibility to structural similarity", 2004).
double structuralSimilarity(const Luma& a, const Luma& b);

}  // namespace benchmarksupport
