#include "WebPDecoder.h"

#include <webp/decode.h>

#include <cstring>
#include <string_view>

namespace qv::imaging {

using namespace std::string_view_literals;

namespace {

std::size_t littleEndian32(const std::uint8_t* bytes) {
    return bytes[0] | static_cast<std::size_t>(bytes[1]) << 8 | static_cast<std::size_t>(bytes[2]) << 16 |
           static_cast<std::size_t>(bytes[3]) << 24;
}

/// The orientation in the EXIF chunk, which may lie before or behind the picture (WebP container, "Metadata").
Orientation orientationIn(const Data& data) {
    constexpr std::size_t kChunkHeader = 8;
    std::size_t offset = 12;
    while (offset + kChunkHeader <= data.size()) {
        const std::size_t available = data.size() - offset - kChunkHeader;
        const std::size_t size = littleEndian32(data.data() + offset + 4);
        if (size > available) return {};
        const std::uint8_t* payload = data.data() + offset + kChunkHeader;
        if (std::memcmp(data.data() + offset, "EXIF", 4) == 0) {
            // Some writers keep the signature that JPEG needs.
            const bool isSigned = size >= 6 && std::memcmp(payload, "Exif\0\0", 6) == 0;
            return isSigned ? Orientation::fromExif(payload + 6, size - 6) : Orientation::fromExif(payload, size);
        }
        offset += kChunkHeader + size + size % 2;
    }
    return {};
}

bool decodeInto(Plane& rows, const Data& data, bool hasAlpha) {
    auto* decode = hasAlpha ? WebPDecodeRGBAInto : WebPDecodeRGBInto;
    const auto count = static_cast<std::size_t>(rows.stride()) * static_cast<std::size_t>(rows.height());
    return decode(data.data(), data.size(), rows.row(0), count, static_cast<int>(rows.stride())) != nullptr;
}

std::optional<Picture> decodeInterleaved(const Data& data, PixelSize size, bool hasAlpha) {
    Plane rows({size.width * (hasAlpha ? 4 : 3), size.height});
    if (!decodeInto(rows, data, hasAlpha)) return std::nullopt;
    Picture picture({hasAlpha ? ColourModel::RGBA : ColourModel::RGB, size, k444});
    for (int y = 0; y < size.height; ++y)
        picture.setRow(y, rows.row(y));
    return picture;
}

std::size_t bytesOf(const Plane& plane) {
    return static_cast<std::size_t>(plane.stride()) * static_cast<std::size_t>(plane.height());
}

/// As the samples lie in the file: BT.601 in the video range, chroma halved both ways and centred (RFC 6386, 2).
std::optional<Picture> decodePlanes(const Data& data, PixelSize size) {
    Picture picture({ColourModel::YCbCr, size, k420, SampleRange::Video});
    Plane& luma = picture.plane(0);
    Plane& blue = picture.plane(1);
    Plane& red = picture.plane(2);
    const std::uint8_t* decoded = WebPDecodeYUVInto(
        data.data(), data.size(), luma.row(0), bytesOf(luma), static_cast<int>(luma.stride()), blue.row(0),
        bytesOf(blue), static_cast<int>(blue.stride()), red.row(0), bytesOf(red), static_cast<int>(red.stride()));
    if (!decoded) return std::nullopt;
    return picture;
}

}  // namespace

std::unique_ptr<const ImageDecoder> WebPDecoder::create(const Data& data) {
    WebPBitstreamFeatures features;
    if (WebPGetFeatures(data.data(), data.size(), &features) != VP8_STATUS_OK || features.has_animation) return nullptr;
    if (!isWithin(features.width, features.height, kMaxBufferedPixels)) return nullptr;
    return std::unique_ptr<const ImageDecoder>(
        new WebPDecoder(data, {{features.width, features.height}, orientationIn(data)}));
}

std::optional<Picture> WebPDecoder::decode(PixelSize) const {
    constexpr int kLossy = 1;
    WebPBitstreamFeatures features;
    if (WebPGetFeatures(data().data(), data().size(), &features) != VP8_STATUS_OK) return std::nullopt;
    const bool isPlanar = features.format == kLossy && features.has_alpha == 0;
    return isPlanar ? decodePlanes(data(), header().size)
                    : decodeInterleaved(data(), header().size, features.has_alpha != 0);
}

}  // namespace qv::imaging
