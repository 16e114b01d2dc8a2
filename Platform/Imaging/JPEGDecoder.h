#pragma once

#include "ImageDecoder.h"
#include "JPEGHeader.h"

namespace qv::imaging {

/// JPEG by way of TurboJPEG: grey and YCbCr straight into planes, everything else into RGB, both at the smallest scale
/// n/8 of the discrete cosine transform that still covers the target. A file that decodes with warnings is used.
class JPEGDecoder final : public ImageDecoder {
  public:
    static std::unique_ptr<const ImageDecoder> create(const Data& data);
    std::optional<Picture> decode(PixelSize target) const override;

  private:
    JPEGDecoder(const Data& data, const JPEGHeader& header);
    /// At the one of the library's scales that gives this size.
    std::optional<Picture> decodeAt(PixelSize size) const;
    JPEGHeader mJPEG;
};

}  // namespace qv::imaging
