#include "Support/FailingMemory.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

using testsupport::Shortage;

/// How many allocations of this thread are left until one fails; none does while it is negative.
thread_local long tLeft = -1;
thread_local Shortage tShortage = Shortage::OfOneAllocation;
thread_local bool tFailed = false;

bool mustFail() {
    if (tLeft < 0) return false;
    if (tLeft > 0) {
        --tLeft;
        return false;
    }
    if (tShortage == Shortage::OfOneAllocation) tLeft = -1;
    tFailed = true;
    return true;
}

}  // namespace

// Not inline: GCC takes a free() that it sees next to an operator new for a mistake.
[[gnu::noinline]] void* operator new(std::size_t size) {
    if (mustFail()) throw std::bad_alloc();
    if (void* memory = std::malloc(size > 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}

[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace testsupport {

void failAfter(long count, Shortage shortage) {
    tFailed = false;
    tShortage = shortage;
    tLeft = count;
}

bool endFailing() {
    tLeft = -1;
    return tFailed;
}

}  // namespace testsupport
