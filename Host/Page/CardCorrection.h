#pragma once

#include "Page/PileCard.h"

#include <cstdint>
#include <optional>
#include <string>

/// What a person puts right on a card. Each says whether it could be done; a card that cannot be corrected now, or a
/// field that is not there, stays as it is.
namespace qvhost::CardCorrection {

inline constexpr std::size_t kMaximumText = 2000;
inline constexpr std::size_t kMaximumFields = 200;

/// Gives a field another type, another text, or both; what is absent stays. The text is taken as it was typed: what a
/// person wrote needs no repair.
bool change(PileCard& card, std::uint64_t field, const std::optional<std::int32_t>& type,
            const std::optional<std::string>& text);
bool add(PileCard& card, std::int32_t type, const std::string& text);
bool remove(PileCard& card, std::uint64_t field);

}  // namespace qvhost::CardCorrection
