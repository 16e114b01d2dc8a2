#include "Support/FileWriting.h"

#include "Support/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>

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

int fill(FileDescriptor& file, std::string_view bytes) {
    if (const int error = writeAll(file.number(), bytes); error != 0) return error;
    if (::fchmod(file.number(), ordinaryPermissions()) != 0 || ::fsync(file.number()) != 0) return errno;
    return file.close() ? 0 : errno;
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
    std::string temporary = (file.parent_path() / (".qvcardscan-" + file.filename().string() + ".XXXXXX")).string();
    FileDescriptor descriptor(::mkostemp(temporary.data(), O_CLOEXEC));
    if (!descriptor.isOpen()) return notWritten(file, errno);
    int error = fill(descriptor, bytes);
    if (error == 0 && ::rename(temporary.c_str(), file.c_str()) != 0) error = errno;
    if (error == 0) return std::nullopt;
    ::unlink(temporary.c_str());
    return notWritten(file, error);
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
