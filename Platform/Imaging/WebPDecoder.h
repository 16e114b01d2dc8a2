#pragma once

#include "ImageDecoder.h"

namespace qv::imaging {

/// Still WebP pictures.
class WebPDecoder final : public ImageDecoder {
  public:
    static std::unique_ptr<const ImageDecoder> create(const Data& data);
    std::optional<Picture> decode(PixelSize target) const override;

  private:
    using ImageDecoder::ImageDecoder;
};

}  // namespace qv::imaging
