#include "Support/TestImages.h"

#include <gtest/gtest.h>
#include <webp/encode.h>

namespace testsupport {

static void appendLittleEndian(qv::Data& data, std::size_t value, int bytes) {
    for (int index = 0; index < bytes; ++index)
        data.push_back(static_cast<std::uint8_t>(value >> (8 * index)));
}

static void appendText(qv::Data& data, std::string_view text) {
    for (const char letter : text)
        data.push_back(static_cast<std::uint8_t>(letter));
}

// The extended container: the picture's own chunk follows the header chunk, the EXIF block comes last.
static qv::Data withExif(const qv::Data& simple, const Pixels& pixels, const qv::Data& exif) {
    qv::Data body;
    appendText(body, "WEBPVP8X");
    appendLittleEndian(body, 10, 4);
    appendLittleEndian(body, 0x08, 4);
    appendLittleEndian(body, static_cast<std::size_t>(pixels.width - 1), 3);
    appendLittleEndian(body, static_cast<std::size_t>(pixels.height - 1), 3);
    body.insert(body.end(), simple.begin() + 12, simple.end());
    appendText(body, "EXIF");
    appendLittleEndian(body, exif.size(), 4);
    body.insert(body.end(), exif.begin(), exif.end());
    qv::Data data;
    appendText(data, "RIFF");
    appendLittleEndian(data, body.size(), 4);
    data.insert(data.end(), body.begin(), body.end());
    return data;
}

qv::Data makeWebP(const Pixels& pixels, const WebPOptions& options) {
    std::uint8_t* bytes = nullptr;
    const int stride = pixels.width * 4;
    const std::size_t count =
        options.isLossless ? WebPEncodeLosslessRGBA(pixels.rgba.data(), pixels.width, pixels.height, stride, &bytes)
                           : WebPEncodeRGBA(pixels.rgba.data(), pixels.width, pixels.height, stride, 95, &bytes);
    EXPECT_GT(count, 0U);
    const qv::Data data(bytes, bytes + count);
    WebPFree(bytes);
    return options.orientation == 0 ? data : withExif(data, pixels, makeExif(options.orientation));
}

qv::Data makeExif(int orientation, bool isBigEndian) {
    const auto value = static_cast<std::uint8_t>(orientation);
    if (isBigEndian) {
        return {'M', 'M', 0, 42, 0, 0, 0, 8, 0, 1, 0x01, 0x12, 0, 3, 0, 0, 0, 1, 0, value, 0, 0, 0, 0, 0, 0};
    }
    return {'I', 'I', 42, 0, 8, 0, 0, 0, 1, 0, 0x12, 0x01, 3, 0, 1, 0, 0, 0, value, 0, 0, 0, 0, 0, 0, 0};
}

}  // namespace testsupport
