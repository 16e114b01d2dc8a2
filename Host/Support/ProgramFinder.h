#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace qvhost::ProgramFinder {

/// To be called first, with the name under which this program was called.
void setOwnName(const char* name);

/// A program of that name beside this one, else the first in PATH; nothing when there is none.
std::optional<std::filesystem::path> find(const std::string& name);

}  // namespace qvhost::ProgramFinder
