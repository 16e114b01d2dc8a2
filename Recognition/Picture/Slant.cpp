#include "Picture/Slant.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace qv::recognition {
namespace {

constexpr int kSearchSide = 420;
constexpr double kWidest = 20;
constexpr double kStep = 0.5;   // degrees between two tries
constexpr double kGain = 1.25;  // how much sharper the lines must come out to believe in a slant

cv::Mat turnedBy(const cv::Mat& picture, double degrees, int border) {
    const cv::Point2f centre(static_cast<float>(picture.cols) / 2, static_cast<float>(picture.rows) / 2);
    cv::Mat result;
    cv::warpAffine(picture, result, cv::getRotationMatrix2D(centre, degrees, 1), picture.size(), cv::INTER_LINEAR,
                   border, cv::Scalar(0));
    return result;
}

/// Lines of text make the sums over rows rise and fall steeply when they lie level.
double steepness(const cv::Mat& ink, int dimension) {
    cv::Mat sums;
    cv::reduce(ink, sums, dimension, cv::REDUCE_SUM, CV_64F);
    const cv::Mat line = sums.reshape(1, 1);
    double total = 0;
    for (int i = 1; i < line.cols; ++i) {
        const double step = line.at<double>(0, i) - line.at<double>(0, i - 1);
        total += step * step;
    }
    return total;
}

}  // namespace

double textSlant(const cv::Mat& even) {
    const double scale = std::min(1.0, static_cast<double>(kSearchSide) / std::max(even.cols, even.rows));
    cv::Mat ink;
    cv::resize(255 - even, ink, {}, scale, scale, cv::INTER_AREA);
    cv::threshold(ink, ink, 60, 0, cv::THRESH_TOZERO);
    double best = 0;
    double sharpest = 0;
    double level = 0;
    constexpr int kSteps = static_cast<int>(kWidest / kStep);
    for (int step = -kSteps; step <= kSteps; ++step) {
        const double slant = step * kStep;
        const cv::Mat tried = turnedBy(ink, slant, cv::BORDER_CONSTANT);
        const double sharpness = std::max(steepness(tried, 1), steepness(tried, 0));
        if (step == 0) level = sharpness;
        if (sharpness > sharpest) {
            sharpest = sharpness;
            best = slant;
        }
    }
    return sharpest > kGain * level ? best : 0;
}

Unwarped straightened(const cv::Mat& picture, double slant) {
    const cv::Point2f centre(static_cast<float>(picture.cols) / 2, static_cast<float>(picture.rows) / 2);
    const cv::Mat turn = cv::getRotationMatrix2D(centre, slant, 1);
    Unwarped result;
    cv::warpAffine(picture, result.picture, turn, picture.size(), cv::INTER_CUBIC, cv::BORDER_REPLICATE);
    cv::Mat back;
    cv::invertAffineTransform(turn, back);
    const auto at = [&back](int row, int column) { return back.at<double>(row, column); };
    result.toSource = PlaneMap(cv::Matx33d(at(0, 0), at(0, 1), at(0, 2), at(1, 0), at(1, 1), at(1, 2), 0, 0, 1));
    return result;
}

}  // namespace qv::recognition
