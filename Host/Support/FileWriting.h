#pragma once

#include "Support/Result.h"

#include <filesystem>
#include <optional>
#include <string_view>

namespace qvhost {

/// Writes everything to an open file; 0, or the system's error number.
[[nodiscard]] int writeAll(int file, std::string_view bytes);

/// Puts a file in its place whole: written under a temporary name beside it, synced, and renamed over what was there.
/// Nothing, or why it failed (`NotWritten`); a failure leaves the old file as it was and no temporary one.
[[nodiscard]] std::optional<Failure> writeFile(const std::filesystem::path& file, std::string_view bytes);

/// Makes a folder and those above it; one that is there already is fine. Nothing, or why it failed (`NotWritten`).
[[nodiscard]] std::optional<Failure> makeFolder(const std::filesystem::path& folder);

}  // namespace qvhost
