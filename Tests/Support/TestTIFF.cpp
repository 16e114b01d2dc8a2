#include "Support/TestImages.h"

#include <gtest/gtest.h>
#include <tiffio.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <vector>

namespace testsupport {

namespace {

/// The library works on files; a file without a name serves.
class TemporaryFile {
  public:
    TemporaryFile() : mFile(std::tmpfile()) {}
    ~TemporaryFile() { std::fclose(mFile); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    /// The library closes what it is given.
    int descriptor() const { return dup(fileno(mFile)); }
    qv::Data contents() const {
        qv::Data data;
        std::rewind(mFile);
        for (int byte = std::fgetc(mFile); byte != EOF; byte = std::fgetc(mFile)) {
            data.push_back(static_cast<std::uint8_t>(byte));
        }
        return data;
    }
    void fill(const qv::Data& data) const {
        if (std::fwrite(data.data(), 1, data.size(), mFile) != data.size())
            throw std::runtime_error("The picture cannot be written");
        std::rewind(mFile);
    }

  private:
    std::FILE* mFile;
};

qv::Data row(const Pixels& pixels, int y, const TIFFOptions& options) {
    qv::Data bytes;
    for (int x = 0; x < pixels.width; ++x) {
        for (std::size_t index = 0; index < (options.hasAlpha ? 4U : 3U); ++index) {
            bytes.push_back(pixels.at(x, y)[index]);
            if (options.depth == 16) bytes.push_back(pixels.at(x, y)[index]);
        }
    }
    return bytes;
}

void setFields(TIFF* file, const Pixels& pixels, const TIFFOptions& options) {
    TIFFSetField(file, TIFFTAG_IMAGEWIDTH, pixels.width);
    TIFFSetField(file, TIFFTAG_IMAGELENGTH, pixels.height);
    TIFFSetField(file, TIFFTAG_BITSPERSAMPLE, options.depth);
    TIFFSetField(file, TIFFTAG_SAMPLESPERPIXEL, options.hasAlpha ? 4 : 3);
    TIFFSetField(file, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
    TIFFSetField(file, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(file, TIFFTAG_COMPRESSION, options.compression);
    TIFFSetField(file, TIFFTAG_ROWSPERSTRIP, 5);
    if (options.orientation != 0) TIFFSetField(file, TIFFTAG_ORIENTATION, options.orientation);
    const std::uint16_t straight[] = {EXTRASAMPLE_UNASSALPHA};
    if (options.hasAlpha) TIFFSetField(file, TIFFTAG_EXTRASAMPLES, 1, straight);
}

}  // namespace

qv::Data makeTIFF(const Pixels& pixels, const TIFFOptions& options) {
    const TemporaryFile temporary;
    TIFF* file = TIFFFdOpen(temporary.descriptor(), "test", options.isBigEndian ? "wb" : "wl");
    setFields(file, pixels, options);
    for (int y = 0; y < pixels.height; ++y) {
        qv::Data bytes = row(pixels, y, options);
        EXPECT_EQ(TIFFWriteScanline(file, bytes.data(), static_cast<std::uint32_t>(y), 0), 1);
    }
    TIFFClose(file);
    return temporary.contents();
}

Pixels readTIFF(const qv::Data& data) {
    const TemporaryFile temporary;
    temporary.fill(data);
    TIFF* file = TIFFFdOpen(temporary.descriptor(), "test", "r");
    if (!file) {
        ADD_FAILURE() << "no TIFF";
        return {};
    }
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    TIFFGetField(file, TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(file, TIFFTAG_IMAGELENGTH, &height);
    Pixels pixels(static_cast<int>(width), static_cast<int>(height));
    std::vector<std::uint32_t> raster(static_cast<std::size_t>(width) * height);
    EXPECT_EQ(TIFFReadRGBAImageOriented(file, width, height, raster.data(), ORIENTATION_TOPLEFT, 1), 1);
    std::memcpy(pixels.rgba.data(), raster.data(), pixels.rgba.size());
    TIFFClose(file);
    return pixels;
}

}  // namespace testsupport
