#include "Platform/Preparation.h"

#include "QVPlatform/Image.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace benchmarksupport {

qv::Data prepared(qv::Data encoded) {
    constexpr double kBox = 1024;
    const auto image = qv::Image::initWithData(std::move(encoded));
    const auto [width, height] = image->size();
    const double factor = std::min(kBox / width, kBox / height);
    const auto drawn = qv::Image::initWithSize({width * factor, height * factor}, image);
    auto result = drawn->representationUsingType(qv::ImageFileType::JPEG, 0.7);
    if (!result) throw std::runtime_error("the picture cannot be prepared");
    return *std::move(result);
}

}  // namespace benchmarksupport
