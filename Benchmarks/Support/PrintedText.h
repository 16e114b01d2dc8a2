#pragma once

#include <string_view>

namespace benchmarksupport {

/// The lines that are printed on the card, in units of the card's width: the left end, the top, the height of the
/// letters.
struct PrintedLine {
    double left;
    double top;
    double height;
    std::string_view text;
};

/// How much ink lies on a place of the card, 0…1; `sharpness` is pixels per unit of the card's width.
double inkAt(double x, double y, double sharpness);

}  // namespace benchmarksupport
