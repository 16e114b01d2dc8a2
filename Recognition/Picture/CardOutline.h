#pragma once

#include "Picture/PlaneMap.h"

#include <opencv2/core.hpp>

#include <array>
#include <optional>

namespace qv::recognition {

/// The corners of a card in a picture: top left, top right, bottom right, bottom left, as it lies there.
using Outline = std::array<cv::Point2f, 4>;

/// Finds the edge of a card that lies on something else. Nothing when no quadrilateral of a card's shape has its sides
/// borne out by edges in the picture: the card fills the frame, or lies white on white. Expects 8-bit BGR.
std::optional<Outline> findOutline(const cv::Mat& colour);

/// A picture of the card alone, seen from above, and how its points lie in the picture it came from.
struct Unwarped {
    cv::Mat picture;
    PlaneMap toSource;
};

/// The card inside the outline, its longer side `side` pixels long.
Unwarped unwarp(const cv::Mat& picture, const Outline& outline, int side);

}  // namespace qv::recognition
