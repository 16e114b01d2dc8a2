#pragma once

#include <openssl/evp.h>

#include <cstddef>
#include <string>

namespace qv {

/// The digest of the bytes as lower-case hexadecimal digits.
std::string lowerHexDigest(const EVP_MD* algorithm, const void* bytes, std::size_t size);

}  // namespace qv
