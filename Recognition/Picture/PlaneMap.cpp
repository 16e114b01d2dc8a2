#include "Picture/PlaneMap.h"

#include <algorithm>
#include <cmath>

namespace qv::recognition {

PlaneMap PlaneMap::scaledBy(double factorX, double factorY) {
    return PlaneMap(cv::Matx33d(1 / factorX, 0, 0, 0, 1 / factorY, 0, 0, 0, 1));
}

PlaneMap PlaneMap::turnedBy(int degrees, int width, int height) {
    const double w = width;
    const double h = height;
    switch (degrees) {
        case 90:
            return PlaneMap(cv::Matx33d(0, 1, 0, -1, 0, h, 0, 0, 1));
        case 180:
            return PlaneMap(cv::Matx33d(-1, 0, w, 0, -1, h, 0, 0, 1));
        case 270:
            return PlaneMap(cv::Matx33d(0, -1, w, 1, 0, 0, 0, 0, 1));
        default:
            return {};
    }
}

cv::Point2d PlaneMap::map(cv::Point2d point) const {
    const cv::Vec3d mapped = mMatrix * cv::Vec3d(point.x, point.y, 1);
    const double depth = std::abs(mapped[2]) < 1e-12 ? 1e-12 : mapped[2];
    return {mapped[0] / depth, mapped[1] / depth};
}

Box PlaneMap::map(const Box& box) const {
    const cv::Point2d corners[] = {map(cv::Point2d{box.x, box.y}), map(cv::Point2d{box.right(), box.y}),
                                   map(cv::Point2d{box.x, box.bottom()}), map(cv::Point2d{box.right(), box.bottom()})};
    const auto [left, right] = std::minmax({corners[0].x, corners[1].x, corners[2].x, corners[3].x});
    const auto [top, bottom] = std::minmax({corners[0].y, corners[1].y, corners[2].y, corners[3].y});
    return {static_cast<float>(left), static_cast<float>(top), static_cast<float>(right - left),
            static_cast<float>(bottom - top)};
}

}  // namespace qv::recognition
