#pragma once

#include "QVPlatform/Data.h"
#include "Support/Result.h"

#include <cstddef>
#include <filesystem>
#include <string>

namespace qvhost {

/// The bytes of a file, of `limit` at most; a larger one fails. `-` is standard input when `dashIsInput`. A folder is
/// refused, and so is a pipe with a name in a folder, which might be waited for without end; what a shell hands over
/// as /dev/fd/N or /dev/stdin is read to its end. Failures are `WrongCall` and name the file.
Result<qv::Data> readFile(const std::filesystem::path& file, std::size_t limit, bool dashIsInput = false);

/// What messages call a file.
std::string nameOfFile(const std::filesystem::path& file, bool dashIsInput = false);

}  // namespace qvhost
