#pragma once

#include "Picture/CardOutline.h"

#include <opencv2/core.hpp>

namespace qv::recognition {

/// By how many degrees (−20 to 20, clockwise positive) the lines of text in a picture with evened light lean, whether
/// they run across or along it; 0 when it cannot be told.
double textSlant(const cv::Mat& even);

/// The picture turned back by the slant, around its middle and in the same size.
Unwarped straightened(const cv::Mat& picture, double slant);

}  // namespace qv::recognition
