#include "Support/Similarity.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <stdexcept>

namespace benchmarksupport {

namespace {

constexpr double kLobes = 3;

double lanczos(double x) {
    if (std::abs(x) < 1e-9) return 1;
    if (std::abs(x) >= kLobes) return 0;
    const double angle = std::numbers::pi * x;
    return kLobes * std::sin(angle) * std::sin(angle / kLobes) / (angle * angle);
}

/// What of a row of samples goes into one new sample.
struct Taps {
    int first = 0;
    std::vector<float> weights;
};

std::vector<Taps> tapsFor(int sourceCount, int count) {
    const double ratio = static_cast<double>(sourceCount) / count;
    const double stretch = std::max(ratio, 1.0);
    std::vector<Taps> result;
    for (int index = 0; index < count; ++index) {
        const double centre = (index + 0.5) * ratio - 0.5;
        Taps taps;
        taps.first = std::max(0, static_cast<int>(std::ceil(centre - kLobes * stretch)));
        const int last = std::min(sourceCount - 1, static_cast<int>(std::floor(centre + kLobes * stretch)));
        double sum = 0;
        for (int place = taps.first; place <= last; ++place) {
            taps.weights.push_back(static_cast<float>(lanczos((place - centre) / stretch)));
            sum += static_cast<double>(taps.weights.back());
        }
        for (float& weight : taps.weights)
            weight /= static_cast<float>(sum);
        result.push_back(std::move(taps));
    }
    return result;
}

Luma resampledAcross(const Luma& source, int width) {
    const std::vector<Taps> taps = tapsFor(source.width, width);
    Luma result{width, source.height, {}};
    result.samples.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(source.height));
    for (int y = 0; y < source.height; ++y) {
        const float* row = source.samples.data() + std::ptrdiff_t{source.width} * y;
        for (const Taps& tap : taps) {
            float sum = 0;
            for (std::size_t index = 0; index < tap.weights.size(); ++index)
                sum += tap.weights[index] * row[static_cast<std::size_t>(tap.first) + index];
            result.samples.push_back(sum);
        }
    }
    return result;
}

Luma transposed(const Luma& source) {
    Luma result{source.height, source.width, std::vector<float>(source.samples.size())};
    for (int y = 0; y < source.height; ++y) {
        for (int x = 0; x < source.width; ++x) {
            result.samples[static_cast<std::size_t>(x) * static_cast<std::size_t>(source.height) +
                           static_cast<std::size_t>(y)] =
                source.samples[static_cast<std::size_t>(y) * static_cast<std::size_t>(source.width) +
                               static_cast<std::size_t>(x)];
        }
    }
    return result;
}

constexpr int kWindow = 8;

double similarityOfWindows(const float* a, const float* b, std::ptrdiff_t stride) {
    constexpr double kCount = kWindow * kWindow;
    constexpr double kSteadiesMeans = 0.01 * 0.01;
    constexpr double kSteadiesVariances = 0.03 * 0.03;
    double sumA = 0;
    double sumB = 0;
    double squaresA = 0;
    double squaresB = 0;
    double products = 0;
    for (int y = 0; y < kWindow; ++y, a += stride, b += stride) {
        for (int x = 0; x < kWindow; ++x) {
            const auto valueA = static_cast<double>(a[x]);
            const auto valueB = static_cast<double>(b[x]);
            sumA += valueA;
            sumB += valueB;
            squaresA += valueA * valueA;
            squaresB += valueB * valueB;
            products += valueA * valueB;
        }
    }
    const double meanA = sumA / kCount;
    const double meanB = sumB / kCount;
    const double varianceA = squaresA / kCount - meanA * meanA;
    const double varianceB = squaresB / kCount - meanB * meanB;
    const double covariance = products / kCount - meanA * meanB;
    return (2 * meanA * meanB + kSteadiesMeans) * (2 * covariance + kSteadiesVariances) /
           ((meanA * meanA + meanB * meanB + kSteadiesMeans) * (varianceA + varianceB + kSteadiesVariances));
}

}  // namespace

Luma lumaOf(const testsupport::Pixels& pixels) {
    Luma luma{pixels.width, pixels.height, {}};
    luma.samples.reserve(pixels.rgba.size() / 4);
    for (std::size_t index = 0; index < pixels.rgba.size(); index += 4) {
        const std::uint8_t* pixel = pixels.rgba.data() + index;
        const double value = (0.299 * pixel[0] + 0.587 * pixel[1] + 0.114 * pixel[2]) / 255;
        const double opacity = pixel[3] / 255.0;
        luma.samples.push_back(static_cast<float>(value * opacity + 1 - opacity));
    }
    return luma;
}

Luma resampledWithLanczos(const Luma& source, int width, int height) {
    return transposed(resampledAcross(transposed(resampledAcross(source, width)), height));
}

double structuralSimilarity(const Luma& a, const Luma& b) {
    if (a.width != b.width || a.height != b.height) throw std::invalid_argument("pictures of different sizes");
    double sum = 0;
    int count = 0;
    for (int y = 0; y + kWindow <= a.height; y += kWindow / 2) {
        for (int x = 0; x + kWindow <= a.width; x += kWindow / 2, ++count) {
            const std::ptrdiff_t offset = std::ptrdiff_t{a.width} * y + x;
            sum += similarityOfWindows(a.samples.data() + offset, b.samples.data() + offset, a.width);
        }
    }
    return count == 0 ? 0 : sum / count;
}

}  // namespace benchmarksupport
