#include "Support/TestImages.h"

#include <gtest/gtest.h>
#include <jpeglib.h>

#include <csetjmp>
#include <cstdio>
#include <cstdlib>

namespace testsupport {

namespace {

using Colours = JPEGOptions::Colours;

J_COLOR_SPACE fileSpace(Colours colours) {
    switch (colours) {
        case Colours::Grey:
            return JCS_GRAYSCALE;
        case Colours::RGB:
            return JCS_RGB;
        case Colours::CMYK:
            return JCS_CMYK;
        case Colours::YCCK:
            return JCS_YCCK;
        case Colours::YCbCr:
            break;
    }
    return JCS_YCbCr;
}

bool isInk(const JPEGOptions& options) {
    return options.colours == Colours::CMYK || options.colours == Colours::YCCK;
}

// Ink without any black; inverted when Adobe's marker says so.
qv::Data inputRow(const Pixels& pixels, int y, const JPEGOptions& options) {
    qv::Data row;
    for (int x = 0; x < pixels.width; ++x) {
        const Colour colour = pixels.colour(x, y);
        for (std::size_t index = 0; index < 3; ++index) {
            const bool isInverse = isInk(options) && !options.hasAdobeMarker;
            row.push_back(isInverse ? static_cast<std::uint8_t>(255 - colour[index]) : colour[index]);
        }
        if (isInk(options)) row.push_back(options.hasAdobeMarker ? 255 : 0);
    }
    return row;
}

void setUp(jpeg_compress_struct& codec, const Pixels& pixels, const JPEGOptions& options) {
    codec.image_width = static_cast<JDIMENSION>(pixels.width);
    codec.image_height = static_cast<JDIMENSION>(pixels.height);
    codec.input_components = isInk(options) ? 4 : 3;
    codec.in_color_space = isInk(options) ? JCS_CMYK : JCS_RGB;
    jpeg_set_defaults(&codec);
    jpeg_set_colorspace(&codec, fileSpace(options.colours));
    jpeg_set_quality(&codec, options.quality, TRUE);
    codec.write_Adobe_marker = options.hasAdobeMarker && options.colours != Colours::YCbCr;
    for (int index = 0; index < codec.num_components; ++index) {
        codec.comp_info[index].h_samp_factor = index == 0 ? options.horizontalSampling : 1;
        codec.comp_info[index].v_samp_factor = index == 0 ? options.verticalSampling : 1;
    }
    if (options.isProgressive) jpeg_simple_progression(&codec);
}

constexpr jpeg_scan_info kScanPerComponent[] = {
    {1, {0, 0, 0, 0}, 0, 63, 0, 0}, {1, {1, 0, 0, 0}, 0, 63, 0, 0}, {1, {2, 0, 0, 0}, 0, 63, 0, 0}};

void writeExif(jpeg_compress_struct& codec, const JPEGOptions& options) {
    if (options.orientation == 0) return;
    qv::Data block{'E', 'x', 'i', 'f', 0, 0};
    const qv::Data exif = makeExif(options.orientation, options.isBigEndianExif);
    block.insert(block.end(), exif.begin(), exif.end());
    jpeg_write_marker(&codec, JPEG_APP0 + 1, block.data(), static_cast<unsigned>(block.size()));
}

struct QuietErrors {
    jpeg_error_mgr base;
    std::jmp_buf place;
};

void leave(j_common_ptr codec) {
    std::longjmp(reinterpret_cast<QuietErrors*>(codec->err)->place, 1);
}

/// Reads all rows; nothing with a destructor may live here.
bool decodeRows(jpeg_decompress_struct& codec, QuietErrors& errors, const qv::Data& data, Pixels& pixels) {
    if (setjmp(errors.place) != 0) return false;
    jpeg_create_decompress(&codec);
    jpeg_mem_src(&codec, data.data(), static_cast<unsigned long>(data.size()));
    jpeg_read_header(&codec, TRUE);
    codec.out_color_space = JCS_EXT_RGBA;
    jpeg_start_decompress(&codec);
    pixels = Pixels(static_cast<int>(codec.output_width), static_cast<int>(codec.output_height));
    while (codec.output_scanline < codec.output_height) {
        JSAMPROW row = pixels.at(0, static_cast<int>(codec.output_scanline));
        jpeg_read_scanlines(&codec, &row, 1);
    }
    return jpeg_finish_decompress(&codec) != FALSE;
}

std::string samplingName(const jpeg_decompress_struct& codec) {
    if (codec.num_components == 1) return "grey";
    const jpeg_component_info& luma = codec.comp_info[0];
    if (luma.h_samp_factor == 2 && luma.v_samp_factor == 2) return "4:2:0";
    return luma.h_samp_factor == 1 && luma.v_samp_factor == 1 ? "4:4:4" : "other";
}

}  // namespace

qv::Data makeJPEG(const Pixels& pixels, const JPEGOptions& options) {
    jpeg_error_mgr errors;
    jpeg_compress_struct codec{};
    codec.err = jpeg_std_error(&errors);
    jpeg_create_compress(&codec);
    unsigned char* bytes = nullptr;
    unsigned long count = 0;
    jpeg_mem_dest(&codec, &bytes, &count);
    setUp(codec, pixels, options);
    if (!options.isInterleaved) {
        codec.scan_info = kScanPerComponent;
        codec.num_scans = 3;
    }
    jpeg_start_compress(&codec, TRUE);
    writeExif(codec, options);
    for (int y = 0; y < pixels.height; ++y) {
        qv::Data row = inputRow(pixels, y, options);
        JSAMPROW pointer = row.data();
        jpeg_write_scanlines(&codec, &pointer, 1);
    }
    jpeg_finish_compress(&codec);
    jpeg_destroy_compress(&codec);
    qv::Data data(bytes, bytes + count);
    std::free(bytes);
    return data;
}

Pixels readJPEG(const qv::Data& data) {
    QuietErrors errors{};
    jpeg_decompress_struct codec{};
    codec.err = jpeg_std_error(&errors.base);
    errors.base.error_exit = leave;
    Pixels pixels;
    EXPECT_TRUE(decodeRows(codec, errors, data, pixels)) << "no JPEG";
    EXPECT_EQ(errors.base.num_warnings, 0);
    jpeg_destroy_decompress(&codec);
    return pixels;
}

JPEGFacts factsOfJPEG(const qv::Data& data) {
    jpeg_error_mgr errors;
    jpeg_decompress_struct codec{};
    codec.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&codec);
    jpeg_mem_src(&codec, data.data(), static_cast<unsigned long>(data.size()));
    jpeg_read_header(&codec, TRUE);
    JPEGFacts facts{static_cast<int>(codec.image_width), static_cast<int>(codec.image_height), codec.num_components,
                    samplingName(codec)};
    jpeg_destroy_decompress(&codec);
    return facts;
}

}  // namespace testsupport
