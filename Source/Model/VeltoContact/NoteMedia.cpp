#include "NoteMedia.h"

#include "NoteTemplate.h"
#include "QVCardScan/QVCardScanDefines.h"
#include "QVPlatform/Atomic.h"
#include "QVPlatform/Format.h"
#include "QVPlatform/MD5.h"

namespace qvnote {
namespace {

constexpr std::string_view kPlaceholderAvatarName = "contact-note-profile-placeholder";
constexpr std::string_view kAvatarStyle =
    "width:80px;height:80px;-webkit-border-radius:3px;-moz-border-radius:3px;border-radius: 3px;"
    "box-shadow:0 1px 3px rgba(0,0,0,.6);margin-left:10px;";
constexpr std::string_view kMediaFormat = "<qv-media style=\"%@\" hash=\"%@\" type=\"%@\" />";
constexpr std::string_view kHTMLImageFormat =
    "<img width=\"80\" height=\"80\" style=\"%@\" x-quorvane-mime=\"%@\" src=\"%@\" id=\"%@\" class=\"qv-media\" />";

qv::ImageFileType fileTypeForMIMEType(std::string_view mimeType) {
    if (mimeType == "image/jpeg") return qv::ImageFileType::JPEG;
    if (mimeType == "image/png") return qv::ImageFileType::PNG;
    return qv::ImageFileType::TIFF;
}

std::shared_ptr<qv::Image> loadPlaceholderAvatar() {
    const auto file = libraryBundle().pathForImageResource(kPlaceholderAvatarName);
    if (!file) return nullptr;
    auto image = qv::Image::initWithContentsOfFile(*file);
    return image && image->isValid() ? image : nullptr;
}

}  // namespace

qv::Data imageData(const std::shared_ptr<qv::Image>& image, const std::string& mimeType) {
    if (!image) return {};
    return image->representationUsingType(fileTypeForMIMEType(mimeType), 1.0).value_or(qv::Data());
}

std::string imageHash(const std::shared_ptr<qv::Image>& image, const std::string& mimeType) {
    return qv::lowerHexMD5(imageData(image, mimeType));
}

// Two threads that find the cache empty both load the image, and either may be kept: they are the same picture. Neither
// cache is ever destroyed: threads of a queue may still ask while the process ends.
std::shared_ptr<qv::Image> placeholderAvatar() {
    static auto& cache = *new qv::Atomic<std::shared_ptr<qv::Image>>;
    auto image = cache.load();
    if (image) return image;
    image = loadPlaceholderAvatar();
    if (image) cache.store(image);
    return image;
}

const std::string& placeholderAvatarHash() {
    static const auto& hash = *new std::string(imageHash(placeholderAvatar(), "image/png"));
    return hash;
}

std::string profileImage(const QVString& hash, const QVString& type, bool isHTML, const QVString& URL) {
    if (!hash || !type) return std::string(QVNoteEmptyAvatarPlaceholder);
    if (!isHTML) return qv::format(kMediaFormat, kAvatarStyle, *hash, *type);
    const std::string source = URL.value_or("");
    return qv::format(kHTMLImageFormat, kAvatarStyle, *type, source, source);
}

}  // namespace qvnote
