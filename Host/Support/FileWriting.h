#pragma once

#include "Support/FileDescriptor.h"
#include "Support/Result.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace qvhost {

/// Writes everything to an open file; 0, or the system's error number.
[[nodiscard]] int writeAll(int file, std::string_view bytes);

/// Puts a file in its place whole: written under a temporary name beside it, synced, and renamed over what was there.
/// Nothing, or why it failed (`NotWritten`); a failure leaves the old file as it was and no temporary one.
[[nodiscard]] std::optional<Failure> writeFile(const std::filesystem::path& file, std::string_view bytes);

/// Puts a file in its place as `writeFile` does, piece by piece, so that it need not be in memory whole.
class FileReplacement {
  public:
    explicit FileReplacement(std::filesystem::path file);
    /// Leaves the old file as it was, unless it was finished.
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    /// Adds bytes; what goes wrong is told by `finish`.
    void write(std::string_view bytes);
    [[nodiscard]] std::optional<Failure> finish();

  private:
    void flush();

    std::filesystem::path mFile;
    std::string mTemporary;
    FileDescriptor mDescriptor;
    std::string mBuffer;
    int mError = 0;
};

/// Has the names in a folder outlive a power cut; 0, or the system's error number.
[[nodiscard]] int syncFolder(const std::filesystem::path& folder);

/// Makes a folder and those above it; one that is there already is fine. Nothing, or why it failed (`NotWritten`).
[[nodiscard]] std::optional<Failure> makeFolder(const std::filesystem::path& folder);

}  // namespace qvhost
