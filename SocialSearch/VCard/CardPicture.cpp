#include "VCard/CardPicture.h"

#include "QVPlatform/Base64.h"
#include "QVPlatform/Image.h"
#include "VCard/VCardEncoding.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr double kMaximumSide = 512;
/// A PNG can be large in spite of its sides.
constexpr std::size_t kMaximumBytes = std::size_t{512} << 10;
constexpr double kCompressionFactor = 0.85;

bool isJPEG(const qv::Data& data) {
    return data.size() > 2 && data[0] == 0xFF && data[1] == 0xD8;
}

bool isPNG(const qv::Data& data) {
    return data.size() > 4 && data[0] == 0x89 && data[1] == 'P' && data[2] == 'N' && data[3] == 'G';
}

std::optional<qv::Data> scaled(const qv::Data& data) {
    const std::shared_ptr<qv::Image> image = qv::Image::initWithData(data);
    if (!image->isValid()) return std::nullopt;
    const qv::Size size = image->size();
    const double factor = std::min(1.0, kMaximumSide / std::max(size.width, size.height));
    if (factor == 1.0 && data.size() <= kMaximumBytes && (isJPEG(data) || isPNG(data))) return data;
    const qv::Size target{.width = std::max(1.0, size.width * factor), .height = std::max(1.0, size.height * factor)};
    return qv::Image::initWithSize(target, image)->representationUsingType(qv::ImageFileType::JPEG, kCompressionFactor);
}

std::optional<qv::Data> bytesOfDataURI(std::string_view uri) {
    const std::size_t comma = uri.find(',');
    if (comma == std::string_view::npos) return std::nullopt;
    const std::string head = capitals(uri.substr(0, comma));
    if (!head.starts_with("DATA:") || !head.ends_with(";BASE64")) return std::nullopt;
    return qv::dataFromBase64(uri.substr(comma + 1));
}

QVVCardProperty photo(QVVCardVersion version, const qv::Data& data) {
    const std::string format = isPNG(data) ? "PNG" : "JPEG";
    QVVCardProperty property = QVVCardProperty::withValue(version, "PHOTO", qv::base64(data));
    if (version == QVVCardVersion::V40) {
        property.value.insert(0, isPNG(data) ? "data:image/png;base64," : "data:image/jpeg;base64,");
    } else if (version == QVVCardVersion::V21) {
        property.parameters = {{.name = "ENCODING", .values = {"BASE64"}}, {.name = "", .values = {format}}};
    } else {
        property.parameters = {{.name = "ENCODING", .values = {"b"}}, {.name = "TYPE", .values = {format}}};
    }
    return property;
}

std::optional<qv::Data> pictureOf(const QVVCardProperty& property) {
    std::optional<qv::Data> data = property.isBase64() ? property.bytes() : bytesOfDataURI(property.text());
    return data && !data->empty() ? data : std::nullopt;
}

}  // namespace

std::optional<qv::Data> pictureOfCard(const QVVCard& card) {
    const QVVCardProperty* property = card.propertyNamed("PHOTO");
    return property != nullptr ? pictureOf(*property) : std::nullopt;
}

void writePicture(QVVCard& card, const qv::Data& picture) {
    const QVVCardProperty* old = card.propertyNamed("PHOTO");
    const std::optional<qv::Data> oldPicture = old != nullptr ? pictureOf(*old) : std::nullopt;
    if ((old != nullptr && !oldPicture) || oldPicture == picture) return;
    const std::optional<qv::Data> data = scaled(picture);
    if (!data || oldPicture == data) return;
    QVVCardProperty property = photo(card.version(), *data);
    if (old == nullptr) return card.addProperty(std::move(property));
    property.group = old->group;
    card.replaceProperty(old, std::move(property));
}
