#include "Output/Resources.h"

#include "QVCardScan/QVVeltoNoteGenerator.h"
#include "QVPlatform/Base64.h"
#include "QVPlatform/Image.h"
#include "QVPlatform/MD5.h"

namespace qvhost {

Resources::Resources(const std::vector<CardPicture>& pictures, const QVCardProcessingResponse& response) {
    for (const CardPicture& picture : pictures)
        add(picture.image->encodedData());
    for (const auto& avatar : response.avatars() ? *response.avatars() : std::vector<std::shared_ptr<qv::Image>>())
        add(QVVeltoNoteGenerator::dataForNSImage(avatar, "image/jpeg"));
    add(QVVeltoNoteGenerator::dataForNSImage(QVVeltoNoteGenerator::placeholderAvatar(), "image/png"));
}

void Resources::add(qv::Data bytes) {
    const std::string hash = qv::lowerHexMD5(bytes);
    mBytes.emplace(hash, std::move(bytes));
}

const qv::Data* Resources::find(const std::string& hash) const {
    const auto found = mBytes.find(hash);
    return found != mBytes.end() ? &found->second : nullptr;
}

std::string Resources::dataAddress(const std::string& hash) const {
    const qv::Data* bytes = find(hash);
    if (bytes == nullptr) return "";
    const FileKind kind = FileKind::of(*bytes);
    if (kind.isForBrowsers) return "data:" + std::string(kind.mimeType) + ";base64," + qv::base64(*bytes);
    const auto jpeg = qv::Image::initWithData(*bytes)->representationUsingType(qv::ImageFileType::JPEG, 0.9);
    return jpeg ? "data:image/jpeg;base64," + qv::base64(*jpeg) : "";
}

qv::Size Resources::size(const std::string& hash) const {
    const qv::Data* bytes = find(hash);
    return bytes != nullptr ? qv::Image::initWithData(*bytes)->size() : qv::Size();
}

}  // namespace qvhost
