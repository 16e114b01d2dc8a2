#include "Support/TestImages.h"

#include <gtest/gtest.h>
#include <png.h>

#include <map>
#include <vector>

namespace testsupport {

namespace {

using Kind = PNGOptions::Kind;

int colourType(Kind kind) {
    switch (kind) {
        case Kind::RGBA:
            return PNG_COLOR_TYPE_RGB_ALPHA;
        case Kind::Grey:
            return PNG_COLOR_TYPE_GRAY;
        case Kind::GreyAlpha:
            return PNG_COLOR_TYPE_GRAY_ALPHA;
        case Kind::Palette:
            return PNG_COLOR_TYPE_PALETTE;
        case Kind::RGB:
            break;
    }
    return PNG_COLOR_TYPE_RGB;
}

/// The colours of a picture in the order in which they appear.
std::map<Colour, std::uint8_t> paletteOf(const Pixels& pixels) {
    std::map<Colour, std::uint8_t> palette;
    for (int y = 0; y < pixels.height; ++y) {
        for (int x = 0; x < pixels.width; ++x) {
            palette.try_emplace(pixels.colour(x, y), static_cast<std::uint8_t>(palette.size()));
        }
    }
    return palette;
}

qv::Data row(const Pixels& pixels, int y, const PNGOptions& options, const std::map<Colour, std::uint8_t>& palette) {
    qv::Data bytes;
    const auto put = [&](std::uint8_t sample) {
        bytes.push_back(sample);
        // The low byte is what a careless reader would take.
        if (options.depth == 16) bytes.push_back(static_cast<std::uint8_t>(sample));
    };
    for (int x = 0; x < pixels.width; ++x) {
        const Colour colour = pixels.colour(x, y);
        if (options.kind == Kind::Palette) {
            bytes.push_back(palette.at(colour));
            continue;
        }
        put(colour[0]);
        const bool isGrey = options.kind == Kind::Grey || options.kind == Kind::GreyAlpha;
        if (!isGrey) put(colour[1]);
        if (!isGrey) put(colour[2]);
        if (options.kind == Kind::RGBA || options.kind == Kind::GreyAlpha) put(colour[3]);
    }
    return bytes;
}

void append(png_structp codec, png_bytep bytes, std::size_t count) {
    auto& data = *static_cast<qv::Data*>(png_get_io_ptr(codec));
    data.insert(data.end(), bytes, bytes + count);
}

void setPalette(png_structp codec, png_infop info, const std::map<Colour, std::uint8_t>& palette) {
    std::vector<png_color> entries(palette.size());
    for (const auto& [colour, index] : palette)
        entries[index] = {colour[0], colour[1], colour[2]};
    png_set_PLTE(codec, info, entries.data(), static_cast<int>(entries.size()));
}

void setTransparentColour(png_structp codec, png_infop info, const Pixels& pixels, const PNGOptions& options) {
    const Colour first = pixels.colour(0, 0);
    const int scale = options.depth == 16 ? 257 : 1;
    const auto wide = [&](int sample) { return static_cast<png_uint_16>(sample * scale); };
    png_color_16 colour{0, wide(first[0]), wide(first[1]), wide(first[2]), wide(first[0])};
    png_byte clear = 0;
    if (options.kind == Kind::Palette) png_set_tRNS(codec, info, &clear, 1, nullptr);
    if (options.kind != Kind::Palette) png_set_tRNS(codec, info, nullptr, 1, &colour);
}

}  // namespace

qv::Data makePNG(const Pixels& pixels, const PNGOptions& options) {
    qv::Data data;
    png_structp codec = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(codec);
    png_set_write_fn(codec, &data, append, nullptr);
    png_set_IHDR(codec, info, static_cast<png_uint_32>(pixels.width), static_cast<png_uint_32>(pixels.height),
                 options.depth, colourType(options.kind),
                 options.isInterlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    const std::map<Colour, std::uint8_t> palette =
        options.kind == Kind::Palette ? paletteOf(pixels) : decltype(palette){};
    if (options.kind == Kind::Palette) setPalette(codec, info, palette);
    if (options.hasTransparentColour) setTransparentColour(codec, info, pixels, options);
    qv::Data exif = makeExif(options.orientation);
    if (options.orientation != 0) png_set_eXIf_1(codec, info, static_cast<png_uint_32>(exif.size()), exif.data());
    png_write_info(codec, info);
    const int passes = png_set_interlace_handling(codec);
    for (int pass = 0; pass < passes; ++pass) {
        for (int y = 0; y < pixels.height; ++y)
            png_write_row(codec, row(pixels, y, options, palette).data());
    }
    png_write_end(codec, info);
    png_destroy_write_struct(&codec, &info);
    return data;
}

Pixels readPNG(const qv::Data& data) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    EXPECT_NE(png_image_begin_read_from_memory(&image, data.data(), data.size()), 0) << image.message;
    image.format = PNG_FORMAT_RGBA;
    Pixels pixels(static_cast<int>(image.width), static_cast<int>(image.height));
    EXPECT_NE(png_image_finish_read(&image, nullptr, pixels.rgba.data(), 0, nullptr), 0) << image.message;
    png_image_free(&image);
    return pixels;
}

}  // namespace testsupport
