#pragma once

#include <algorithm>

namespace qv::recognition {

/// An upright rectangle in pixels: origin at the top left, y downwards. Which picture the pixels belong to is said
/// where a box is used: layout and fields count in the picture that was read, answers in the picture as it was sent.
struct Box {
    float x = 0;
    float y = 0;
    float w = 0;
    float h = 0;

    float right() const { return x + w; }
    float bottom() const { return y + h; }
    float centreX() const { return x + w / 2; }
    float centreY() const { return y + h / 2; }
    float area() const { return w * h; }
    bool empty() const { return w <= 0 || h <= 0; }
    bool operator==(const Box&) const = default;
};

/// The smallest box around both; an empty box adds nothing.
inline Box united(const Box& a, const Box& b) {
    if (a.empty()) return b;
    if (b.empty()) return a;
    const float x = std::min(a.x, b.x);
    const float y = std::min(a.y, b.y);
    return {x, y, std::max(a.right(), b.right()) - x, std::max(a.bottom(), b.bottom()) - y};
}

/// Length of the common part of two intervals, 0 when they are apart.
inline float overlap(float a0, float a1, float b0, float b1) {
    return std::max(0.F, std::min(a1, b1) - std::max(a0, b0));
}

inline float overlapX(const Box& a, const Box& b) {
    return overlap(a.x, a.right(), b.x, b.right());
}

inline float overlapY(const Box& a, const Box& b) {
    return overlap(a.y, a.bottom(), b.y, b.bottom());
}

inline float overlapArea(const Box& a, const Box& b) {
    return overlapX(a, b) * overlapY(a, b);
}

}  // namespace qv::recognition
