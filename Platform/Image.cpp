#include "QVPlatform/Image.h"

#include "Imaging/ImageDecoder.h"
#include "Imaging/ImageEncoder.h"
#include "Imaging/PictureScaler.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <fstream>
#include <new>
#include <system_error>
#include <utility>

namespace qv {

using imaging::ImageDecoder;
using imaging::Picture;
using imaging::PixelSize;
using imaging::Sampling;

/// What an image is made of: encoded bytes with their decoder, or a drawing of another image.
class Image::Impl {
  public:
    explicit Impl(Data data) : mData(std::move(data)), mDecoder(ImageDecoder::forData(mData)) {
        if (!mDecoder) return;
        mPixels = mDecoder->header().orientation.turned(mDecoder->header().size);
        mSize = {static_cast<double>(mPixels.width), static_cast<double>(mPixels.height)};
    }
    Impl(Size size, std::shared_ptr<const Image> drawing) : mDrawing(std::move(drawing)) {
        if (!mDrawing || !mDrawing->isValid()) return;
        mPixels = pixelsOf(size);
        if (isValid()) mSize = size;
    }

    bool isValid() const { return mPixels.width > 0; }
    Size size() const { return mSize; }
    PixelSize pixels() const { return mPixels; }
    const Data& data() const { return mData; }

    /// The upright picture at the given size; nothing when it does not decode.
    std::optional<Picture> render(PixelSize pixels, Sampling sampling) const {
        if (!isValid()) return std::nullopt;
        return mDecoder ? decode(pixels, sampling) : draw(pixels, sampling);
    }

  private:
    /// Zero for a size that no picture has.
    static PixelSize pixelsOf(Size size) {
        const auto side = [](double length) {
            if (!(length > 0 && length < imaging::kMaxSide)) return 0;
            return std::max(1, static_cast<int>(std::lround(length)));
        };
        const PixelSize pixels{side(size.width), side(size.height)};
        return imaging::isWithin(pixels.width, pixels.height, imaging::kMaxBufferedPixels) ? pixels : PixelSize{};
    }

    std::optional<Picture> decode(PixelSize pixels, Sampling sampling) const {
        const imaging::Orientation& orientation = mDecoder->header().orientation;
        std::optional<Picture> stored = mDecoder->decode(orientation.turned(pixels));
        if (!stored) return std::nullopt;
        return imaging::scaledPicture(std::move(*stored), pixels, sampling, orientation);
    }

    // A drawing of a drawing sees the pixels that the inner one has, not those that the inner one was made from.
    std::optional<Picture> draw(PixelSize pixels, Sampling sampling) const {
        std::optional<Picture> drawn = mDrawing->mImpl->render(mPixels, sampling);
        if (!drawn || pixels == mPixels) return drawn;
        return imaging::scaledPicture(std::move(*drawn), pixels, sampling);
    }

    Data mData;
    std::unique_ptr<const ImageDecoder> mDecoder;
    std::shared_ptr<const Image> mDrawing;
    PixelSize mPixels;
    Size mSize;
};

Image::Image(std::unique_ptr<const Impl> impl) : mImpl(std::move(impl)) {
}

Image::~Image() = default;

std::shared_ptr<Image> Image::initWithData(Data data) {
    return std::shared_ptr<Image>(new Image(std::make_unique<const Impl>(std::move(data))));
}

// Only a regular file has a size to read up to; a device would be read for ever.
static std::optional<Data> contentsOfFile(const std::filesystem::path& file) {
    constexpr std::uintmax_t kMaxFileSize = std::uintmax_t{1} << 30;
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) return std::nullopt;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (error || size > kMaxFileSize) return std::nullopt;
    std::ifstream stream(file, std::ios::binary);
    Data data(static_cast<std::size_t>(size));
    stream.read(reinterpret_cast<char*>(data.data()), static_cast<std::streamsize>(size));
    if (stream.gcount() != static_cast<std::streamsize>(size)) return std::nullopt;
    return data;
}

std::shared_ptr<Image> Image::initWithContentsOfFile(const std::filesystem::path& file) try {
    std::optional<Data> data = contentsOfFile(file);
    return data ? initWithData(std::move(*data)) : nullptr;
} catch (const std::bad_alloc&) {
    return nullptr;
}

std::shared_ptr<Image> Image::initWithSize(Size size, std::shared_ptr<const Image> drawing) {
    return std::shared_ptr<Image>(new Image(std::make_unique<const Impl>(size, std::move(drawing))));
}

bool Image::isValid() const {
    return mImpl->isValid();
}

Size Image::size() const {
    return mImpl->size();
}

const Data& Image::encodedData() const {
    return mImpl->data();
}

static std::optional<Data> encode(std::optional<Picture> picture, ImageFileType type, int quality, Sampling sampling) {
    if (!picture) return std::nullopt;
    switch (type) {
        case ImageFileType::JPEG:
            return imaging::encodeJPEG(std::move(*picture), quality, sampling);
        case ImageFileType::PNG:
            return imaging::encodePNG(std::move(*picture));
        case ImageFileType::TIFF:
            return imaging::encodeTIFF(std::move(*picture));
    }
    return std::nullopt;
}

// Compared so that what is not a number counts as zero.
static int qualityFromFactor(double factor) {
    return factor > 0 ? static_cast<int>(std::lround(100 * std::min(factor, 1.0))) : 0;
}

std::optional<Data> Image::representationUsingType(ImageFileType type, double compressionFactor) const try {
    const bool isFine = type != ImageFileType::JPEG || compressionFactor >= 0.9;
    const Sampling sampling = isFine ? imaging::k444 : imaging::k420;
    const int quality = std::max(1, qualityFromFactor(compressionFactor));
    return encode(mImpl->render(mImpl->pixels(), sampling), type, quality, sampling);
} catch (const std::exception&) {
    // No memory, or sizes that a library refuses: a picture that cannot be had, like one that does not decode.
    return std::nullopt;
}

}  // namespace qv
