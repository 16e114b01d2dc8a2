#pragma once

namespace qv {

/// A width and a height in logical units (one pixel per unit for an image that was just decoded).
struct Size {
    /// From side to side.
    double width = 0;
    /// From top to bottom.
    double height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

/// A position; the unit is the owner's.
struct Point {
    /// To the right.
    double x = 0;
    /// Downwards.
    double y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

/// An axis-aligned rectangle; the unit is the owner's.
struct Rect {
    /// The upper left corner.
    Point origin;
    /// Width and height.
    Size size;
    friend bool operator==(const Rect&, const Rect&) = default;
};

}  // namespace qv
