#pragma once

#include <cstdint>

namespace fuzzing {

/// From now on the process reaches this port on 127.0.0.1 and nothing else; before, nothing at all.
void connectOnlyTo(std::uint16_t port);

}  // namespace fuzzing
