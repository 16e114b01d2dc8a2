#pragma once

#include "QVPlatform/Data.h"

#include <string_view>

namespace qvhost {

/// What kind of picture file some bytes are, by how they begin.
struct FileKind {
    std::string_view extension;
    std::string_view mimeType;
    /// Whether every browser shows it.
    bool isForBrowsers = false;

    bool isPicture() const { return mimeType.starts_with("image/"); }

    static FileKind of(const qv::Data& bytes);

    /// Whether files of some kind end like this, the dot included.
    static bool isExtension(std::string_view ending);
};

}  // namespace qvhost
