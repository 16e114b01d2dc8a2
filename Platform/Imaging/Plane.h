#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace qv::imaging {

/// Width and height in whole pixels.
struct PixelSize {
    int width = 0;
    int height = 0;
    std::int64_t pixels() const { return static_cast<std::int64_t>(width) * height; }
    PixelSize transposed() const { return {height, width}; }
    friend bool operator==(const PixelSize&, const PixelSize&) = default;
};

/// What no picture may exceed. Together with the row alignment of `Plane` they bound the memory of every step.
inline constexpr std::int64_t kMaxPixels = 250'000'000;         ///< of a picture that is decoded at a reduced scale
inline constexpr std::int64_t kMaxBufferedPixels = 64'000'000;  ///< of whatever lies in memory at once
inline constexpr std::int64_t kMaxSide = 1'000'000;             ///< a narrow plane still pays for whole aligned rows

/// Whether both sides are there and neither they nor their product exceed the limits.
inline bool isWithin(std::int64_t width, std::int64_t height, std::int64_t maxPixels) {
    return width > 0 && height > 0 && width <= kMaxSide && height <= kMaxSide && width * height <= maxPixels;
}

/// One channel of a picture, eight bits per sample. Rows start at multiples of 64 bytes, which is what the vector code
/// of the resampler asks for. Movable, not copyable; the samples of a new plane are not initialised.
class Plane {
  public:
    Plane() = default;
    /// Throws `std::bad_alloc` when there is no memory.
    explicit Plane(PixelSize size);

    int width() const { return mSize.width; }
    int height() const { return mSize.height; }
    PixelSize size() const { return mSize; }
    std::ptrdiff_t stride() const { return mStride; }
    std::uint8_t* row(int y) { return mBytes.get() + y * mStride; }
    const std::uint8_t* row(int y) const { return mBytes.get() + y * mStride; }

    /// Forgets the columns and rows beyond `size`, which lies within the plane.
    void trim(PixelSize size) { mSize = size; }

  private:
    struct Free {
        void operator()(std::uint8_t* bytes) const { std::free(bytes); }
    };
    PixelSize mSize;
    std::ptrdiff_t mStride = 0;
    std::unique_ptr<std::uint8_t[], Free> mBytes;
};

}  // namespace qv::imaging
