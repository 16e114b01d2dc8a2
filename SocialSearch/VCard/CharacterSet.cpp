#include "VCard/CharacterSet.h"

#include "QVPlatform/Text.h"
#include "VCard/VCardEncoding.h"

#include <iconv.h>

#include <algorithm>
#include <cstdint>

namespace {

bool isCharacterSetName(const std::string& name) {
    const auto allowed = [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || c == '-' || c == '_';
    };
    return name.size() <= 40 && std::all_of(name.begin(), name.end(), allowed);
}

/// POSIX gives no class for it: the handle is closed when this goes.
class Converter {
  public:
    explicit Converter(const std::string& from) : mHandle(iconv_open("UTF-8", from.c_str())) {}
    ~Converter() {
        if (isOpen()) iconv_close(mHandle);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    std::optional<std::string> convert(std::string bytes) const {
        if (!isOpen()) return std::nullopt;
        // No character set has one byte for more than four of UTF-8's.
        std::string text(bytes.size() * 4 + 16, '\0');
        char* in = bytes.data();
        std::size_t inLeft = bytes.size();
        char* out = text.data();
        std::size_t outLeft = text.size();
        if (iconv(mHandle, &in, &inLeft, &out, &outLeft) == static_cast<std::size_t>(-1)) return std::nullopt;
        text.resize(text.size() - outLeft);
        return text;
    }

  private:
    bool isOpen() const { return reinterpret_cast<std::intptr_t>(mHandle) != -1; }
    iconv_t mHandle;
};

}  // namespace

bool isUTF8(std::string_view bytes) {
    return isASCII(bytes) || qv::Text::stringFromUTF8(qv::Data(bytes.begin(), bytes.end())).has_value();
}

std::optional<std::string> textInCharacterSet(std::string_view bytes, const std::string& name) {
    const std::string capitalName = capitals(name);
    if (name.empty() || capitalName == "UTF-8" || capitalName == "UTF8") {
        if (isUTF8(bytes)) return std::string(bytes);
        return name.empty() ? Converter("WINDOWS-1252").convert(std::string(bytes)) : std::nullopt;
    }
    if (!isCharacterSetName(capitalName)) return std::nullopt;
    return Converter(capitalName).convert(std::string(bytes));
}
