#include "JPEGHeader.h"

#include <csetjmp>
#include <cstddef>
#include <cstdio>
#include <cstring>

// The header of libjpeg leaves the inclusion of these to its users.
#include <jpeglib.h>

namespace qv::imaging {

namespace {

/// The library's error object with the place to return to in front of what it knows.
struct ErrorManager {
    jpeg_error_mgr base;
    std::jmp_buf place;
};

[[noreturn]] void leave(j_common_ptr codec) {
    // The object that starts with the pointed-to one: the library knows only its first member.
    std::longjmp(reinterpret_cast<ErrorManager*>(codec->err)->place, 1);
}

void ignoreMessage(j_common_ptr, int) {
}

Orientation orientationFromMarkers(const jpeg_decompress_struct& codec) {
    constexpr char kSignature[6] = {'E', 'x', 'i', 'f', 0, 0};
    for (jpeg_saved_marker_ptr marker = codec.marker_list; marker; marker = marker->next) {
        if (marker->data_length < sizeof kSignature) continue;
        if (std::memcmp(marker->data, kSignature, sizeof kSignature) != 0) continue;
        return Orientation::fromExif(marker->data + sizeof kSignature, marker->data_length - sizeof kSignature);
    }
    return {};
}

std::optional<JPEGHeader::Kind> kindOf(J_COLOR_SPACE space) {
    switch (space) {
        case JCS_GRAYSCALE:
        case JCS_YCbCr:
            return JPEGHeader::Kind::Planar;
        case JCS_RGB:
            return JPEGHeader::Kind::RGB;
        case JCS_CMYK:
        case JCS_YCCK:
            return JPEGHeader::Kind::CMYK;
        default:
            return std::nullopt;
    }
}

std::optional<JPEGHeader> headerFrom(jpeg_decompress_struct& codec) {
    const std::optional<JPEGHeader::Kind> kind = kindOf(codec.jpeg_color_space);
    if (!kind || codec.data_precision != 8) return std::nullopt;
    JPEGHeader header;
    header.size = {static_cast<int>(codec.image_width), static_cast<int>(codec.image_height)};
    header.kind = *kind;
    header.isInverted = codec.saw_Adobe_marker != FALSE;
    header.isBuffered = jpeg_has_multiple_scans(&codec) != FALSE;
    header.orientation = orientationFromMarkers(codec);
    return header;
}

/// Reads up to the first scan. Nothing with a destructor may live here, since errors leave it by longjmp.
bool readUpToScan(jpeg_decompress_struct& codec, ErrorManager& errors, const Data& data) {
    if (setjmp(errors.place) != 0) return false;
    jpeg_create_decompress(&codec);
    jpeg_mem_src(&codec, data.data(), static_cast<unsigned long>(data.size()));
    jpeg_save_markers(&codec, JPEG_APP0 + 1, 0xFFFF);
    return jpeg_read_header(&codec, TRUE) == JPEG_HEADER_OK;
}

}  // namespace

std::optional<JPEGHeader> JPEGHeader::read(const Data& data) {
    ErrorManager errors{};
    jpeg_decompress_struct codec{};
    codec.err = jpeg_std_error(&errors.base);
    errors.base.error_exit = leave;
    errors.base.emit_message = ignoreMessage;
    std::optional<JPEGHeader> header;
    if (readUpToScan(codec, errors, data)) header = headerFrom(codec);
    jpeg_destroy_decompress(&codec);
    return header;
}

}  // namespace qv::imaging
