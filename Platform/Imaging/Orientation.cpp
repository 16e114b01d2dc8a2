#include "Orientation.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace qv::imaging {

Orientation Orientation::fromTag(unsigned value) {
    Orientation orientation;
    if (value < 1 || value > 8) return orientation;
    orientation.mMirrorsX = value == 2 || value == 3 || value == 7 || value == 8;
    orientation.mMirrorsY = value == 3 || value == 4 || value == 6 || value == 7;
    orientation.mTransposes = value >= 5;
    return orientation;
}

namespace {

/// Reads numbers of an EXIF block in its own byte order; what lies outside reads as zero.
class ExifReader {
  public:
    ExifReader(const std::uint8_t* bytes, std::size_t count) : mBytes(bytes), mCount(count) {
        mBigEndian = count >= 2 && bytes[0] == 'M' && bytes[1] == 'M';
        mIsExif = mBigEndian || (count >= 2 && bytes[0] == 'I' && bytes[1] == 'I');
    }
    bool isExif() const { return mIsExif && number(2, 2) == 42; }
    std::size_t number(std::size_t offset, std::size_t size) const {
        if (offset > mCount || mCount - offset < size) return 0;
        std::size_t value = 0;
        for (std::size_t index = 0; index < size; ++index) {
            value = value << 8 | mBytes[offset + (mBigEndian ? index : size - 1 - index)];
        }
        return value;
    }

  private:
    const std::uint8_t* mBytes;
    std::size_t mCount;
    bool mBigEndian = false;
    bool mIsExif = false;
};

}  // namespace

Orientation Orientation::fromExif(const std::uint8_t* bytes, std::size_t count) {
    constexpr std::size_t kOrientationTag = 274;
    constexpr std::size_t kShort = 3;
    const ExifReader reader(bytes, count);
    if (!reader.isExif()) return {};
    const std::size_t directory = reader.number(4, 4);
    const std::size_t entries = reader.number(directory, 2);
    for (std::size_t index = 0; index < entries; ++index) {
        const std::size_t entry = directory + 2 + index * 12;
        if (reader.number(entry, 2) != kOrientationTag) continue;
        const std::size_t size = reader.number(entry + 2, 2) == kShort ? 2 : 4;
        return fromTag(static_cast<unsigned>(reader.number(entry + 8, size)));
    }
    return {};
}

static Plane mirrored(Plane plane, bool mirrorsX, bool mirrorsY) {
    if (mirrorsX) {
        for (int y = 0; y < plane.height(); ++y)
            std::reverse(plane.row(y), plane.row(y) + plane.width());
    }
    if (mirrorsY) {
        for (int y = 0; y < plane.height() / 2; ++y) {
            std::swap_ranges(plane.row(y), plane.row(y) + plane.width(), plane.row(plane.height() - 1 - y));
        }
    }
    return plane;
}

// Tile by tile, so that the rows read and the rows written both stay in the cache.
static Plane transposed(const Plane& plane) {
    constexpr int kTile = 32;
    Plane result(plane.size().transposed());
    for (int top = 0; top < plane.height(); top += kTile) {
        const int bottom = std::min(top + kTile, plane.height());
        for (int left = 0; left < plane.width(); left += kTile) {
            const int right = std::min(left + kTile, plane.width());
            for (int x = left; x < right; ++x) {
                std::uint8_t* out = result.row(x);
                for (int y = top; y < bottom; ++y)
                    out[y] = plane.row(y)[x];
            }
        }
    }
    return result;
}

Picture Orientation::turned(Picture stored) const {
    if (isUpright()) return stored;
    std::vector<Plane> planes;
    for (std::size_t index = 0; index < stored.planeCount(); ++index) {
        Plane plane = mirrored(std::move(stored.plane(index)), mMirrorsX, mMirrorsY);
        planes.push_back(mTransposes ? transposed(plane) : std::move(plane));
    }
    return {mTransposes ? stored.layout().transposed() : stored.layout(), std::move(planes)};
}

}  // namespace qv::imaging
