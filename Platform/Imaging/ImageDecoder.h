#pragma once

#include "Orientation.h"
#include "Picture.h"
#include "QVPlatform/Data.h"

#include <memory>
#include <optional>

namespace qv::imaging {

/// What the header of encoded bytes says. It has been checked against the limits of `Plane.h`.
struct ImageHeader {
    PixelSize size;  ///< as stored
    Orientation orientation;
};

/// Decodes the bytes of one picture. Immutable and without codec state between calls, so several threads may decode at
/// once. The bytes must outlive it.
class ImageDecoder {
  public:
    /// The decoder for these bytes, by their signature; null when no decoder knows them or their header is broken.
    static std::unique_ptr<const ImageDecoder> forData(const Data& data);

    virtual ~ImageDecoder() = default;
    ImageDecoder(const ImageDecoder&) = delete;
    ImageDecoder& operator=(const ImageDecoder&) = delete;

    const ImageHeader& header() const { return mHeader; }

    /// The stored picture, reduced as far as the format can do it cheaply while it still covers `target` (stored, not
    /// upright); never enlarged. Nothing when the bytes do not decode. Throws `std::bad_alloc`.
    virtual std::optional<Picture> decode(PixelSize target) const = 0;

  protected:
    ImageDecoder(const Data& data, const ImageHeader& header) : mData(data), mHeader(header) {}
    const Data& data() const { return mData; }

  private:
    const Data& mData;
    ImageHeader mHeader;
};

}  // namespace qv::imaging
