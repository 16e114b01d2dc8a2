#pragma once

#include "QVPlatform/Data.h"

#include <filesystem>
#include <optional>

namespace measurement {

/// What the library sends to a recognition server for a picture that is turned clockwise by `degrees`, a multiple of
/// 90, before: the same fitting and the same JPEG. The picture's own orientation counts first. Nothing when the file
/// cannot be read as a picture.
std::optional<qv::Data> requestFor(const std::filesystem::path& picture, int degrees);

}  // namespace measurement
