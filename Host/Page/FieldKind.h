#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The kinds of fields in the words that the page uses for them.
namespace qvhost::FieldKind {

/// "name", "email", …; "other" for a type that is none of the known ones.
std::string word(std::int32_t type);

/// The type of such a word; nothing for another.
std::optional<std::int32_t> type(std::string_view word);

}  // namespace qvhost::FieldKind
