#pragma once

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <turbojpeg.h>

#include <cstdint>
#include <string>
#include <vector>

namespace qv::recognition {

/// A white card with the given lines drawn on it, large enough to be read without doubt.
inline cv::Mat drawnCard(const std::vector<std::string>& lines, cv::Size size = {1000, 600}) {
    cv::Mat card(size, CV_8UC3, cv::Scalar::all(255));
    int y = 110;
    for (const auto& line : lines) {
        cv::putText(card, line, {70, y}, cv::FONT_HERSHEY_SIMPLEX, y == 110 ? 2.0 : 1.2, cv::Scalar::all(0), 3,
                    cv::LINE_AA);
        y += y == 110 ? 70 : 62;
    }
    return card;
}

inline std::vector<std::uint8_t> asJPEG(const cv::Mat& picture, int flags = 0) {
    tjhandle encoder = tjInitCompress();
    unsigned char* bytes = nullptr;
    unsigned long count = 0;
    tjCompress2(encoder, picture.data, picture.cols, static_cast<int>(picture.step), picture.rows, TJPF_BGR, &bytes,
                &count, TJSAMP_420, 90, flags);
    std::vector<std::uint8_t> jpeg(bytes, bytes + count);
    tjFree(bytes);
    tjDestroy(encoder);
    return jpeg;
}

}  // namespace qv::recognition
