#pragma once

#include <opencv2/core.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace qv::recognition {

/// A JPEG as it came: its size and its pixels, the latter perhaps at a smaller scale.
struct SentPicture {
    cv::Mat colour;  ///< 8-bit BGR
    int width = 0;   ///< of the picture as it was sent, in pixels
    int height = 0;
};

/// More pixels than this are refused; a progressive picture is held whole while it is decoded, hence its lower bound.
inline constexpr std::int64_t kMaximumPixels = 100'000'000;
inline constexpr std::int64_t kMaximumProgressivePixels = 30'000'000;
/// A picture whose longer side exceeds this is decoded at the smallest scale (n/8) that still covers it.
inline constexpr int kDecodedSide = 2048;

/// Decodes a baseline or progressive JPEG. Nothing when the bytes are no JPEG, cannot be decoded at all, or claim more
/// pixels than the bounds above; a picture that decodes with warnings (a cut tail) is used. Memory is bounded by the
/// decoded scale. Any thread.
std::optional<SentPicture> decodeJPEG(std::span<const std::uint8_t> bytes);

}  // namespace qv::recognition
