#include "QVPlatform/SHA256.h"

#include "HexDigest.h"

namespace qv {

std::string lowerHexSHA256(std::string_view bytes) {
    return lowerHexDigest(EVP_sha256(), bytes.data(), bytes.size());
}

}  // namespace qv
