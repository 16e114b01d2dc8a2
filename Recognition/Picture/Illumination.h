#pragma once

#include <opencv2/core.hpp>

namespace qv::recognition {

/// A grey picture (8 bit) with its light evened out: shadows and gradients go, and panels that carry light text on a
/// dark ground are inverted, so that text is dark on white everywhere. Same size as the picture given.
cv::Mat evenLight(const cv::Mat& grey);

/// The part of `evenLight` that says where print is lighter than its ground: 255 there, 0 elsewhere; same size as the
/// picture.
cv::Mat darkPanels(const cv::Mat& grey);

/// A picture whose every pixel is the darkest (on light ground) or lightest (on dark ground) of its colours, which
/// brings coloured print to full contrast. Expects 8-bit BGR, gives 8-bit grey.
cv::Mat strongestChannel(const cv::Mat& colour);

/// Whether there is anything in the picture that could be print: a wall or a black picture has no edges.
bool hasDetail(const cv::Mat& grey);

}  // namespace qv::recognition
