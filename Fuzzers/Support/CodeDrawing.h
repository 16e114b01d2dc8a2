#pragma once

#include <opencv2/core.hpp>

#include <cstdint>
#include <vector>

namespace fuzzing {

/// How many bytes a QR code of a version from 1 to 5 holds, at the lowest level of correction.
std::size_t roomOfCode(int version);

/// A QR code (ISO/IEC 18004) of that version with these bytes, whatever they say, and one of the eight masks: a pixel
/// for each module, 0 or 255. What is missing in the bytes is 0.
cv::Mat drawnCode(int version, int mask, std::vector<std::uint8_t> bytes);

}  // namespace fuzzing
