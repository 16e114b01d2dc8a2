#pragma once

#include <optional>
#include <string>

namespace fuzzing {

/// The elements of a note and the names of their attributes, without any text and value: what nobody's text may change.
/// Nothing when the note is no well-formed XML, even where "nbsp" is declared.
std::optional<std::string> outlineOfNote(const std::string& note);

/// Whether a label leaves the markup around it alone: it is put into notes as it is, as text and into an attribute.
bool isHarmlessLabel(const std::string& label);

}  // namespace fuzzing
