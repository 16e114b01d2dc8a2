#pragma once

#include "ImageDecoder.h"

namespace qv::imaging {

/// The primary picture of an HEIF file, where the system has a decoder for it (see `HEIFLibrary`). The decoder turns it
/// upright itself.
class HEICDecoder final : public ImageDecoder {
  public:
    /// Whether the bytes begin like an HEIF file with a picture: a file-type box that names a known brand.
    static bool recognises(const Data& data);
    static std::unique_ptr<const ImageDecoder> create(const Data& data);
    std::optional<Picture> decode(PixelSize target) const override;

  private:
    using ImageDecoder::ImageDecoder;
};

}  // namespace qv::imaging
