#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace fuzzing {

/// What must hold whatever comes in. Otherwise the fuzzer ends here, and its input is kept.
inline void require(bool holds, std::string_view what) {
    if (holds) return;
    std::fprintf(stderr, "broken: %.*s\n", static_cast<int>(what.size()), what.data());
    std::abort();
}

}  // namespace fuzzing
