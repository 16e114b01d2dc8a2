#include "Support/FileReading.h"

#include "Support/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <system_error>
#include <utility>

namespace qvhost {
namespace {

constexpr std::size_t kMebibyte = std::size_t{1024} * 1024;

Failure unreadable(const std::string& name, int error) {
    return {ExitStatus::WrongCall, name + " cannot be read: " + std::system_category().message(error) +
                                       ". Check the file's name and permissions."};
}

Failure tooLarge(const std::string& name, std::size_t limit) {
    return {ExitStatus::WrongCall, name + " is larger than " + std::to_string(limit / kMebibyte) +
                                       " MiB, which is more than is read. Give a smaller file."};
}

Failure isFolder(const std::string& name) {
    return {ExitStatus::WrongCall, name + " is a folder. Name a file in it."};
}

Failure isPipe(const std::string& name, bool dashIsInput) {
    return {ExitStatus::WrongCall,
            name + " is a pipe, not a file. Save what comes out of it in a file" +
                (dashIsInput ? ", or hand it in on standard input and give - for the file." : " first.")};
}

/// What somebody handed over has a writer; a pipe that lies in a folder may wait for one without end.
bool isHandedOver(const std::filesystem::path& file) {
    const std::filesystem::path folder = file.parent_path();
    return folder == "/dev/fd" || folder == "/proc/self/fd" || file == "/dev/stdin";
}

std::optional<Failure> objectionTo(int opened, const std::filesystem::path& file, bool dashIsInput) {
    const std::string name = nameOfFile(file);
    struct stat status = {};
    if (::fstat(opened, &status) != 0) return unreadable(name, errno);
    if (S_ISDIR(status.st_mode)) return isFolder(name);
    if (S_ISFIFO(status.st_mode) && !isHandedOver(file)) return isPipe(name, dashIsInput);
    return std::nullopt;
}

/// Opening must not wait; reading may.
void waitForBytes(int opened) {
    ::fcntl(opened, F_SETFL, ::fcntl(opened, F_GETFL) & ~O_NONBLOCK);
}

/// 0, or the system's error number. Stops one byte past the limit.
int readUpTo(int file, std::size_t limit, qv::Data& data) {
    constexpr std::size_t kStep = kMebibyte / 4;
    while (data.size() <= limit) {
        const std::size_t size = data.size();
        const std::size_t step = std::min(kStep, limit + 1 - size);
        data.resize(size + step);
        const ssize_t count = ::read(file, data.data() + size, step);
        const int error = errno;
        data.resize(size + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        if (count == 0) return 0;
        if (count < 0 && error != EINTR) return error;
    }
    return 0;
}

}  // namespace

std::string nameOfFile(const std::filesystem::path& file, bool dashIsInput) {
    return dashIsInput && file == "-" ? "Standard input" : "\"" + file.string() + "\"";
}

Result<qv::Data> readFile(const std::filesystem::path& file, std::size_t limit, bool dashIsInput) {
    const bool isInput = dashIsInput && file == "-";
    const std::string name = nameOfFile(file, dashIsInput);
    FileDescriptor opened(isInput ? -1 : ::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
    if (!isInput) {
        if (!opened.isOpen()) return unreadable(name, errno);
        if (auto objection = objectionTo(opened.number(), file, dashIsInput)) return *std::move(objection);
        waitForBytes(opened.number());
    }
    qv::Data data;
    const int error = readUpTo(isInput ? STDIN_FILENO : opened.number(), limit, data);
    if (error == EISDIR) return isFolder(name);
    if (error != 0) return unreadable(name, error);
    if (data.size() > limit) return tooLarge(name, limit);
    return data;
}

}  // namespace qvhost
