#include "Scan/CardPicture.h"

#include "Output/FileKind.h"
#include "QVPlatform/MD5.h"
#include "Support/FileReading.h"

namespace qvhost {
namespace {

constexpr std::size_t kMaximumPictureSize = std::size_t{256} * 1024 * 1024;

/// A sound header may be followed by pixels that are not; only drawing finds out. Drawn small, it costs little.
bool canBeDrawn(const std::shared_ptr<qv::Image>& image) {
    if (!image->isValid()) return false;
    const auto thumbnail = qv::Image::initWithSize({32, 32}, image);
    return thumbnail->representationUsingType(qv::ImageFileType::JPEG, 0.5).has_value();
}

Failure isNoPicture(const std::string& file, const FileKind& kind) {
    if (!kind.isPicture()) {
        return {ExitStatus::WrongCall,
                "\"" + file + "\" is not an image that can be read. Give a JPEG, PNG, TIFF or WebP photograph."};
    }
    return {ExitStatus::WrongCall, "\"" + file + "\" is an image (" + std::string(kind.mimeType) +
                                       "), but it is damaged or too large to be read: at most 250 million pixels as "
                                       "JPEG and 64 million otherwise. Take the photograph again, or make it smaller."};
}

}  // namespace

Result<CardPicture> CardPicture::read(const std::string& file) {
    Result<qv::Data> data = readFile(file, kMaximumPictureSize);
    if (!data) return data.failure();
    return ofBytes(std::move(*data), file);
}

Result<CardPicture> CardPicture::ofBytes(qv::Data bytes, const std::string& name) {
    CardPicture picture;
    picture.hash = qv::lowerHexMD5(bytes);
    picture.image = qv::Image::initWithData(std::move(bytes));
    if (canBeDrawn(picture.image)) return picture;
    return isNoPicture(name, FileKind::of(picture.image->encodedData()));
}

Result<std::vector<CardPicture>> CardPicture::readAll(const std::vector<std::string>& files) {
    std::vector<CardPicture> pictures;
    for (const std::string& file : files) {
        Result<CardPicture> picture = read(file);
        if (!picture) return picture.failure();
        pictures.push_back(std::move(*picture));
    }
    return pictures;
}

}  // namespace qvhost
