#include "JPEGDecoder.h"

#include "TurboJPEG.h"

#include <array>
#include <cstdint>
#include <span>
#include <utility>

namespace qv::imaging {

namespace {

// A file of a few bytes can ask for any number of passes over a large picture.
constexpr int kDecodeFlags = TJFLAG_LIMITSCANS;

struct Scale {
    int numerator = 1;
    int denominator = 1;
    PixelSize size;  ///< of the picture at this scale, the last sample of each direction perhaps cut by its edge

    double content(int pixels) const { return static_cast<double>(pixels) * numerator / denominator; }
    bool covers(PixelSize stored, PixelSize target) const {
        return content(stored.width) >= target.width && content(stored.height) >= target.height;
    }
};

Scale scaleFrom(const tjscalingfactor& factor, PixelSize stored) {
    return {factor.num, factor.denom, {TJSCALED(stored.width, factor), TJSCALED(stored.height, factor)}};
}

// The library is told sizes, not factors, and takes the first of its list that gives them.
Scale scaleTakenFor(PixelSize size, PixelSize stored, std::span<const tjscalingfactor> factors) {
    for (const tjscalingfactor& factor : factors) {
        const Scale scale = scaleFrom(factor, stored);
        if (scale.size.width <= size.width && scale.size.height <= size.height) return scale;
    }
    return {1, 1, stored};
}

// The library transforms whole blocks with vector instructions, but those reduced to 5/8…7/8 one number at a time: they
// take longer than the whole picture.
bool isSlowerThanFullSize(const tjscalingfactor& factor) {
    return factor.num < factor.denom && 2 * factor.num > factor.denom;
}

/// The cheapest scale of the library's list that covers the target: the smallest, as a rule. The full size when none
/// does.
Scale cheapestCoveringScale(PixelSize stored, PixelSize target) {
    int count = 0;
    const tjscalingfactor* first = tjGetScalingFactors(&count);
    const std::span<const tjscalingfactor> factors(first, first ? static_cast<std::size_t>(count) : 0);
    Scale best{1, 1, stored};
    const bool fullSizeFits = isWithin(stored.width, stored.height, kMaxBufferedPixels);
    for (const tjscalingfactor& factor : factors) {
        if (fullSizeFits && isSlowerThanFullSize(factor)) continue;
        const Scale scale = scaleFrom(factor, stored);
        if (scale.covers(stored, target) && scale.content(stored.width) < best.content(stored.width)) best = scale;
    }
    return scaleTakenFor(best.size, stored, factors);
}

std::optional<Picture> decodePlanes(const Data& data, const TurboJPEG& codec, const PictureLayout& layout) {
    Picture picture(layout);
    std::array<unsigned char*, 3> planes{};
    std::array<int, 3> strides{};
    for (std::size_t index = 0; index < picture.planeCount(); ++index) {
        planes[index] = picture.plane(index).row(0);
        strides[index] = static_cast<int>(picture.plane(index).stride());
    }
    const int status = tjDecompressToYUVPlanes(codec.handle(), data.data(), data.size(), planes.data(),
                                               layout.size.width, strides.data(), layout.size.height, kDecodeFlags);
    if (!codec.isUsable(status)) return std::nullopt;
    return picture;
}

/// The decoded samples as they are interleaved, a plane of rows; nothing when they do not decode.
std::optional<Plane> decodeInterleaved(const Data& data, const TurboJPEG& codec, PixelSize size, int format) {
    Plane rows({size.width * tjPixelSize[format], size.height});
    const int status = tjDecompress2(codec.handle(), data.data(), data.size(), rows.row(0), size.width,
                                     static_cast<int>(rows.stride()), size.height, format, kDecodeFlags);
    if (!codec.isUsable(status)) return std::nullopt;
    return rows;
}

// Ink is what is missing of the light, and black takes away from every colour alike.
void convertFromCMYK(const std::uint8_t* cmyk, std::uint8_t* rgb, int width, bool isInverted) {
    const unsigned flip = isInverted ? 0 : 255;
    for (int x = 0; x < width; ++x, cmyk += 4, rgb += 3) {
        const unsigned light = cmyk[3] ^ flip;
        for (int index = 0; index < 3; ++index) {
            rgb[index] = static_cast<std::uint8_t>(((cmyk[index] ^ flip) * light + 127) / 255);
        }
    }
}

std::optional<Picture> decodeRGB(const Data& data, const TurboJPEG& codec, PixelSize size) {
    const std::optional<Plane> rows = decodeInterleaved(data, codec, size, TJPF_RGB);
    if (!rows) return std::nullopt;
    Picture picture({ColourModel::RGB, size, k444});
    for (int y = 0; y < size.height; ++y)
        picture.setRow(y, rows->row(y));
    return picture;
}

std::optional<Picture> decodeCMYK(const Data& data, const TurboJPEG& codec, PixelSize size, bool isInverted) {
    const std::optional<Plane> rows = decodeInterleaved(data, codec, size, TJPF_CMYK);
    if (!rows) return std::nullopt;
    Picture picture({ColourModel::RGB, size, k444});
    Data row(static_cast<std::size_t>(size.width) * 3);
    for (int y = 0; y < size.height; ++y) {
        convertFromCMYK(rows->row(y), row.data(), size.width, isInverted);
        picture.setRow(y, row.data());
    }
    return picture;
}

/// The layout in which the library decodes to planes; nothing when it cannot (a sampling that it has no name for).
std::optional<PictureLayout> planarLayout(const Data& data, const TurboJPEG& codec, PixelSize size) {
    int width = 0;
    int height = 0;
    int samplingCode = -1;
    int space = -1;
    const int status =
        tjDecompressHeader3(codec.handle(), data.data(), data.size(), &width, &height, &samplingCode, &space);
    if (!codec.isUsable(status)) return std::nullopt;
    if (samplingCode == TJSAMP_GRAY) return PictureLayout{ColourModel::Grey, size, k444};
    const std::optional<Sampling> sampling = samplingFromTurboJPEG(samplingCode);
    if (!sampling || space != TJCS_YCbCr) return std::nullopt;
    return PictureLayout{ColourModel::YCbCr, size, *sampling};
}

}  // namespace

JPEGDecoder::JPEGDecoder(const Data& data, const JPEGHeader& header)
    : ImageDecoder(data, {header.size, header.orientation}), mJPEG(header) {
}

std::unique_ptr<const ImageDecoder> JPEGDecoder::create(const Data& data) {
    const std::optional<JPEGHeader> header = JPEGHeader::read(data);
    if (!header) return nullptr;
    const std::int64_t limit = header->isBuffered ? kMaxBufferedPixels : kMaxPixels;
    if (!isWithin(header->size.width, header->size.height, limit)) return nullptr;
    return std::unique_ptr<const ImageDecoder>(new JPEGDecoder(data, *header));
}

std::optional<Picture> JPEGDecoder::decodeAt(PixelSize size) const {
    const TurboJPEG codec(tjInitDecompress());
    if (mJPEG.kind == JPEGHeader::Kind::CMYK) return decodeCMYK(data(), codec, size, mJPEG.isInverted);
    std::optional<PictureLayout> layout;
    if (mJPEG.kind == JPEGHeader::Kind::Planar) layout = planarLayout(data(), codec, size);
    return layout ? decodePlanes(data(), codec, *layout) : decodeRGB(data(), codec, size);
}

std::optional<Picture> JPEGDecoder::decode(PixelSize target) const {
    const Scale scale = cheapestCoveringScale(mJPEG.size, target);
    if (!isWithin(scale.size.width, scale.size.height, kMaxBufferedPixels)) return std::nullopt;
    std::optional<Picture> picture = decodeAt(scale.size);
    if (picture) picture->setContentSize(scale.content(mJPEG.size.width), scale.content(mJPEG.size.height));
    return picture;
}

}  // namespace qv::imaging
