#pragma once

#include <string>

/// Randomness of the system's, fit for secrets.
namespace qvhost::Random {

/// A version 4 UUID (RFC 4122) in capitals.
std::string uuid();

/// A secret of 256 bits as lower-case hexadecimal digits.
std::string token();

}  // namespace qvhost::Random
