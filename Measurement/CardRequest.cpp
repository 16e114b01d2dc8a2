#include "CardRequest.h"

#include "QVCardScan/QVCardUtilities.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

namespace measurement {
namespace {

constexpr std::size_t kEntrySize = 12;
constexpr unsigned kOrientationTag = 274;  // TIFF 6.0, section 8

/// Whole numbers of a TIFF file, in its own byte order.
class TIFFBytes {
  public:
    explicit TIFFBytes(qv::Data& data) : mData(data), mIsLittle(byte(0) == 'I') {}

    unsigned number(std::size_t at, std::size_t size) const {
        unsigned value = 0;
        for (std::size_t i = 0; i < size; ++i)
            value = value << 8U | byte(mIsLittle ? at + size - 1 - i : at + i);
        return value;
    }
    void setShort(std::size_t at, std::uint8_t value) {
        if (at + 2 <= mData.size()) mData[mIsLittle ? at : at + 1] = static_cast<qv::Data::value_type>(value);
    }

  private:
    unsigned byte(std::size_t at) const { return at < mData.size() ? static_cast<std::uint8_t>(mData[at]) : 0; }

    qv::Data& mData;
    bool mIsLittle;
};

/// The value of the orientation tag that turns clockwise by some degrees.
std::uint8_t orientationFor(int degrees) {
    return degrees == 90 ? 6 : degrees == 180 ? 3 : 8;
}

/// The encoder always writes the tag: the value is all that has to change.
void setOrientation(qv::Data& tiff, std::uint8_t value) {
    TIFFBytes bytes(tiff);
    const std::size_t directory = bytes.number(4, 4);
    for (std::size_t i = 0, count = bytes.number(directory, 2); i < count; ++i) {
        const std::size_t entry = directory + 2 + i * kEntrySize;
        if (bytes.number(entry, 2) == kOrientationTag) bytes.setShort(entry + 8, value);
    }
}

/// Without loss. The box is square, so that turning after fitting is the same as fitting what was turned.
std::shared_ptr<qv::Image> turned(const std::shared_ptr<qv::Image>& image, int degrees) {
    auto tiff = image->TIFFRepresentation();
    if (!tiff) return nullptr;
    setOrientation(*tiff, orientationFor(degrees));
    return qv::Image::initWithData(*std::move(tiff));
}

}  // namespace

std::optional<qv::Data> requestFor(const std::filesystem::path& picture, int degrees) {
    const auto scaled = imageByScalingProportionallyToSize(
        qv::Image::initWithContentsOfFile(picture),
        {static_cast<double>(QVCardMaxRecoWidth), static_cast<double>(QVCardMaxRecoHeight)});
    if (!scaled) return std::nullopt;
    const int turn = (degrees % 360 + 360) % 360;
    return JPEGRepresentationUsingCompressionFactor(turn == 0 ? scaled : turned(scaled, turn),
                                                    QVCardRecoCompressionFactor);
}

}  // namespace measurement
