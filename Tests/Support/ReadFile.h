#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace testsupport {

/// The bytes of a file; throws `std::runtime_error` when it cannot be read.
inline std::string readFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw std::runtime_error("Cannot read " + file.string());
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace testsupport
