#pragma once

#include "QVCardScan/QVCardScanTypes.h"
#include "QVPlatform/Data.h"
#include "QVPlatform/Export.h"
#include "QVPlatform/Geometry.h"
#include "QVPlatform/Image.h"

#include <optional>

/// Limits of a card image that goes to the recognition server.
inline constexpr long QVCardMaxRecoWidth = 1024;
inline constexpr long QVCardMaxRecoHeight = 1024;
inline constexpr double QVCardRecoCompressionFactor = 0.7;

/// Groups the operations below; has no members.
class QV_EXPORT QVCardUtilities {};

/// `imageByScalingProportionallyToSize:` A new image that fits the box, larger or smaller than the receiver; null when
/// the receiver is null or not valid.
QV_EXPORT std::shared_ptr<qv::Image> imageByScalingProportionallyToSize(const std::shared_ptr<qv::Image>& image,
                                                                        qv::Size targetSize);

/// `JPEGRepresentationUsingCompressionFactor:` JPEG bytes (0 smallest … 1 best); absent when there is no usable image.
QV_EXPORT std::optional<qv::Data> JPEGRepresentationUsingCompressionFactor(const std::shared_ptr<qv::Image>& image,
                                                                           double compressionFactor);
