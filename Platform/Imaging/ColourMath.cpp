#include "ColourMath.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

namespace qv::imaging {

/// a·b/255 to the nearest whole number.
static std::uint8_t product(unsigned a, unsigned b) {
    return static_cast<std::uint8_t>((a * b + 127) / 255);
}

static std::uint8_t quotient(unsigned colour, unsigned alpha) {
    if (alpha == 0) return 0;
    return static_cast<std::uint8_t>(std::min(255U, (colour * 255 + alpha / 2) / alpha));
}

/// Replaces each colour sample by `operation` of it and its pixel's opacity.
template <typename Operation>
static void mapWithAlpha(Picture& picture, Operation operation) {
    for (std::size_t index = 0; index < 3; ++index) {
        for (int y = 0; y < picture.size().height; ++y) {
            std::uint8_t* colour = picture.plane(index).row(y);
            const std::uint8_t* alpha = picture.plane(3).row(y);
            for (int x = 0; x < picture.size().width; ++x)
                colour[x] = operation(colour[x], alpha[x]);
        }
    }
}

void premultiply(Picture& picture) {
    mapWithAlpha(picture, product);
}

void unpremultiply(Picture& picture) {
    mapWithAlpha(picture, quotient);
}

static Picture relabelledRGB(Picture picture) {
    PictureLayout layout = picture.layout();
    layout.model = ColourModel::RGB;
    std::vector<Plane> planes;
    for (std::size_t index = 0; index < 3; ++index)
        planes.push_back(std::move(picture.plane(index)));
    return {layout, std::move(planes)};
}

Picture flattenedOnWhite(Picture picture) {
    mapWithAlpha(picture, [](unsigned colour, unsigned alpha) {
        return static_cast<std::uint8_t>((colour * alpha + 255 * (255 - alpha) + 127) / 255);
    });
    return relabelledRGB(std::move(picture));
}

static std::uint8_t clamped(int value) {
    return static_cast<std::uint8_t>(std::clamp(value, 0, 255));
}

/// Moves `centre` to `newCentre` and makes `steps` of the samples 255.
static std::array<std::uint8_t, 256> spreadTable(int centre, int newCentre, int steps) {
    std::array<std::uint8_t, 256> table{};
    for (int value = 0; value < 256; ++value) {
        const double spread = (value - centre) * 255.0 / steps;
        table[static_cast<std::size_t>(value)] = clamped(newCentre + static_cast<int>(std::lround(spread)));
    }
    return table;
}

void spreadVideoRange(Picture& picture) {
    const std::array<std::uint8_t, 256> luma = spreadTable(16, 0, 219);
    const std::array<std::uint8_t, 256> chroma = spreadTable(128, 128, 224);
    for (std::size_t index = 0; index < picture.planeCount(); ++index) {
        const std::array<std::uint8_t, 256>& table = index == 0 ? luma : chroma;
        Plane& plane = picture.plane(index);
        for (int y = 0; y < plane.height(); ++y)
            std::transform(plane.row(y), plane.row(y) + plane.width(), plane.row(y),
                           [&](std::uint8_t sample) { return table[sample]; });
    }
}

// Factors in units of 2⁻¹⁶: 1.402, 0.344136, 0.714136, 1.772.
static void convertRow(std::uint8_t* first, std::uint8_t* second, std::uint8_t* third, int width) {
    constexpr int kHalf = 1 << 15;
    for (int x = 0; x < width; ++x) {
        const int luma = first[x] * 65536 + kHalf;
        const int blue = second[x] - 128;
        const int red = third[x] - 128;
        first[x] = clamped((luma + 91881 * red) >> 16);
        second[x] = clamped((luma - 22554 * blue - 46802 * red) >> 16);
        third[x] = clamped((luma + 116130 * blue) >> 16);
    }
}

Picture convertedToRGB(Picture picture) {
    for (int y = 0; y < picture.size().height; ++y) {
        convertRow(picture.plane(0).row(y), picture.plane(1).row(y), picture.plane(2).row(y), picture.size().width);
    }
    return relabelledRGB(std::move(picture));
}

}  // namespace qv::imaging
