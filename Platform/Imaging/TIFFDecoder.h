#pragma once

#include "ImageDecoder.h"

namespace qv::imaging {

/// The first picture of a TIFF, by way of the library's RGBA interface.
class TIFFDecoder final : public ImageDecoder {
  public:
    static std::unique_ptr<const ImageDecoder> create(const Data& data);
    std::optional<Picture> decode(PixelSize target) const override;

  private:
    using ImageDecoder::ImageDecoder;
};

}  // namespace qv::imaging
