#include "QVPlatform/MD5.h"

#include <openssl/evp.h>

#include <array>

namespace qv {

std::string lowerHexMD5(const Data& data) {
    constexpr char kDigits[] = "0123456789abcdef";
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
    unsigned count = 0;
    EVP_Digest(data.data(), data.size(), digest.data(), &count, EVP_md5(), nullptr);
    std::string text;
    for (unsigned index = 0; index < count; ++index) {
        text += kDigits[digest[index] >> 4];
        text += kDigits[digest[index] & 15];
    }
    return text;
}

}  // namespace qv
