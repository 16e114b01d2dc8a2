#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <type_traits>

namespace qvc {

/// Copies between a structure as it is here and as the host knows it: the shorter of both. A host that was built for an
/// earlier version has a shorter one, one for a later version a longer one, whose rest stays as it is.
/// `kSmallest` is the size that the structure had in the first version.
template <std::size_t kSmallest, typename Structure>
bool fillStructure(Structure* target, Structure value) {
    static_assert(std::is_trivially_copyable_v<Structure> && kSmallest <= sizeof(Structure));
    if (target == nullptr || target->size < kSmallest) return false;
    value.size = target->size;
    std::memcpy(target, &value, std::min(value.size, sizeof(Structure)));
    return true;
}

/// The other direction: members that the host does not know are zero.
template <std::size_t kSmallest, typename Structure>
bool readStructure(Structure& target, const Structure* source) {
    static_assert(std::is_trivially_copyable_v<Structure> && kSmallest <= sizeof(Structure));
    if (source == nullptr || source->size < kSmallest) return false;
    target = Structure{};
    std::memcpy(&target, source, std::min(source->size, sizeof(Structure)));
    return true;
}

}  // namespace qvc
