#pragma once

#include "ImageDecoder.h"

namespace qv::imaging {

/// PNG, streamed row by row into planes unless it is interlaced. Sixteen bits are reduced to eight, palettes and
/// transparent colours resolved. A file that is cut short is not used.
class PNGDecoder final : public ImageDecoder {
  public:
    static std::unique_ptr<const ImageDecoder> create(const Data& data);
    std::optional<Picture> decode(PixelSize target) const override;

  private:
    using ImageDecoder::ImageDecoder;
};

}  // namespace qv::imaging
