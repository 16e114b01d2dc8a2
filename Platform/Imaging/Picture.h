#pragma once

#include "PictureLayout.h"
#include "Plane.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace qv::imaging {

/// A decoded picture: one plane per channel. Movable, not copyable.
///
/// The content size says how much of the first plane is picture. It is not whole after a scaled decode, where the last
/// sample lies partly outside.
class Picture {
  public:
    /// A picture with planes that are not initialised. Throws `std::bad_alloc`.
    explicit Picture(const PictureLayout& layout);
    /// Adopts planes that have the layout's sizes.
    Picture(const PictureLayout& layout, std::vector<Plane> planes);

    const PictureLayout& layout() const { return mLayout; }
    ColourModel model() const { return mLayout.model; }
    PixelSize size() const { return mLayout.size; }

    double contentWidth() const { return mContentWidth; }
    double contentHeight() const { return mContentHeight; }
    void setContentSize(double width, double height);

    std::size_t planeCount() const { return mPlanes.size(); }
    Plane& plane(std::size_t index) { return mPlanes[index]; }
    const Plane& plane(std::size_t index) const { return mPlanes[index]; }

    /// Puts one row of interleaved samples, as many per pixel as there are planes, into planes of equal size.
    void setRow(int y, const std::uint8_t* interleaved);
    /// The reverse of `setRow`.
    void getRow(int y, std::uint8_t* interleaved) const;

  private:
    PictureLayout mLayout;
    double mContentWidth;
    double mContentHeight;
    std::vector<Plane> mPlanes;
};

}  // namespace qv::imaging
