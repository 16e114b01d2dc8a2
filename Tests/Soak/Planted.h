#pragma once

#include <cstddef>
#include <string_view>

namespace soak {

/// A defect that a run has on purpose, so that a test can see that it is found.
enum class Planted {
    Nothing,
    Leak,        ///< 1 KiB for each card
    Lost,        ///< the first card's end is told to nobody
    Twice,       ///< the first card's end is told twice
    Descriptor,  ///< stays open for each tenth card
    Thread,      ///< stays for each tenth card
};

Planted plantedNamed(std::string_view name);

/// Does what is planted for a card; nothing for what is done with ends.
void plant(Planted planted, int number);

}  // namespace soak
