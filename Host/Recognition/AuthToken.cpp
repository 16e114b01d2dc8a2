#include "Recognition/AuthToken.h"

#include "Support/FileReading.h"

#include <cstdlib>

namespace qvhost::AuthToken {
namespace {

constexpr std::size_t kMaximumFileSize = 8192;

Failure refused(const std::string& where, const std::string& why) {
    return {ExitStatus::WrongCall, where + " " + why + ". Put the server's token there, on one line."};
}

std::string withoutLineBreak(std::string text) {
    if (!text.empty() && text.back() == '\n') text.pop_back();
    if (!text.empty() && text.back() == '\r') text.pop_back();
    return text;
}

bool hasControlCharacter(const std::string& text) {
    for (const char character : text) {
        if (static_cast<unsigned char>(character) < 0x20 || character == 0x7F) return true;
    }
    return false;
}

Result<std::string> checked(std::string token, const std::string& where) {
    if (token.empty()) return refused(where, "holds no token");
    if (hasControlCharacter(token)) return refused(where, "holds more than one line, or control characters");
    return token;
}

}  // namespace

Result<std::string> read(const std::optional<std::string>& file) {
    if (file) {
        const Result<qv::Data> data = readFile(*file, kMaximumFileSize);
        if (!data) return data.failure();
        return checked(withoutLineBreak(std::string(data->begin(), data->end())), "The token file \"" + *file + "\"");
    }
    const char* variable = std::getenv(kVariable);
    if (variable != nullptr) return checked(variable, std::string("The environment variable ") + kVariable);
    return Failure{ExitStatus::WrongCall,
                   std::string("A server given with --server needs its token: name a file that holds it with "
                               "--token-file, or set the environment variable ") +
                       kVariable + "."};
}

}  // namespace qvhost::AuthToken
