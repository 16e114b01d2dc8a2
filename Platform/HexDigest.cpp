#include "HexDigest.h"

#include "CryptoLibrary.h"

#include <array>

namespace qv {

std::string lowerHexDigest(const EVP_MD* algorithm, const void* bytes, std::size_t size) {
    readyCryptoLibrary();
    constexpr char kDigits[] = "0123456789abcdef";
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
    unsigned count = 0;
    EVP_Digest(bytes, size, digest.data(), &count, algorithm, nullptr);
    std::string text;
    for (unsigned index = 0; index < count; ++index) {
        text += kDigits[digest[index] >> 4];
        text += kDigits[digest[index] & 15];
    }
    return text;
}

}  // namespace qv
