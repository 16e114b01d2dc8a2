#include "ColourMath.h"
#include "ImageEncoder.h"
#include "TurboJPEG.h"

#include <array>
#include <cstddef>
#include <utility>

namespace qv::imaging {

namespace {

constexpr int kEncodeFlags = TJFLAG_ACCURATEDCT;

/// The bytes that the library allocates.
struct Encoded {
    unsigned char* bytes = nullptr;
    unsigned long count = 0;
    Encoded() = default;
    ~Encoded() { tjFree(bytes); }
    Encoded(const Encoded&) = delete;
    Encoded& operator=(const Encoded&) = delete;
};

int encodePlanes(const TurboJPEG& codec, const Picture& picture, int quality, Encoded& encoded) {
    std::array<const unsigned char*, 3> planes{};
    std::array<int, 3> strides{};
    for (std::size_t index = 0; index < picture.planeCount(); ++index) {
        planes[index] = picture.plane(index).row(0);
        strides[index] = static_cast<int>(picture.plane(index).stride());
    }
    return tjCompressFromYUVPlanes(codec.handle(), planes.data(), picture.size().width, strides.data(),
                                   picture.size().height, turboJPEGSampling(picture.layout()), &encoded.bytes,
                                   &encoded.count, quality, kEncodeFlags);
}

int encodeRGB(const TurboJPEG& codec, const Picture& picture, int quality, Sampling sampling, Encoded& encoded) {
    const PixelSize size = picture.size();
    const int pitch = size.width * 3;
    Data rows(static_cast<std::size_t>(pitch) * static_cast<std::size_t>(size.height));
    for (int y = 0; y < size.height; ++y)
        picture.getRow(y, rows.data() + std::ptrdiff_t{pitch} * y);
    return tjCompress2(codec.handle(), rows.data(), size.width, pitch, size.height, TJPF_RGB, &encoded.bytes,
                       &encoded.count, sampling == k420 ? TJSAMP_420 : TJSAMP_444, quality, kEncodeFlags);
}

}  // namespace

std::optional<Data> encodeJPEG(Picture picture, int quality, Sampling sampling) {
    constexpr int kMaxJPEGSide = 65500;  // what the library takes
    if (picture.size().width > kMaxJPEGSide || picture.size().height > kMaxJPEGSide) return std::nullopt;
    if (picture.model() == ColourModel::RGBA) picture = flattenedOnWhite(std::move(picture));
    const TurboJPEG codec(tjInitCompress());
    Encoded encoded;
    const int status = picture.model() == ColourModel::RGB ? encodeRGB(codec, picture, quality, sampling, encoded)
                                                           : encodePlanes(codec, picture, quality, encoded);
    if (!codec.isUsable(status)) return std::nullopt;
    return Data(encoded.bytes, encoded.bytes + encoded.count);
}

}  // namespace qv::imaging
