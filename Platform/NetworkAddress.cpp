#include "QVPlatform/NetworkAddress.h"

#include "SocketAddress.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string>

namespace qv {

namespace {

using Bytes4 = std::array<std::uint8_t, 4>;
using Bytes16 = std::array<std::uint8_t, 16>;

/// Addresses whose first `length` bits are those of `start`.
template <typename Bytes>
struct Block {
    Bytes start;
    std::size_t length;

    bool contains(const Bytes& address) const {
        const std::size_t whole = length / 8;
        if (!std::equal(start.begin(), start.begin() + static_cast<std::ptrdiff_t>(whole), address.begin())) {
            return false;
        }
        const std::size_t rest = length % 8;
        return rest == 0 || (start[whole] ^ address[whole]) >> (8 - rest) == 0;
    }
};

constexpr std::array<Block<Bytes4>, 15> kSpecialIPv4 = {{{{0, 0, 0, 0}, 8},
                                                         {{10, 0, 0, 0}, 8},
                                                         {{100, 64, 0, 0}, 10},
                                                         {{127, 0, 0, 0}, 8},
                                                         {{169, 254, 0, 0}, 16},
                                                         {{172, 16, 0, 0}, 12},
                                                         {{192, 0, 0, 0}, 24},
                                                         {{192, 0, 2, 0}, 24},
                                                         {{192, 88, 99, 0}, 24},
                                                         {{192, 168, 0, 0}, 16},
                                                         {{198, 18, 0, 0}, 15},
                                                         {{198, 51, 100, 0}, 24},
                                                         {{203, 0, 113, 0}, 24},
                                                         {{224, 0, 0, 0}, 4},
                                                         {{240, 0, 0, 0}, 4}}};

/// Global unicast addresses; everything else of IPv6 is special.
constexpr Block<Bytes16> kGlobalIPv6 = {{0x20}, 3};
/// IETF protocol assignments (Teredo among them), the two for documentation.
constexpr std::array<Block<Bytes16>, 3> kSpecialIPv6 = {
    {{{0x20, 0x01, 0x00}, 23}, {{0x20, 0x01, 0x0D, 0xB8}, 32}, {{0x3F, 0xFF, 0x00}, 20}}};

/// IPv6 addresses that carry an IPv4 one, and where: mapped, translated (RFC 6052), 6to4 (RFC 3056).
struct Carrier {
    Block<Bytes16> block;
    std::size_t position;
};
constexpr std::array<Carrier, 3> kCarriers = {{{{{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF}, 96}, 12},
                                               {{{0x00, 0x64, 0xFF, 0x9B}, 96}, 12},
                                               {{{0x20, 0x02}, 16}, 2}}};

template <typename Blocks, typename Bytes>
bool isIn(const Blocks& blocks, const Bytes& address) {
    return std::any_of(blocks.begin(), blocks.end(), [&](const auto& block) { return block.contains(address); });
}

bool isPublic(const Bytes4& address) {
    return !isIn(kSpecialIPv4, address);
}

bool isPublic(const Bytes16& address) {
    for (const Carrier& carrier : kCarriers) {
        if (!carrier.block.contains(address)) continue;
        Bytes4 carried{};
        std::copy_n(address.begin() + static_cast<std::ptrdiff_t>(carrier.position), carried.size(), carried.begin());
        return isPublic(carried);
    }
    return kGlobalIPv6.contains(address) && !isIn(kSpecialIPv6, address);
}

template <typename Bytes>
bool isPublicBytes(const void* bytes) {
    Bytes address{};
    std::memcpy(address.data(), bytes, address.size());
    return isPublic(address);
}

}  // namespace

bool isPublicAddress(std::string_view numericAddress) {
    const std::string text(numericAddress);
    if (text.find('\0') != std::string::npos) return false;
    Bytes4 four{};
    if (::inet_pton(AF_INET, text.c_str(), four.data()) == 1) return isPublic(four);
    Bytes16 sixteen{};
    return ::inet_pton(AF_INET6, text.c_str(), sixteen.data()) == 1 && isPublic(sixteen);
}

bool isPublicSocketAddress(const sockaddr& address) {
    if (address.sa_family == AF_INET) {
        return isPublicBytes<Bytes4>(&reinterpret_cast<const sockaddr_in&>(address).sin_addr);
    }
    return address.sa_family == AF_INET6 &&
           isPublicBytes<Bytes16>(&reinterpret_cast<const sockaddr_in6&>(address).sin6_addr);
}

}  // namespace qv
