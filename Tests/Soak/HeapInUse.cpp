#include "Soak/HeapInUse.h"

#if defined(__GLIBC__)
#include <malloc.h>
#endif

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define QV_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define QV_SANITIZED 1
#endif
#endif

namespace soak {

std::optional<std::size_t> heapInUse() {
#if defined(__GLIBC__) && !defined(QV_SANITIZED)
    const auto info = ::mallinfo2();
    return info.uordblks + info.hblkhd;
#else
    return std::nullopt;
#endif
}

}  // namespace soak
