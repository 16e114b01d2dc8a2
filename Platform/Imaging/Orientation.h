#pragma once

#include "Picture.h"

#include <cstddef>
#include <cstdint>

namespace qv::imaging {

/// How stored pixels are turned to stand upright: mirrored along the stored axes first, then transposed.
/// The eight values of the EXIF and TIFF tag 274 (EXIF 2.32, 4.6.4 A).
class Orientation {
  public:
    Orientation() = default;
    /// From the tag's value; anything but 1…8 is upright already.
    static Orientation fromTag(unsigned value);
    /// From an EXIF block, which is a TIFF header with directories; upright when there is none or it is broken.
    static Orientation fromExif(const std::uint8_t* bytes, std::size_t count);

    bool mirrorsX() const { return mMirrorsX; }
    bool mirrorsY() const { return mMirrorsY; }
    bool transposes() const { return mTransposes; }
    bool isUpright() const { return !mMirrorsX && !mMirrorsY && !mTransposes; }

    /// The upright size of stored pixels and the reverse, which is the same.
    PixelSize turned(PixelSize size) const { return mTransposes ? size.transposed() : size; }
    /// The upright picture of a stored one.
    Picture turned(Picture stored) const;

  private:
    bool mMirrorsX = false;
    bool mMirrorsY = false;
    bool mTransposes = false;
};

}  // namespace qv::imaging
