#include "Program/ServerToken.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace qv::recognition {
namespace {

constexpr std::size_t kLongestToken = 4096;

/// The first line of a text, without its end.
std::string firstLine(std::string text) {
    text.erase(std::min(text.find_first_of("\r\n"), text.size()));
    return text;
}

ServerToken unusable(const std::string& path, const std::string& why) {
    return {{}, "--token-file: \"" + path + "\" " + why};
}

ServerToken unreadable(const std::string& path, int error) {
    return unusable(path,
                    "cannot be read: " + std::system_category().message(error) + ". Check its name and permissions.");
}

}  // namespace

ServerToken ServerToken::fromFile(const std::string& path) {
    std::error_code unknown;
    if (std::filesystem::is_directory(path, unknown)) return unusable(path, "is a folder. Name a file in it.");
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file) return unreadable(path, errno);
    std::string text(kLongestToken + 1, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    if (file.bad()) return unreadable(path, EIO);
    text.resize(static_cast<std::size_t>(file.gcount()));
    if (text.empty()) return unusable(path, "is empty. Its first line has to be the token.");
    const std::string token = firstLine(std::move(text));
    if (token.empty()) return unusable(path, "has an empty first line, which has to be the token.");
    if (token.size() > kLongestToken)
        return unusable(path, "has a first line of more than " + std::to_string(kLongestToken) +
                                  " bytes. The token has to be shorter.");
    return {token, {}};
}

ServerToken ServerToken::fromParent() {
    std::string line;
    // Byte by byte: what follows the line belongs to nobody, and its end is what is waited for afterwards.
    for (char c = 0; line.size() < kLongestToken && ::read(STDIN_FILENO, &c, 1) == 1 && c != '\n';)
        line.push_back(c);
    line = firstLine(std::move(line));
    if (line.empty())
        return {{}, "There is no token on standard input. With --embedded its first line has to be the token."};
    return {line, {}};
}

}  // namespace qv::recognition
