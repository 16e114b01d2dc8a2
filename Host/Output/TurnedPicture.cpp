#include "Output/TurnedPicture.h"

#include <charconv>
#include <cmath>
#include <numbers>

namespace qvhost {
namespace {

/// The shape of the box around a picture that is turned.
qv::Size sizeAfterTurning(qv::Size size, std::int64_t degrees) {
    if (degrees % 180 == 0) return size;
    if (degrees % 90 == 0) return {size.height, size.width};
    const double angle = static_cast<double>(degrees) * std::numbers::pi / 180;
    const double sine = std::abs(std::sin(angle));
    const double cosine = std::abs(std::cos(angle));
    return {size.width * cosine + size.height * sine, size.width * sine + size.height * cosine};
}

/// A number as CSS wants it, whatever the locale.
std::string number(double value) {
    char digits[32];
    const auto result = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, 4);
    return std::string(digits, result.ptr);
}

std::string plainPicture(const std::string& address, const std::string& style) {
    return "<img alt=\"\" style=\"" + style + "\" src=\"" + address + "\">";
}

}  // namespace

std::string turnedPicture(const std::string& address, const std::string& style, qv::Size size, std::int64_t degrees) {
    const std::int64_t turn = (degrees % 360 + 360) % 360;
    if (turn == 0 || size.width <= 0 || size.height <= 0) return plainPicture(address, style);
    const qv::Size box = sizeAfterTurning(size, turn);
    const std::string frame =
        style + ";position:relative;overflow:hidden;aspect-ratio:" + number(box.width) + "/" + number(box.height);
    const std::string turned =
        "position:absolute;left:50%;top:50%;height:auto;width:" + number(100 * size.width / box.width) +
        "%;transform:translate(-50%,-50%) rotate(" + std::to_string(turn) + "deg)";
    return "<div class=\"card-picture\" style=\"" + frame + "\">" + plainPicture(address, turned) + "</div>";
}

}  // namespace qvhost
