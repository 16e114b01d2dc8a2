#pragma once

#include "Fields/Field.h"

#include <vector>

namespace qv::recognition {

/// Names on Twitter ("@jane", "Twitter: jane") and Skype ("Skype: jane.doe") in a line; the label belongs to the claim,
/// the text does not hold it.
std::vector<Claim> findHandles(const TextLine& line);

/// Whether a line is nothing but the label of such a name ("Skype:").
bool isHandleLabel(const TextLine& line);

}  // namespace qv::recognition
