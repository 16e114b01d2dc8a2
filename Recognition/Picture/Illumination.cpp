#include "Picture/Illumination.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace qv::recognition {
namespace {

constexpr int kGroundSide = 256;     // the ground is smooth: a small picture shows it
constexpr int kGroundWindow = 31;    // wider than the strokes of large type, narrower than a panel
constexpr double kDarkGround = 112;  // below this, print is expected to be lighter than its ground
// In a shadow paper can be as dark as a panel: between these, what stands out from the ground tells print on either.
constexpr double kBlack = 24;
constexpr double kPaper = 170;
constexpr double kGrain = 12;
constexpr double kPlainer = 4;
constexpr double kSmallestRange = 48;  // keeps noise on a flat ground from being stretched to print
constexpr double kDetailContrast = 14;

cv::Mat shrunk(const cv::Mat& picture) {
    const double scale = std::min(1.0, static_cast<double>(kGroundSide) / std::max(picture.cols, picture.rows));
    cv::Mat small;
    cv::resize(picture, small, {std::max(1, cvRound(picture.cols * scale)), std::max(1, cvRound(picture.rows * scale))},
               0, 0, cv::INTER_AREA);
    return small;
}

/// The brightness of paper or panel behind every pixel, at a small scale.
cv::Mat groundOf(const cv::Mat& grey) {
    cv::Mat ground;
    cv::medianBlur(shrunk(grey), ground, kGroundWindow);
    return ground;
}

cv::Mat enlargedTo(const cv::Mat& picture, cv::Size size) {
    cv::Mat large;
    cv::resize(picture, large, size, 0, 0, cv::INTER_LINEAR);
    return large;
}

/// How much stands out around every pixel, at a small scale: `difference` holds what is lighter or darker than the
/// ground. Squares, so that print counts for more than grain.
cv::Mat energyOf(const cv::Mat& difference) {
    cv::Mat squares;
    difference.convertTo(squares, CV_32F);
    cv::threshold(squares, squares, kGrain, 0, cv::THRESH_TOZERO);
    squares = squares.mul(squares);
    const double scale = std::min(1.0, static_cast<double>(kGroundSide) / std::max(squares.cols, squares.rows));
    cv::Mat small;
    cv::resize(squares, small, {std::max(1, cvRound(squares.cols * scale)), std::max(1, cvRound(squares.rows * scale))},
               0, 0, cv::INTER_AREA);
    cv::boxFilter(small, small, CV_32F, {kGroundWindow, kGroundWindow});
    return small;
}

}  // namespace

cv::Mat darkPanels(const cv::Mat& grey) {
    const cv::Mat ground = groundOf(grey);
    const cv::Mat behind = enlargedTo(ground, grey.size());
    const cv::Mat lighter = energyOf(grey - behind);
    const cv::Mat darker = energyOf(behind - grey);
    cv::Mat panels = ground < kDarkGround;
    const cv::Mat unsure = (ground > kBlack) & (ground < kPaper);
    panels.setTo(255, unsure & (lighter > darker * kPlainer));
    panels.setTo(0, unsure & (darker > lighter * kPlainer));
    return enlargedTo(panels, grey.size());
}

cv::Mat evenLight(const cv::Mat& grey) {
    const cv::Mat ground = enlargedTo(groundOf(grey), grey.size());
    const cv::Mat panels = darkPanels(grey);
    cv::Mat even(grey.size(), CV_8U);
    for (int y = 0; y < grey.rows; ++y) {
        const auto* in = grey.ptr<std::uint8_t>(y);
        const auto* base = ground.ptr<std::uint8_t>(y);
        const auto* panel = panels.ptr<std::uint8_t>(y);
        auto* out = even.ptr<std::uint8_t>(y);
        for (int x = 0; x < grey.cols; ++x) {
            const double paper = base[x];
            const bool dark = panel[x] > 127;
            const double ink = dark ? in[x] - paper : paper - in[x];
            const double range = std::max(kSmallestRange, dark ? 255 - paper : paper);
            out[x] = cv::saturate_cast<std::uint8_t>(255 - 255 * ink / range);
        }
    }
    return even;
}

cv::Mat strongestChannel(const cv::Mat& colour) {
    cv::Mat grey;
    cv::cvtColor(colour, grey, cv::COLOR_BGR2GRAY);
    const cv::Mat dark = darkPanels(grey);
    cv::Mat strongest(colour.size(), CV_8U);
    for (int y = 0; y < colour.rows; ++y) {
        const auto* in = colour.ptr<cv::Vec3b>(y);
        const auto* isDark = dark.ptr<std::uint8_t>(y);
        auto* out = strongest.ptr<std::uint8_t>(y);
        for (int x = 0; x < colour.cols; ++x) {
            const auto& pixel = in[x];
            out[x] =
                isDark[x] > 127 ? std::max({pixel[0], pixel[1], pixel[2]}) : std::min({pixel[0], pixel[1], pixel[2]});
        }
    }
    return strongest;
}

bool hasDetail(const cv::Mat& grey) {
    const cv::Mat small = shrunk(grey);
    cv::Mat smooth;
    cv::GaussianBlur(small, smooth, {9, 9}, 0);
    cv::Mat difference;
    cv::absdiff(small, smooth, difference);
    return cv::countNonZero(difference > kDetailContrast) > static_cast<int>(small.total() / 5000) + 4;
}

}  // namespace qv::recognition
