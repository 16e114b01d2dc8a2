#pragma once

#include "Fields/CardFacts.h"
#include "Text/TextLine.h"

#include <string>
#include <vector>

namespace qv::recognition {

/// How much a line looks like the name of a firm; about 0.45 and more is a likely one. Looks at legal forms and words
/// that firms' names hold, the hosts of the card's addresses, and the size of the type.
float companyEvidence(const TextLine& line, const CardFacts& facts);

/// The lines with every one that holds a firm and a person side by side ("Acme Ltd  Jane Doe") parted behind the legal
/// form.
std::vector<TextLine> partedAtFirms(const std::vector<TextLine>& lines, const CardFacts& facts);

/// How well the registered label of a host fits a firm's name, 0 to 1: the same, one within the other, or its initials.
/// Both folded.
float hostFit(const std::string& label, const std::string& name);

}  // namespace qv::recognition
