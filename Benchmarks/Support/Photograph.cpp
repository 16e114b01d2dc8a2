#include "Support/Photograph.h"

#include "Support/PrintedText.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace benchmarksupport {

using testsupport::Pixels;

namespace {

constexpr double kCardRatio = 0.58;  // height of the card by its width
constexpr double kTurn = 0.035;      // radians

std::uint32_t hashOf(std::uint32_t x, std::uint32_t y, std::uint32_t seed) {
    std::uint32_t value = x * 0x9E3779B1U ^ y * 0x85EBCA77U ^ seed * 0xC2B2AE3DU;
    value = (value ^ (value >> 15)) * 0x2C1B3C6DU;
    value = (value ^ (value >> 12)) * 0x297A2D39U;
    return value ^ (value >> 15);
}

/// Random values at whole places, smooth between them: -1…1.
double smoothNoise(double x, double y, std::uint32_t seed) {
    const double left = std::floor(x);
    const double top = std::floor(y);
    const auto value = [&](int right, int below) {
        const auto column = static_cast<std::uint32_t>(static_cast<int>(left) + right);
        const auto row = static_cast<std::uint32_t>(static_cast<int>(top) + below);
        return hashOf(column, row, seed) / 2147483648.0 - 1;
    };
    const auto eased = [](double share) { return share * share * (3 - 2 * share); };
    const double across = eased(x - left);
    const double down = eased(y - top);
    const double upper = value(0, 0) * (1 - across) + value(1, 0) * across;
    const double lower = value(0, 1) * (1 - across) + value(1, 1) * across;
    return upper * (1 - down) + lower * down;
}

/// Roughly normal, deviation 1.
double grain(std::uint32_t hash) {
    const auto sum = (hash & 255) + (hash >> 8 & 255) + (hash >> 16 & 255) + (hash >> 24);
    return (static_cast<double>(sum) - 510) / 147.8;
}

struct Light {
    double red;
    double green;
    double blue;
};

Light woodAt(double x, double y) {
    const double rings = smoothNoise(x * 6, y * 90, 1) + 0.6 * smoothNoise(x * 25, y * 400, 2);
    const double pores = std::max(0.0, smoothNoise(x * 120, y * 1500, 3) - 0.35);
    const double tone = 1 + 0.12 * rings - 0.35 * pores + 0.05 * smoothNoise(x * 3, y * 3, 4);
    return {142 * tone, 98 * tone, 62 * tone};
}

Light paperAt(double x, double y, double sharpness) {
    const double fibre = 2.2 * smoothNoise(x * 300, y * 300, 5) + 1.2 * smoothNoise(x * 700, y * 700, 6);
    const bool isLogo = std::hypot(x - 0.84, y - 0.16) < 0.09;
    if (isLogo) return {38 + fibre, 92 + fibre + 60 * y, 150 + fibre};
    const double light = 1 - 0.86 * inkAt(x, y, sharpness);
    return {(238 + fibre) * light, (235 + fibre) * light, (226 + fibre) * light};
}

std::uint8_t sample(double value) {
    return static_cast<std::uint8_t>(std::clamp(value + 0.5, 0.0, 255.0));
}

/// Where a pixel lies, in units of the card's width from the card's upper left corner.
class View {
  public:
    View(int width, int height) : mScale(0.84 * std::min(width, static_cast<int>(height / 0.72))) {
        mCentreX = width / 2.0;
        mCentreY = height / 2.0;
    }
    double scale() const { return mScale; }
    double x(double column, double row) const {
        return 0.5 + ((column - mCentreX) * std::cos(kTurn) + (row - mCentreY) * std::sin(kTurn)) / mScale;
    }
    double y(double column, double row) const {
        return kCardRatio / 2 + ((row - mCentreY) * std::cos(kTurn) - (column - mCentreX) * std::sin(kTurn)) / mScale;
    }
    /// How much of a pixel the card covers.
    double cover(double x, double y) const {
        const double inside = std::min(std::min(x, 1 - x), std::min(y, kCardRatio - y));
        return std::clamp(inside * mScale + 0.5, 0.0, 1.0);
    }

  private:
    double mScale;
    double mCentreX;
    double mCentreY;
};

void paint(std::uint8_t* pixel, int column, int row, const View& view) {
    const double x = view.x(column, row);
    const double y = view.y(column, row);
    const double cover = view.cover(x, y);
    const Light card = cover > 0 ? paperAt(x, y, view.scale()) : Light{};
    const Light table = cover < 1 ? woodAt(x, y) : Light{};
    const double lamp = 1.02 - 0.16 * x - 0.12 * y;
    const auto hash = hashOf(static_cast<std::uint32_t>(column), static_cast<std::uint32_t>(row), 7);
    const double bright = 1.9 * grain(hash);
    const double colour = 1.1 * grain(hashOf(hash, 1, 8));
    pixel[0] = sample((card.red * cover + table.red * (1 - cover)) * lamp + bright + colour);
    pixel[1] = sample((card.green * cover + table.green * (1 - cover)) * lamp + bright);
    pixel[2] = sample((card.blue * cover + table.blue * (1 - cover)) * lamp + bright - colour);
    pixel[3] = 255;
}

}  // namespace

Pixels photographOfCard(int width, int height) {
    const View view(width, height);
    Pixels pixels(width, height);
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column)
            paint(pixels.at(column, row), column, row, view);
    }
    return pixels;
}

Pixels cutOutCard(int width, int height) {
    const View view(width, height);
    Pixels pixels = photographOfCard(width, height);
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            pixels.at(column, row)[3] = sample(255 * view.cover(view.x(column, row), view.y(column, row)));
        }
    }
    return pixels;
}

}  // namespace benchmarksupport
