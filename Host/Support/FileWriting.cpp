#include "Support/FileWriting.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>
#include <utility>

namespace qvhost {
namespace {

Failure notWritten(const std::filesystem::path& path, int error) {
    return {ExitStatus::NotWritten, "\"" + path.string() +
                                        "\" could not be written: " + std::system_category().message(error) +
                                        ". Choose another folder with -o, or make room and check its permissions."};
}

/// What a file made in the ordinary way would get; a temporary file starts readable by its owner only.
mode_t ordinaryPermissions() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

}  // namespace

int writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return errno;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

std::optional<Failure> writeFile(const std::filesystem::path& file, std::string_view bytes) {
    FileReplacement replacement(file);
    replacement.write(bytes);
    return replacement.finish();
}

FileReplacement::FileReplacement(std::filesystem::path file)
    : mFile(std::move(file)),
      mTemporary((mFile.parent_path() / (".qvcardscan-" + mFile.filename().string() + ".XXXXXX")).string()) {
    mDescriptor = FileDescriptor(::mkostemp(mTemporary.data(), O_CLOEXEC));
    if (!mDescriptor.isOpen()) {
        mError = errno;
        mTemporary.clear();
    }
}

FileReplacement::~FileReplacement() {
    if (!mTemporary.empty()) ::unlink(mTemporary.c_str());
}

void FileReplacement::write(std::string_view bytes) {
    constexpr std::size_t kPiece = 65536;
    mBuffer.append(bytes);
    if (mBuffer.size() >= kPiece) flush();
}

void FileReplacement::flush() {
    if (mError == 0) mError = writeAll(mDescriptor.number(), mBuffer);
    mBuffer.clear();
}

std::optional<Failure> FileReplacement::finish() {
    flush();
    const int file = mDescriptor.number();
    if (mError == 0 && (::fchmod(file, ordinaryPermissions()) != 0 || ::fsync(file) != 0)) mError = errno;
    if (!mDescriptor.close() && mError == 0) mError = errno;
    if (mError == 0 && ::rename(mTemporary.c_str(), mFile.c_str()) != 0) mError = errno;
    if (mError != 0) return notWritten(mFile, mError);
    mTemporary.clear();
    return std::nullopt;
}

int syncFolder(const std::filesystem::path& folder) {
    FileDescriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!opened.isOpen()) return errno;
    // Some file systems have nothing to sync here, and say so.
    return ::fsync(opened.number()) == 0 || errno == EINVAL ? 0 : errno;
}

std::optional<Failure> makeFolder(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (!error && !std::filesystem::is_directory(folder, error) && !error)
        error = std::make_error_code(std::errc::not_a_directory);
    if (!error) return std::nullopt;
    return notWritten(folder, error.value());
}

}  // namespace qvhost
