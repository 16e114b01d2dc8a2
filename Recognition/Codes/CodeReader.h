#pragma once

#include "Picture/Box.h"

#include <opencv2/core.hpp>

#include <array>
#include <string>
#include <vector>

namespace qv::recognition {

/// A QR code in a picture: what it says, as UTF-8, and where it lies.
struct Code {
    std::string text;
    std::array<cv::Point2f, 4> corners;

    /// The upright box around the corners.
    Box box() const;
};

/// The QR codes in an 8-bit grey picture, in any turn, dark on light or light on dark; at most four. A code that names
/// no encoding is taken as UTF-8 where its bytes are that. Any thread.
std::vector<Code> readCodes(const cv::Mat& grey);

/// Paints codes over with the colour around them, so that their modules are not read as letters.
void eraseCodes(cv::Mat& colour, const std::vector<Code>& codes);

}  // namespace qv::recognition
