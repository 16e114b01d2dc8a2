#pragma once

#include "Data.h"
#include "Export.h"
#include "Geometry.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace qv {

/// The encodings an image can be rendered to.
enum class ImageFileType { JPEG, PNG, TIFF };

/// A picture. It holds encoded bytes and decodes them when they are drawn, never larger than what is asked for; drawing
/// one image into another only records the request, so scaling and encoding are one pass over small planes.
///
/// Immutable after construction: any thread may use one image, several at once. Shared by `shared_ptr`.
/// JPEG, PNG, TIFF and WebP are read by the libraries this is built with; HEIC when the system has a decoder for it.
/// Bytes that do not decode, a side of zero or of more than a million, more than 250 million pixels (64 million where
/// the decoder needs a full-size buffer) make an image that is not valid; asking such an image for anything yields
/// nothing, never an error. So does a representation that would need more than 64 million pixels at once.
class QV_EXPORT Image {
  public:
    /// `initWithData:` An image over encoded bytes of any supported format. Never null; see `isValid()`.
    static std::shared_ptr<Image> initWithData(Data data);

    /// `initWithContentsOfFile:` The same over a file's bytes; null when it is no regular file, cannot be read or is
    /// larger than 1 GiB.
    static std::shared_ptr<Image> initWithContentsOfFile(const std::filesystem::path& file);

    /// `initWithSize:drawing:` A new image of the given logical size (not rounded) into which the whole of `drawing` is
    /// drawn, source-over at full opacity. Rendered at one pixel per unit, each side the nearest whole number of
    /// pixels, at least 1. Null `drawing`, or one that is not valid, gives an image that is not valid.
    static std::shared_ptr<Image> initWithSize(Size size, std::shared_ptr<const Image> drawing);

    ~Image();
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;

    /// Whether the header describes a picture that can be drawn. Cheap: reads no pixel. A picture whose header is sound
    /// but whose pixels are not is found out when it is drawn, and then yields nothing.
    bool isValid() const;

    /// Logical size: the upright pixels of encoded bytes (orientation applied), or the exact size given at drawing.
    /// Zero for an image that is not valid.
    Size size() const;

    /// Encodes the picture. `compressionFactor` (0 smallest … 1 best; JPEG only) maps to JPEG quality 100·factor, with
    /// 4:2:0 sampling below 0.9 and 4:4:4 from there. Transparency lies on white in JPEG. The same picture gives the
    /// same bytes each time. Nothing when the picture cannot be decoded or the format cannot hold it (a JPEG's sides
    /// end at 65500).
    std::optional<Data> representationUsingType(ImageFileType type, double compressionFactor = 1.0) const;

    /// `TIFFRepresentation` The picture as TIFF bytes.
    std::optional<Data> TIFFRepresentation() const { return representationUsingType(ImageFileType::TIFF); }

    /// The encoded bytes this image was made from; empty for a drawn image.
    const Data& encodedData() const;

  private:
    class Impl;
    explicit Image(std::unique_ptr<const Impl> impl);
    std::unique_ptr<const Impl> mImpl;
};

}  // namespace qv
