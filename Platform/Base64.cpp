#include "QVPlatform/Base64.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace qv {

namespace {

constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

}  // namespace

std::string base64(const Data& bytes) {
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
        unsigned value = 0;
        for (std::size_t k = 0; k < 3; ++k)
            value = value << 8 | (k < count ? bytes[i + k] : 0U);
        for (std::size_t k = 0; k < 4; ++k)
            text += k <= count ? kDigits[value >> (18 - 6 * k) & 63] : '=';
    }
    return text;
}

std::optional<Data> dataFromBase64(std::string_view text) {
    Data bytes;
    unsigned value = 0;
    int bits = 0;
    bool isPadded = false;
    for (const char c : text) {
        if (c == ' ' || c == '\t' || c == '\r' || c == '\n') continue;
        const std::size_t digit = kDigits.find(c);
        isPadded = isPadded || c == '=';
        if (isPadded != (digit == std::string_view::npos) || (isPadded && c != '=')) return std::nullopt;
        if (isPadded) continue;
        value = (value << 6 | static_cast<unsigned>(digit)) & 0xFFFFFF;
        bits += 6;
        if (bits < 8) continue;
        bits -= 8;
        bytes.push_back(static_cast<std::uint8_t>(value >> bits & 0xFF));
    }
    return bytes;
}

}  // namespace qv
