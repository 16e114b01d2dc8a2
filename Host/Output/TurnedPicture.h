#pragma once

#include "QVPlatform/Geometry.h"

#include <cstdint>
#include <string>

namespace qvhost {

/// The markup for a picture that is shown turned clockwise by some degrees. A turned picture stands in a box of the
/// shape that it has after turning, so that it covers nothing beside it. `style` is that of the element it replaces;
/// `size` is the picture's own, unturned.
std::string turnedPicture(const std::string& address, const std::string& style, qv::Size size, std::int64_t degrees);

}  // namespace qvhost
