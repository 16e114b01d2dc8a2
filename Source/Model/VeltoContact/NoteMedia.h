#pragma once

#include "QVCardScan/QVCardScanTypes.h"
#include "QVPlatform/Data.h"
#include "QVPlatform/Image.h"

#include <memory>
#include <string>

/// The pictures of a note, which refers to each by the MD5 of its encoded bytes.
namespace qvnote {

/// The bytes that an image's hash is taken of: the encoding that the MIME type names, TIFF for any other type. Empty
/// for an image that is null or cannot be encoded.
qv::Data imageData(const std::shared_ptr<qv::Image>& image, const std::string& mimeType);

/// 32 lower-case hexadecimal digits.
std::string imageHash(const std::shared_ptr<qv::Image>& image, const std::string& mimeType);

/// The placeholder avatar, kept once found; null until then. Any thread.
std::shared_ptr<qv::Image> placeholderAvatar();

/// The placeholder's hash as PNG, made on the first call and kept whatever it is. Any thread.
const std::string& placeholderAvatarHash();

/// The markup of a profile image: a media reference, or as HTML a picture at a URL.
std::string profileImage(const QVString& hash, const QVString& type, bool isHTML, const QVString& URL);

}  // namespace qvnote
