#pragma once

#include "QVPlatform/Data.h"
#include "Support/TestPixels.h"

#include <optional>
#include <string>

/// Pictures in every format, made while the tests run, and readers for what the system makes. They use the format
/// libraries directly, so that no code under test judges itself.
namespace testsupport {

struct JPEGOptions {
    enum class Colours { YCbCr, Grey, RGB, CMYK, YCCK };
    Colours colours = Colours::YCbCr;
    int horizontalSampling = 1;  ///< of the first component, the others have 1
    int verticalSampling = 1;
    int quality = 95;
    bool isProgressive = false;
    bool isInterleaved = true;  ///< all components in one scan
    int orientation = 0;        ///< EXIF; 0 for none
    bool hasAdobeMarker = true;
    bool isBigEndianExif = true;
};
qv::Data makeJPEG(const Pixels& pixels, const JPEGOptions& options = {});

struct PNGOptions {
    enum class Kind { RGB, RGBA, Grey, GreyAlpha, Palette };
    Kind kind = Kind::RGB;
    int depth = 8;
    bool isInterlaced = false;
    bool hasTransparentColour = false;  ///< the first pixel's colour (tRNS); its palette entry in a palette picture
    int orientation = 0;                ///< EXIF; 0 for none
};
qv::Data makePNG(const Pixels& pixels, const PNGOptions& options = {});

struct TIFFOptions {
    bool hasAlpha = false;
    int depth = 8;
    int compression = 1;  ///< 1 none, 5 LZW, 8 deflate
    int orientation = 0;
    bool isBigEndian = false;
};
qv::Data makeTIFF(const Pixels& pixels, const TIFFOptions& options = {});

struct WebPOptions {
    bool isLossless = true;
    int orientation = 0;
};
qv::Data makeWebP(const Pixels& pixels, const WebPOptions& options = {});

/// Nothing where the system has no encoder.
std::optional<qv::Data> makeHEIC(const Pixels& pixels);

/// An EXIF block that holds one orientation.
qv::Data makeExif(int orientation, bool isBigEndian = true);

/// What a JPEG says of itself.
struct JPEGFacts {
    int width = 0;
    int height = 0;
    int components = 0;
    std::string sampling;  ///< "4:2:0", "4:4:4", "grey" or "other"
};
JPEGFacts factsOfJPEG(const qv::Data& data);

/// Decodes and fails the running test when the bytes are no such file.
Pixels readJPEG(const qv::Data& data);
Pixels readPNG(const qv::Data& data);
Pixels readTIFF(const qv::Data& data);

}  // namespace testsupport
