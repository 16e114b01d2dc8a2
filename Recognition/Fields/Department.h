#pragma once

#include "Text/TextLine.h"

namespace qv::recognition {

/// How much a line looks like a part of a firm or an authority ("Department of …", "Abteilung …"), 0 to 1.
float departmentEvidence(const TextLine& line);

}  // namespace qv::recognition
