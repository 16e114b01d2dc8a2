#include "HEICDecoder.h"

#include "HEIFLibrary.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace qv::imaging {

using namespace std::string_view_literals;

namespace {

/// One file and its primary picture, opened.
class HEIFFile {
  public:
    HEIFFile(const HEIFLibrary& library, const Data& data) : mLibrary(library), mContext(library.allocateContext()) {
        if (!mContext || mLibrary.readFromMemory(mContext, data.data(), data.size(), nullptr).code != 0) return;
        if (mLibrary.getPrimaryHandle(mContext, &mHandle).code != 0) mHandle = nullptr;
    }
    ~HEIFFile() {
        if (mImage) mLibrary.releaseImage(mImage);
        if (mHandle) mLibrary.releaseHandle(mHandle);
        if (mContext) mLibrary.freeContext(mContext);
    }
    HEIFFile(const HEIFFile&) = delete;
    HEIFFile& operator=(const HEIFFile&) = delete;

    bool isOpen() const { return mHandle != nullptr; }
    PixelSize size() const { return {mLibrary.getWidth(mHandle), mLibrary.getHeight(mHandle)}; }

    std::optional<Picture> decode() {
        const bool hasAlpha = mLibrary.hasAlpha(mHandle) != 0;
        const int chroma = hasAlpha ? HEIFLibrary::kChromaInterleavedRGBA : HEIFLibrary::kChromaInterleavedRGB;
        if (mLibrary.decode(mHandle, &mImage, HEIFLibrary::kColourSpaceRGB, chroma, nullptr).code != 0) {
            mImage = nullptr;
            return std::nullopt;
        }
        return copyPixels(hasAlpha ? ColourModel::RGBA : ColourModel::RGB);
    }

  private:
    std::optional<Picture> copyPixels(ColourModel model) const {
        int stride = 0;
        const std::uint8_t* pixels = mLibrary.getPlane(mImage, HEIFLibrary::kChannelInterleaved, &stride);
        const PixelSize decoded{mLibrary.imageWidth(mImage, HEIFLibrary::kChannelInterleaved),
                                mLibrary.imageHeight(mImage, HEIFLibrary::kChannelInterleaved)};
        // What the file says and what its pictures hold are two things.
        if (!pixels || decoded != size()) return std::nullopt;
        Picture picture({model, decoded, k444});
        for (int y = 0; y < decoded.height; ++y)
            picture.setRow(y, pixels + std::ptrdiff_t{stride} * y);
        return picture;
    }

    const HEIFLibrary& mLibrary;
    HEIFLibrary::Context* mContext;
    HEIFLibrary::Handle* mHandle = nullptr;
    HEIFLibrary::Image* mImage = nullptr;
};

}  // namespace

bool HEICDecoder::recognises(const Data& data) {
    constexpr std::array kBrands{"heic"sv, "heix"sv, "heim"sv, "heis"sv, "hevc"sv, "mif1"sv, "msf1"sv, "avif"sv};
    const std::string_view bytes(reinterpret_cast<const char*>(data.data()), std::min<std::size_t>(data.size(), 12));
    if (bytes.size() < 12 || bytes.substr(4, 4) != "ftyp"sv) return false;
    return std::find(kBrands.begin(), kBrands.end(), bytes.substr(8)) != kBrands.end();
}

std::unique_ptr<const ImageDecoder> HEICDecoder::create(const Data& data) {
    const HEIFLibrary* library = HEIFLibrary::shared();
    if (!library) return nullptr;
    const HEIFFile file(*library, data);
    if (!file.isOpen()) return nullptr;
    const PixelSize size = file.size();
    if (!isWithin(size.width, size.height, kMaxBufferedPixels)) return nullptr;
    return std::unique_ptr<const ImageDecoder>(new HEICDecoder(data, {size, {}}));
}

std::optional<Picture> HEICDecoder::decode(PixelSize) const {
    HEIFFile file(*HEIFLibrary::shared(), data());
    return file.isOpen() ? file.decode() : std::nullopt;
}

}  // namespace qv::imaging
