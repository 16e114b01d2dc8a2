#pragma once

#include "Picture/Box.h"

#include <opencv2/core.hpp>

namespace qv::recognition {

/// How the points of one picture lie in another: a projective map of the plane. Made step by step while a picture is
/// enlarged, unwarped and turned, so that whatever is found at the end can be said in the coordinates of the picture
/// that was sent. A value without shared state.
class PlaneMap {
  public:
    PlaneMap() : mMatrix(cv::Matx33d::eye()) {}
    explicit PlaneMap(const cv::Matx33d& matrix) : mMatrix(matrix) {}

    /// Points of a picture enlarged by `factor`, in the picture before.
    static PlaneMap scaledBy(double factorX, double factorY);
    /// Points of a picture turned clockwise by `degrees` (0, 90, 180, 270), in the picture before, which had `width` ×
    /// `height` pixels.
    static PlaneMap turnedBy(int degrees, int width, int height);

    /// First `inner`, then this map: `inner` leads from the newest picture to the one this map starts from.
    PlaneMap after(const PlaneMap& inner) const { return PlaneMap(mMatrix * inner.mMatrix); }

    cv::Point2d map(cv::Point2d point) const;
    /// The upright box around the four mapped corners.
    Box map(const Box& box) const;

  private:
    cv::Matx33d mMatrix;
};

}  // namespace qv::recognition
