#pragma once

#include "QVPlatform/Data.h"
#include "Support/Result.h"

#include <cstddef>
#include <filesystem>
#include <string>

namespace qvhost {

/// The bytes of a file, of `limit` at most; a larger one fails. `-` is standard input when `dashIsInput`.
/// Failures are `WrongCall` and name the file.
Result<qv::Data> readFile(const std::filesystem::path& file, std::size_t limit, bool dashIsInput = false);

/// A recognition result from a file, or from standard input for `-`: strict UTF-8 text, 16 MiB at most.
Result<std::string> readResultText(const std::filesystem::path& file);

}  // namespace qvhost
