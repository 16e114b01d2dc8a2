#include "QVPlatform/Text.h"

#include "TextUnits.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unicode/utf16.h>
#include <unistd.h>

#include <cerrno>

namespace qv::Text {

namespace {

constexpr UChar32 kReplacementCharacter = 0xFFFD;

void appendUTF16(std::u16string& text, UChar32 character) {
    if (U_IS_BMP(character)) {
        text += static_cast<char16_t>(character);
    } else {
        text += static_cast<char16_t>(U16_LEAD(character));
        text += static_cast<char16_t>(U16_TRAIL(character));
    }
}

void appendUTF8(std::string& text, UChar32 character) {
    char bytes[U8_MAX_LENGTH];
    std::size_t count = 0;
    U8_APPEND_UNSAFE(bytes, count, character);
    text.append(bytes, count);
}

/// Owns a descriptor.
class OpenFile {
  public:
    explicit OpenFile(int descriptor) : mDescriptor(descriptor) {}
    ~OpenFile() {
        if (mDescriptor >= 0) ::close(mDescriptor);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    /// Nothing when it could not be opened or is no plain file.
    std::optional<std::size_t> plainSize() const {
        struct stat status {};
        if (mDescriptor < 0 || ::fstat(mDescriptor, &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
        return static_cast<std::size_t>(status.st_size);
    }
    /// Reads as much as the text is long; a file that has become shorter shortens it.
    bool fill(std::string& text) const {
        std::size_t filled = 0;
        while (filled < text.size()) {
            const ssize_t count = ::read(mDescriptor, text.data() + filled, text.size() - filled);
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) return false;
            if (count == 0) text.resize(filled);
            filled += static_cast<std::size_t>(count);
        }
        return true;
    }

  private:
    int mDescriptor;
};

bool isStrictUTF8(std::string_view text) {
    std::size_t index = asciiPrefixLength(text);
    while (index < text.size()) {
        if (nextCharacter(text, index) < 0) return false;
    }
    return true;
}

}  // namespace

std::u16string utf16(std::string_view utf8) {
    std::size_t index = asciiPrefixLength(utf8);
    std::u16string text(utf8.begin(), utf8.begin() + static_cast<std::ptrdiff_t>(index));
    text.reserve(utf8.size());
    while (index < utf8.size()) {
        const UChar32 character = nextCharacter(utf8, index);
        appendUTF16(text, character < 0 ? kReplacementCharacter : character);
    }
    return text;
}

std::string utf8(std::u16string_view utf16) {
    std::string text;
    text.reserve(utf16.size());
    for (std::size_t index = 0; index < utf16.size();) {
        UChar32 character = 0;
        U16_NEXT(utf16.data(), index, utf16.size(), character);
        if (character < 0x80) {
            text += static_cast<char>(character);
        } else {
            appendUTF8(text, U_IS_SURROGATE(character) ? kReplacementCharacter : character);
        }
    }
    return text;
}

std::optional<std::string> stringFromUTF8(const Data& bytes) {
    std::string text(bytes.begin(), bytes.end());
    if (!isStrictUTF8(text)) return std::nullopt;
    return text;
}

// Anything but a plain file (a device, a pipe) may never end; a pipe that nobody writes to is not waited for either.
std::optional<std::string> stringWithContentsOfFile(const std::string& path) {
    const OpenFile file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    const std::optional<std::size_t> size = file.plainSize();
    if (!size) return std::nullopt;
    std::string text(*size, '\0');
    if (!file.fill(text) || !isStrictUTF8(text)) return std::nullopt;
    return text;
}

}  // namespace qv::Text
