#pragma once

#include "QVSocialSearch/QVVCardProperty.h"

#include <optional>
#include <string>
#include <string_view>

/// One logical line of a card as it is in the file, folds and line end included, and what it says. Empty lines, the
/// lines of a card within the card, and lines that are only a frame (BEGIN, END) say nothing.
struct VCardLine {
    std::string bytes;
    std::optional<QVVCardProperty> property;
};

/// Writes a property as a line: at most 75 octets without the line end in each piece, and no piece begins inside a
/// UTF-8 sequence. 2.1, where folding changes texts, gets quoted-printable for what is long or not plain ASCII.
VCardLine lineWithProperty(const QVVCardProperty& property, std::string_view lineEnd);
