// A picture from anywhere: decoded, prepared for the recognition server, and encoded for a note. One fuzzer per format
// is made of this, each with seeds of its own.

#include "QVCardScan/QVCardUtilities.h"
#include "Support/Input.h"
#include "Support/Require.h"

using fuzzing::require;

namespace {

/// Larger ones take their time, which is for the tests; here it would be missing for the others.
constexpr double kLargest = 1 << 18;

/// Small pictures are not enlarged to what is sent to the server: that costs a hundred times as much and shows nothing.
qv::Size boxFor(const qv::Image& image) {
    const bool isSmall = image.size().width <= 256 && image.size().height <= 256;
    return isSmall ? qv::Size{48, 48} : qv::Size{QVCardMaxRecoWidth, QVCardMaxRecoHeight};
}

void prepare(const std::shared_ptr<qv::Image>& image) {
    const qv::Size box = boxFor(*image);
    const auto scaled = imageByScalingProportionallyToSize(image, box);
    require(scaled != nullptr && scaled->isValid(), "what is valid can be scaled");
    const auto bytes = JPEGRepresentationUsingCompressionFactor(scaled, QVCardRecoCompressionFactor);
    if (!bytes) return;
    const auto sent = qv::Image::initWithData(*bytes);
    require(sent->isValid(), "what is sent is a picture");
    require(sent->size().width <= box.width && sent->size().height <= box.height, "what is sent fits into the limits");
}

void encode(const qv::Image& image) {
    for (const auto type : {qv::ImageFileType::JPEG, qv::ImageFileType::PNG, qv::ImageFileType::TIFF}) {
        const auto bytes = image.representationUsingType(type);
        if (!bytes) continue;
        const auto copy = qv::Image::initWithData(*bytes);
        require(copy->isValid(), "what is encoded is a picture");
        require(copy->size().width == image.size().width && copy->size().height == image.size().height,
                "what is encoded has the picture's size");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const auto image = qv::Image::initWithData(qv::Data(bytes, bytes + count));
    const auto size = image->size();
    require(image->isValid() == (size.width > 0 && size.height > 0), "a valid picture has a size, and no other");
    if (!image->isValid() || size.width * size.height > kLargest) return 0;
    prepare(image);
    encode(*image);
    return 0;
}
