#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace testsupport {

using Colour = std::array<std::uint8_t, 4>;  ///< red, green, blue, opacity

inline constexpr Colour kRed{220, 40, 30, 255};
inline constexpr Colour kGreen{30, 180, 60, 255};
inline constexpr Colour kBlue{40, 60, 210, 255};
inline constexpr Colour kYellow{230, 210, 40, 255};
inline constexpr Colour kWhite{255, 255, 255, 255};

/// A picture as the tests see it: RGBA, row by row.
struct Pixels {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rgba;

    Pixels() = default;
    Pixels(int pixelWidth, int pixelHeight, Colour colour = kWhite);
    const std::uint8_t* at(int x, int y) const {
        return rgba.data() + 4 * (static_cast<std::ptrdiff_t>(y) * width + x);
    }
    std::uint8_t* at(int x, int y) { return rgba.data() + 4 * (static_cast<std::ptrdiff_t>(y) * width + x); }
    Colour colour(int x, int y) const { return {at(x, y)[0], at(x, y)[1], at(x, y)[2], at(x, y)[3]}; }
    void set(int x, int y, Colour colour);
};

/// Four quarters: red, green / blue, yellow. No turning or mirroring leaves it as it is.
Pixels quarters(int width, int height);

/// Something like a photograph of a card: soft gradients, dark text-like strokes and noise; the same each time.
Pixels photograph(int width, int height);

/// The picture as shown when it is stored with the given EXIF orientation (1…8).
Pixels turnedUpright(const Pixels& stored, int orientation);

/// Each result pixel the mean of the area it covers, fractions of pixels included. For reduction only.
Pixels boxReduced(const Pixels& source, int width, int height);

/// Peak signal-to-noise ratio over red, green and blue in decibels; 99 for equal pictures.
double psnr(const Pixels& a, const Pixels& b);

/// Mean of each channel.
std::array<double, 4> meanColour(const Pixels& pixels);

/// Largest difference of any channel between two colours.
int distance(Colour a, Colour b);

}  // namespace testsupport
