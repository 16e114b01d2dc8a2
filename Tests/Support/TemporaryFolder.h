#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace testsupport {

/// A new empty folder that goes with everything in it.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "qvcardscan-test-XXXXXX").string();
        if (!::mkdtemp(name.data())) throw std::runtime_error("No folder for the test");
        mPath = std::filesystem::canonical(name);
    }
    ~TemporaryFolder() {
        std::error_code error;
        std::filesystem::remove_all(mPath, error);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return mPath; }
    std::filesystem::path operator/(std::string_view name) const { return mPath / name; }

    /// Writes a file, and the folders above it where they are missing.
    std::filesystem::path write(const std::filesystem::path& name, std::string_view content) const {
        const std::filesystem::path file = mPath / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << content;
        return file;
    }

  private:
    std::filesystem::path mPath;
};

}  // namespace testsupport
