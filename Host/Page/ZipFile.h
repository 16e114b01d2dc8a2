#pragma once

#include "Support/Result.h"

#include <filesystem>
#include <optional>

namespace qvhost {

/// Writes all files of a folder and those below it into one ZIP file, by their names there. Nothing, or why it failed
/// (`NotWritten`).
[[nodiscard]] std::optional<Failure> writeZip(const std::filesystem::path& file, const std::filesystem::path& folder);

}  // namespace qvhost
