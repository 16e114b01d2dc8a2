#pragma once

#include "Fields/Field.h"
#include "Fields/PhoneLabel.h"

#include <optional>
#include <vector>

namespace qv::recognition {

/// Labels that are lines of their own: in a column to the left of what they belong to, or above it.

/// The label of the numbers in a line, if one of `lines` is it.
std::optional<NumberKind> labelBeside(const TextLine& line, const std::vector<TextLine>& lines);

/// The lines with every "Skype" and "Twitter" in a column of labels joined to the one word on its right.
std::vector<TextLine> withHandleLabels(std::vector<TextLine> lines);

/// Engines lose the letter "F" of a column of labels. Where the numbers have their labels in such a column and one
/// below a telephone's has none, it is the fax, unless there is one or its range says otherwise.
void giveLostFaxLabel(std::vector<Field>& fields, const std::vector<TextLine>& lines);

}  // namespace qv::recognition
