#pragma once

#include <cstdint>
#include <vector>

namespace qv {

/// A run of bytes, owned by value.
using Data = std::vector<std::uint8_t>;

}  // namespace qv
