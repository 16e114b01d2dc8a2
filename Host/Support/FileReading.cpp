#include "Support/FileReading.h"

#include "QVPlatform/Text.h"
#include "Support/FileDescriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace qvhost {
namespace {

constexpr std::size_t kMebibyte = std::size_t{1024} * 1024;
constexpr std::size_t kMaximumResultSize = 16 * kMebibyte;

std::string nameOf(const std::filesystem::path& file, bool isInput) {
    return isInput ? "Standard input" : "\"" + file.string() + "\"";
}

Failure unreadable(const std::string& name, int error) {
    return {ExitStatus::WrongCall, name + " cannot be read: " + std::system_category().message(error) +
                                       ". Check the file's name and permissions."};
}

Failure tooLarge(const std::string& name, std::size_t limit) {
    return {ExitStatus::WrongCall, name + " is larger than " + std::to_string(limit / kMebibyte) +
                                       " MiB, which is more than is read. Give a smaller file."};
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

Result<qv::Data> readFile(const std::filesystem::path& file, std::size_t limit, bool dashIsInput) {
    const bool isInput = dashIsInput && file == "-";
    const std::string name = nameOf(file, isInput);
    FileDescriptor opened(isInput ? -1 : ::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
    if (!isInput && !opened.isOpen()) return unreadable(name, errno);
    qv::Data data;
    const int error = readUpTo(isInput ? STDIN_FILENO : opened.number(), limit, data);
    if (error != 0) return unreadable(name, error);
    if (data.size() > limit) return tooLarge(name, limit);
    return data;
}

Result<std::string> readResultText(const std::filesystem::path& file) {
    const Result<qv::Data> data = readFile(file, kMaximumResultSize, /*dashIsInput=*/true);
    if (!data) return data.failure();
    if (auto text = qv::Text::stringFromUTF8(*data)) return *std::move(text);
    return Failure{ExitStatus::WrongCall, nameOf(file, file == "-") +
                                              " is not UTF-8 text, which a recognition result must be. "
                                              "Convert it first, for example with iconv."};
}

}  // namespace qvhost
