#include "Plane.h"

#include <new>

namespace qv::imaging {

static constexpr std::ptrdiff_t kAlignment = 64;

Plane::Plane(PixelSize size) : mSize(size), mStride((size.width + kAlignment - 1) / kAlignment * kAlignment) {
    const auto bytes = static_cast<std::size_t>(mStride) * static_cast<std::size_t>(size.height);
    mBytes.reset(static_cast<std::uint8_t*>(std::aligned_alloc(kAlignment, bytes)));
    if (!mBytes) throw std::bad_alloc();
}

}  // namespace qv::imaging
