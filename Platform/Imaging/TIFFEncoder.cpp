#include "ColourMath.h"
#include "ImageEncoder.h"
#include "TIFFMemory.h"

#include <utility>

namespace qv::imaging {

static void setFields(TIFF* file, const Picture& picture) {
    const auto channels = static_cast<unsigned>(picture.planeCount());
    TIFFSetField(file, TIFFTAG_IMAGEWIDTH, static_cast<unsigned>(picture.size().width));
    TIFFSetField(file, TIFFTAG_IMAGELENGTH, static_cast<unsigned>(picture.size().height));
    TIFFSetField(file, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(file, TIFFTAG_SAMPLESPERPIXEL, channels);
    TIFFSetField(file, TIFFTAG_PHOTOMETRIC, channels == 1 ? PHOTOMETRIC_MINISBLACK : PHOTOMETRIC_RGB);
    TIFFSetField(file, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(file, TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    TIFFSetField(file, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    if (channels == 4) {
        const std::uint16_t straight[] = {EXTRASAMPLE_UNASSALPHA};
        TIFFSetField(file, TIFFTAG_EXTRASAMPLES, 1, straight);
    }
    TIFFSetField(file, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(file, 0));
}

static bool writeRows(TIFF* file, const Picture& picture) {
    Data row(static_cast<std::size_t>(picture.size().width) * picture.planeCount());
    for (int y = 0; y < picture.size().height; ++y) {
        picture.getRow(y, row.data());
        if (TIFFWriteScanline(file, row.data(), static_cast<std::uint32_t>(y), 0) < 0) return false;
    }
    return TIFFFlush(file) != 0;
}

std::optional<Data> encodeTIFF(Picture picture) {
    if (picture.model() == ColourModel::YCbCr) picture = convertedToRGB(std::move(picture));
    const std::unique_ptr<TIFFMemory> file = TIFFMemory::writing();
    if (!file) return std::nullopt;
    setFields(file->handle(), picture);
    if (!writeRows(file->handle(), picture)) return std::nullopt;
    file->close();
    return std::move(file->written());
}

}  // namespace qv::imaging
