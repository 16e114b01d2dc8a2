#include "Picture/JPEGDecoder.h"

#include <opencv2/imgproc.hpp>
#include <turbojpeg.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace qv::recognition {
namespace {

struct Header {
    int width = 0;
    int height = 0;
    int subsampling = 0;
    int colourSpace = 0;
};

struct CloseDecoder {
    void operator()(void* handle) const { tjDestroy(handle); }
};
using Decoder = std::unique_ptr<void, CloseDecoder>;

/// Whether the first frame header says "progressive": walks the marker segments up to it.
bool isProgressive(std::span<const std::uint8_t> bytes) {
    std::size_t at = 2;
    while (at + 4 <= bytes.size() && bytes[at] == 0xFF) {
        const std::uint8_t marker = bytes[at + 1];
        if (marker == 0xFF) {
            ++at;
            continue;
        }
        const bool isFrame = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (isFrame) return marker != 0xC0 && marker != 0xC1;
        if (marker == 0xDA) return false;
        at += 2U + (static_cast<std::size_t>(bytes[at + 2]) << 8U) + bytes[at + 3];
    }
    return true;
}

std::optional<Header> readHeader(void* decoder, std::span<const std::uint8_t> bytes) {
    Header header;
    if (tjDecompressHeader3(decoder, bytes.data(), static_cast<unsigned long>(bytes.size()), &header.width,
                            &header.height, &header.subsampling, &header.colourSpace) != 0) {
        return std::nullopt;
    }
    const std::int64_t pixels = static_cast<std::int64_t>(header.width) * header.height;
    const std::int64_t bound = isProgressive(bytes) ? kMaximumProgressivePixels : kMaximumPixels;
    if (pixels <= 0 || pixels > bound) return std::nullopt;
    return header;
}

cv::Size decodedSize(const Header& header) {
    int count = 0;
    const tjscalingfactor* factors = tjGetScalingFactors(&count);
    cv::Size best(header.width, header.height);
    for (int i = 0; i < count; ++i) {
        const cv::Size scaled(TJSCALED(header.width, factors[i]), TJSCALED(header.height, factors[i]));
        const int side = std::max(scaled.width, scaled.height);
        if (side >= kDecodedSide && side < std::max(best.width, best.height)) best = scaled;
    }
    return best;
}

/// Writers of four-colour JPEGs store the inks inverted, so each is already a share of light.
cv::Mat colourFromInks(const cv::Mat& inks) {
    cv::Mat colour(inks.size(), CV_8UC3);
    colour.forEach<cv::Vec3b>([&inks](cv::Vec3b& pixel, const int* at) {
        const auto& ink = inks.at<cv::Vec4b>(at[0], at[1]);
        for (int i = 0; i < 3; ++i)
            pixel[i] = static_cast<std::uint8_t>(ink[2 - i] * ink[3] / 255);
    });
    return colour;
}

}  // namespace

std::optional<SentPicture> decodeJPEG(std::span<const std::uint8_t> bytes) {
    const Decoder decoder(tjInitDecompress());
    if (!decoder || bytes.size() < 4) return std::nullopt;
    const auto header = readHeader(decoder.get(), bytes);
    if (!header) return std::nullopt;
    const bool fourInks = header->colourSpace == TJCS_CMYK || header->colourSpace == TJCS_YCCK;
    const cv::Size size = decodedSize(*header);
    cv::Mat pixels(size, fourInks ? CV_8UC4 : CV_8UC3, cv::Scalar::all(255));
    const int failed =
        tjDecompress2(decoder.get(), bytes.data(), static_cast<unsigned long>(bytes.size()), pixels.data, size.width,
                      static_cast<int>(pixels.step), size.height, fourInks ? TJPF_CMYK : TJPF_BGR, TJFLAG_LIMITSCANS);
    if (failed != 0 && tjGetErrorCode(decoder.get()) == TJERR_FATAL) return std::nullopt;
    return SentPicture{fourInks ? colourFromInks(pixels) : pixels, header->width, header->height};
}

}  // namespace qv::recognition
