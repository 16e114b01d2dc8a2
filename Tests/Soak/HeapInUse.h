#pragma once

#include <cstddef>
#include <optional>

namespace soak {

/// Bytes of this process that were asked for and not given back; nothing where the allocator does not tell, as those of
/// the sanitizers.
std::optional<std::size_t> heapInUse();

}  // namespace soak
