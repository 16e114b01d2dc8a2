#include "Folder/FolderFile.h"

#include "AddressBook/RecordName.h"
#include "Folder/FileHandle.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <thread>

namespace {

constexpr std::string_view kTemporaryPrefix = ".qvcardscan-";
constexpr std::string_view kTemporarySuffix = ".tmp";
constexpr std::chrono::seconds kLockLimit{30};

bool readAll(const FileHandle& file, std::size_t maximumSize, std::string& bytes) {
    std::array<char, 65536> buffer{};
    while (bytes.size() <= maximumSize) {
        const ssize_t count = ::read(file.get(), buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return count == 0;
        bytes.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return true;
}

bool writeAll(const FileHandle& file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(file.get(), bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

}  // namespace

FileContent readFileContent(const std::filesystem::path& file, std::size_t maximumSize) {
    FileContent content;
    const FileHandle handle(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status {};
    if (!handle.isOpen() && (errno == ENOENT || errno == ENOTDIR)) content.state = FileState::Missing;
    if (!handle.isOpen() || ::fstat(handle.get(), &status) != 0 || !S_ISREG(status.st_mode)) return content;
    content.mode = status.st_mode & 0777;
    if (!readAll(handle, maximumSize, content.bytes)) return content;
    content.state = content.bytes.size() > maximumSize ? FileState::TooLarge : FileState::Read;
    return content;
}

bool syncFolder(const std::filesystem::path& folder) {
    const FileHandle handle(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // Some file systems cannot sync a folder and say so; there is nothing more to do then.
    return handle.isOpen() && (::fsync(handle.get()) == 0 || errno == EINVAL || errno == EROFS);
}

TemporaryFile::TemporaryFile(const std::filesystem::path& folder, std::string_view bytes, mode_t mode)
    : mFile(folder / (std::string(kTemporaryPrefix) + newUUID() + std::string(kTemporarySuffix))) {
    FileHandle handle(::open(mFile.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    mIsWritten = handle.isOpen() && writeAll(handle, bytes) && ::fchmod(handle.get(), mode) == 0 &&
                 ::fsync(handle.get()) == 0 && handle.close();
}

TemporaryFile::~TemporaryFile() {
    if (!mFile.empty()) ::unlink(mFile.c_str());
}

bool TemporaryFile::replace(const std::filesystem::path& file) {
    if (::rename(mFile.c_str(), file.c_str()) != 0) return false;
    mFile.clear();
    return true;
}

TemporaryFile::Placing TemporaryFile::placeAs(const std::filesystem::path& file) {
    // A link, unlike a rename, never replaces what is there.
    if (::link(mFile.c_str(), file.c_str()) == 0) return Placing::Placed;
    if (errno == EEXIST) return Placing::Taken;
    return reserveAndReplace(file);
}

/// For file systems without links.
TemporaryFile::Placing TemporaryFile::reserveAndReplace(const std::filesystem::path& file) {
    FileHandle reservation(::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!reservation.isOpen()) return errno == EEXIST ? Placing::Taken : Placing::Failed;
    if (replace(file)) return Placing::Placed;
    ::unlink(file.c_str());
    return Placing::Failed;
}

bool TemporaryFile::isName(std::string_view name) {
    return name.starts_with(kTemporaryPrefix) && name.ends_with(kTemporarySuffix);
}

FolderLock::FolderLock(const std::filesystem::path& folder)
    : mFolder(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (mFolder < 0) return;
    const auto limit = std::chrono::steady_clock::now() + kLockLimit;
    auto pause = std::chrono::microseconds(100);
    // There is no lock with a time-out: ask again, at longer intervals.
    while (::flock(mFolder, LOCK_EX | LOCK_NB) != 0) {
        const bool isTaken = errno == EWOULDBLOCK || errno == EINTR;
        mState = isTaken ? State::Busy : State::Unsupported;
        if (!isTaken || std::chrono::steady_clock::now() > limit) return;
        std::this_thread::sleep_for(pause);
        pause = std::min(pause * 2, std::chrono::microseconds(5000));
    }
    mState = State::Locked;
}

FolderLock::~FolderLock() {
    if (mFolder >= 0) ::close(mFolder);
}
