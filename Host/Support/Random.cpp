#include "Support/Random.h"

#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <utility>

namespace qvhost::Random {
namespace {

template <std::size_t N>
std::array<std::uint8_t, N> randomBytes() {
    std::array<std::uint8_t, N> bytes{};
    // A token that could be guessed is worse than no run; this fails only on a system without a random source.
    if (::getentropy(bytes.data(), bytes.size()) != 0) std::abort();
    return bytes;
}

std::string hex(std::span<const std::uint8_t> bytes, const char* format) {
    std::string text;
    char digits[3];
    for (const std::uint8_t byte : bytes) {
        (void)std::snprintf(digits, sizeof digits, format, static_cast<unsigned>(byte));
        text += digits;
    }
    return text;
}

}  // namespace

std::string uuid() {
    auto bytes = randomBytes<16>();
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40);
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80);
    const std::span<const std::uint8_t> all(bytes);
    std::string text = hex(all.first(4), "%02X");
    for (const auto& [start, length] : {std::pair{4U, 2U}, {6U, 2U}, {8U, 2U}, {10U, 6U}})
        text += '-' + hex(all.subspan(start, length), "%02X");
    return text;
}

std::string token() {
    return hex(randomBytes<32>(), "%02x");
}

}  // namespace qvhost::Random
