#pragma once

#include <ZXing/BarcodeFormat.h>
#include <ZXing/BitMatrix.h>
#include <ZXing/CharacterSet.h>
#include <ZXing/MultiFormatWriter.h>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include <string>

namespace qv::recognition {

/// Draws a QR code, with its quiet zone, into a place on a card of one channel or three.
inline void drawCode(cv::Mat& card, const cv::Rect& place, const std::string& text) {
    ZXing::MultiFormatWriter writer(ZXing::BarcodeFormat::QRCode);
    writer.setEncoding(ZXing::CharacterSet::UTF8).setMargin(3);
    const auto modules = writer.encode(text, place.width, place.height);
    cv::Mat code(modules.height(), modules.width(), CV_8U);
    for (int y = 0; y < modules.height(); ++y) {
        for (int x = 0; x < modules.width(); ++x)
            code.at<unsigned char>(y, x) = modules.get(x, y) ? 0 : 255;
    }
    if (card.channels() == 3) cv::cvtColor(code, code, cv::COLOR_GRAY2BGR);
    cv::resize(code, card(place), place.size(), 0, 0, cv::INTER_AREA);
}

}  // namespace qv::recognition
