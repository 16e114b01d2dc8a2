#include "TIFFDecoder.h"

#include "ColourMath.h"
#include "TIFFMemory.h"

#include <cstdint>
#include <memory>

namespace qv::imaging {

namespace {

/// The library's RGBA reader, which knows every photometric interpretation.
class RGBAReader {
  public:
    explicit RGBAReader(TIFF* file) {
        char message[1024];
        mIsOpen = TIFFRGBAImageOK(file, message) != 0 && TIFFRGBAImageBegin(&mImage, file, /*stop=*/1, message) != 0;
        // Asking for the orientation it has keeps the reader from turning anything.
        if (mIsOpen) mImage.req_orientation = mImage.orientation;
    }
    ~RGBAReader() {
        if (mIsOpen) TIFFRGBAImageEnd(&mImage);
    }
    RGBAReader(const RGBAReader&) = delete;
    RGBAReader& operator=(const RGBAReader&) = delete;

    bool isOpen() const { return mIsOpen; }
    bool hasAlpha() const { return mImage.alpha != 0; }
    bool read(std::uint32_t* raster, PixelSize size) {
        return TIFFRGBAImageGet(&mImage, raster, static_cast<std::uint32_t>(size.width),
                                static_cast<std::uint32_t>(size.height)) != 0;
    }

  private:
    TIFFRGBAImage mImage{};
    bool mIsOpen = false;
};

// The library packs a pixel into a number with red in the lowest eight bits.
void putRow(Picture& picture, int y, const std::uint32_t* pixels) {
    for (std::size_t index = 0; index < picture.planeCount(); ++index) {
        std::uint8_t* out = picture.plane(index).row(y);
        const std::size_t shift = 8 * index;
        for (int x = 0; x < picture.size().width; ++x)
            out[x] = static_cast<std::uint8_t>(pixels[x] >> shift);
    }
}

std::optional<ImageHeader> readHeader(TIFF* file) {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint16_t orientation = ORIENTATION_TOPLEFT;
    TIFFGetField(file, TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(file, TIFFTAG_IMAGELENGTH, &height);
    TIFFGetFieldDefaulted(file, TIFFTAG_ORIENTATION, &orientation);
    if (!isWithin(width, height, kMaxBufferedPixels)) return std::nullopt;
    return ImageHeader{{static_cast<int>(width), static_cast<int>(height)}, Orientation::fromTag(orientation)};
}

}  // namespace

std::unique_ptr<const ImageDecoder> TIFFDecoder::create(const Data& data) {
    const std::unique_ptr<TIFFMemory> file = TIFFMemory::reading(data);
    if (!file) return nullptr;
    const std::optional<ImageHeader> header = readHeader(file->handle());
    char message[1024];
    if (!header || TIFFRGBAImageOK(file->handle(), message) == 0) return nullptr;
    return std::unique_ptr<const ImageDecoder>(new TIFFDecoder(data, *header));
}

std::optional<Picture> TIFFDecoder::decode(PixelSize) const {
    const std::unique_ptr<TIFFMemory> file = TIFFMemory::reading(data());
    if (!file) return std::nullopt;
    RGBAReader reader(file->handle());
    if (!reader.isOpen()) return std::nullopt;
    const PixelSize size = header().size;
    // Not initialised: a file that lies about its size should fail before its memory is touched.
    const std::unique_ptr<std::uint32_t[]> raster(new std::uint32_t[static_cast<std::size_t>(size.pixels())]);
    if (!reader.read(raster.get(), size)) return std::nullopt;
    Picture picture({reader.hasAlpha() ? ColourModel::RGBA : ColourModel::RGB, size, k444});
    for (int y = 0; y < size.height; ++y)
        putRow(picture, y, raster.get() + std::int64_t{size.width} * y);
    if (reader.hasAlpha()) unpremultiply(picture);
    return picture;
}

}  // namespace qv::imaging
