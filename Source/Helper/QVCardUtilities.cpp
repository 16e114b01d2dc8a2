#include "QVCardScan/QVCardUtilities.h"

#include <algorithm>

// Single precision throughout: it fixes the exact sizes.
static qv::Size sizeFittingProportionally(qv::Size current, qv::Size target) {
    const auto targetWidth = static_cast<float>(target.width);
    const auto targetHeight = static_cast<float>(target.height);
    const auto currentWidth = static_cast<float>(current.width);
    const auto currentHeight = static_cast<float>(current.height);
    const float factor = std::min(targetWidth / currentWidth, targetHeight / currentHeight);
    const float newWidth = currentWidth * factor;
    const float newHeight = currentHeight * factor;
    return {newWidth, newHeight};
}

std::shared_ptr<qv::Image> imageByScalingProportionallyToSize(const std::shared_ptr<qv::Image>& image,
                                                              qv::Size targetSize) {
    if (!image || !image->isValid()) return nullptr;
    const qv::Size currentSize = image->size();
    const qv::Size newSize =
        currentSize == targetSize ? targetSize : sizeFittingProportionally(currentSize, targetSize);
    return qv::Image::initWithSize(newSize, image);
}

// A bitmap made by way of TIFF data has the same pixels, so the picture is encoded directly.
std::optional<qv::Data> JPEGRepresentationUsingCompressionFactor(const std::shared_ptr<qv::Image>& image,
                                                                 double compressionFactor) {
    if (!image) return std::nullopt;
    return image->representationUsingType(qv::ImageFileType::JPEG, compressionFactor);
}
