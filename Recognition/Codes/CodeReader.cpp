#include "Codes/CodeReader.h"

#include "Text/Letters.h"

#define ZX_USE_UTF8 1
#include <ZXing/ReadBarcode.h>
#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <exception>

namespace qv::recognition {
namespace {

constexpr int kMostCodes = 4;
constexpr std::size_t kLongestText = 8192;  // more than one code can hold
constexpr float kQuietZone = 1.06F;         // share of a code that is painted over

bool isUTF8(const std::string& bytes) {
    const auto points = codePoints(bytes);
    return std::find(points.begin(), points.end(), U'\uFFFD') == points.end();
}

/// Most generators write UTF-8 without saying so, and a guess by frequencies errs on names with one accent.
std::string textOf(const ZXing::Result& result) {
    const auto& bytes = result.bytes();
    std::string plain(bytes.begin(), bytes.end());
    std::string text = !result.hasECI() && isUTF8(plain) ? std::move(plain) : result.text();
    if (text.size() > kLongestText) text.clear();
    return text;
}

Code codeOf(const ZXing::Result& result) {
    Code code{textOf(result), {}};
    for (std::size_t i = 0; i < code.corners.size(); ++i) {
        const auto corner = result.position()[i];
        code.corners[i] = {static_cast<float>(corner.x), static_cast<float>(corner.y)};
    }
    return code;
}

/// A code of a kind that nobody has defined makes the library throw: it is no code, and the card's print is read.
ZXing::Results resultsIn(const cv::Mat& grey) try {
    ZXing::DecodeHints hints;
    hints.setFormats(ZXing::BarcodeFormat::QRCode).setMaxNumberOfSymbols(kMostCodes);
    const ZXing::ImageView view(grey.data, grey.cols, grey.rows, ZXing::ImageFormat::Lum, static_cast<int>(grey.step));
    return ZXing::ReadBarcodes(view, hints);
} catch (const std::exception&) {
    return {};
}

std::vector<Code> codesIn(const cv::Mat& grey) {
    std::vector<Code> codes;
    for (const auto& result : resultsIn(grey)) {
        Code code = codeOf(result);
        if (!code.text.empty() && codes.size() < kMostCodes) codes.push_back(std::move(code));
    }
    return codes;
}

std::vector<cv::Point> grown(const std::array<cv::Point2f, 4>& corners) {
    cv::Point2f centre;
    for (const auto& corner : corners)
        centre += corner * 0.25F;
    std::vector<cv::Point> points;
    points.reserve(corners.size());
    for (const auto& corner : corners)
        points.emplace_back(centre + (corner - centre) * kQuietZone);
    return points;
}

/// The colour along the outline: the quiet zone, which is in the code's own light.
cv::Scalar colourAlong(const cv::Mat& colour, const std::vector<cv::Point>& outline) {
    cv::Mat mask = cv::Mat::zeros(colour.size(), CV_8U);
    cv::polylines(mask, outline, true, cv::Scalar(255), 2);
    return cv::countNonZero(mask) > 0 ? cv::mean(colour, mask) : cv::Scalar::all(255);
}

}  // namespace

Box Code::box() const {
    const auto [left, right] =
        std::minmax_element(corners.begin(), corners.end(), [](auto a, auto b) { return a.x < b.x; });
    const auto [top, bottom] =
        std::minmax_element(corners.begin(), corners.end(), [](auto a, auto b) { return a.y < b.y; });
    return {left->x, top->y, right->x - left->x, bottom->y - top->y};
}

std::vector<Code> readCodes(const cv::Mat& grey) {
    auto codes = codesIn(grey);
    return codes.empty() ? codesIn(255 - grey) : codes;
}

void eraseCodes(cv::Mat& colour, const std::vector<Code>& codes) {
    for (const auto& code : codes) {
        const auto outline = grown(code.corners);
        cv::fillConvexPoly(colour, outline, colourAlong(colour, outline));
    }
}

}  // namespace qv::recognition
