#include "QVPlatform/MD5.h"

#include "HexDigest.h"

namespace qv {

std::string lowerHexMD5(const Data& data) {
    return lowerHexDigest(EVP_md5(), data.data(), data.size());
}

}  // namespace qv
