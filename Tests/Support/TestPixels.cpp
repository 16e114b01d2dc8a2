#include "Support/TestPixels.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>

namespace testsupport {

Pixels::Pixels(int pixelWidth, int pixelHeight, Colour colour)
    : width(pixelWidth),
      height(pixelHeight),
      rgba(static_cast<std::size_t>(pixelWidth) * static_cast<std::size_t>(pixelHeight) * 4) {
    for (std::size_t index = 0; index < rgba.size(); ++index)
        rgba[index] = colour[index % 4];
}

void Pixels::set(int x, int y, Colour colour) {
    std::copy(colour.begin(), colour.end(), at(x, y));
}

Pixels quarters(int width, int height) {
    Pixels pixels(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const bool isLeft = x < width / 2;
            pixels.set(x, y, y < height / 2 ? (isLeft ? kRed : kGreen) : (isLeft ? kBlue : kYellow));
        }
    }
    return pixels;
}

Pixels photograph(int width, int height) {
    Pixels pixels(width, height);
    std::minstd_rand random(20240501);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const double u = static_cast<double>(x) / width;
            const double v = static_cast<double>(y) / height;
            const int noise = static_cast<int>(random() % 13) - 6;
            const bool isInk = std::fmod(v * 24, 1) < 0.35 && std::fmod(u * 60 + std::floor(v * 24) * 0.37, 1) < 0.4;
            const double light = isInk ? 50 : 150 + 80 * u;
            const auto channel = [&](double tint) {
                return static_cast<std::uint8_t>(std::clamp(light + tint + noise, 0.0, 255.0));
            };
            pixels.set(x, y, {channel(25 * v), channel(0), channel(-45 * std::sin(3 * u)), 255});
        }
    }
    return pixels;
}

Pixels turnedUpright(const Pixels& stored, int orientation) {
    const bool swaps = orientation >= 5;
    Pixels upright(swaps ? stored.height : stored.width, swaps ? stored.width : stored.height);
    const int right = stored.width - 1;
    const int bottom = stored.height - 1;
    for (int y = 0; y < upright.height; ++y) {
        for (int x = 0; x < upright.width; ++x) {
            // Where the stored first row and first column lie, by the table of the EXIF standard.
            const std::array<std::array<int, 2>, 8> from{{{x, y},
                                                          {right - x, y},
                                                          {right - x, bottom - y},
                                                          {x, bottom - y},
                                                          {y, x},
                                                          {y, bottom - x},
                                                          {right - y, bottom - x},
                                                          {right - y, x}}};
            const auto& [storedX, storedY] = from[static_cast<std::size_t>(orientation - 1)];
            upright.set(x, y, stored.colour(storedX, storedY));
        }
    }
    return upright;
}

/// Sums `count` cells of `step` values each into `resultCount` cells, by the area they share.
static std::vector<double> reducedRow(const std::vector<double>& row, int count, int resultCount) {
    std::vector<double> result(static_cast<std::size_t>(resultCount) * 4);
    const double ratio = static_cast<double>(count) / resultCount;
    for (int index = 0; index < resultCount; ++index) {
        const double start = index * ratio;
        const double end = start + ratio;
        for (int cell = static_cast<int>(start); cell < std::min(count, static_cast<int>(std::ceil(end))); ++cell) {
            const double share = (std::min(end, cell + 1.0) - std::max(start, static_cast<double>(cell))) / ratio;
            for (int channel = 0; channel < 4; ++channel) {
                result[static_cast<std::size_t>(index * 4 + channel)] +=
                    share * row[static_cast<std::size_t>(cell * 4 + channel)];
            }
        }
    }
    return result;
}

Pixels boxReduced(const Pixels& source, int width, int height) {
    const auto rowValues = static_cast<std::size_t>(width) * 4;
    std::vector<double> sums(rowValues * static_cast<std::size_t>(height));
    const double ratio = static_cast<double>(source.height) / height;
    for (int y = 0; y < source.height; ++y) {
        const std::vector<double> row(source.at(0, y), source.at(0, y) + std::ptrdiff_t{source.width} * 4);
        const std::vector<double> reduced = reducedRow(row, source.width, width);
        for (int target = static_cast<int>(y / ratio); target < height && target * ratio < y + 1; ++target) {
            const double share = (std::min((target + 1) * ratio, y + 1.0) - std::max(target * ratio, y + 0.0)) / ratio;
            for (std::size_t index = 0; index < rowValues; ++index) {
                sums[static_cast<std::size_t>(target) * rowValues + index] += std::max(share, 0.0) * reduced[index];
            }
        }
    }
    Pixels result(width, height);
    std::transform(sums.begin(), sums.end(), result.rgba.begin(),
                   [](double sum) { return static_cast<std::uint8_t>(std::clamp(sum + 0.5, 0.0, 255.0)); });
    return result;
}

double psnr(const Pixels& a, const Pixels& b) {
    if (a.width != b.width || a.height != b.height) return 0;
    double sum = 0;
    for (std::size_t index = 0; index < a.rgba.size(); ++index) {
        const double difference = index % 4 == 3 ? 0 : a.rgba[index] - b.rgba[index];
        sum += difference * difference;
    }
    if (sum == 0) return 99;
    return 10 * std::log10(255.0 * 255.0 * 3 * a.width * a.height / sum);
}

std::array<double, 4> meanColour(const Pixels& pixels) {
    std::array<double, 4> sums{};
    for (std::size_t index = 0; index < pixels.rgba.size(); ++index)
        sums[index % 4] += pixels.rgba[index];
    for (double& sum : sums)
        sum /= static_cast<double>(pixels.width) * pixels.height;
    return sums;
}

int distance(Colour a, Colour b) {
    int largest = 0;
    for (std::size_t index = 0; index < 4; ++index)
        largest = std::max(largest, std::abs(a[index] - b[index]));
    return largest;
}

}  // namespace testsupport
