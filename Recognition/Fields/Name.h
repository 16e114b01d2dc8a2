#pragma once

#include "Fields/CardFacts.h"
#include "Text/TextLine.h"

#include <string>

namespace qv::recognition {

/// How much a line looks like a person's name; about 0.5 and more is a likely one, below 0 it cannot be one. Looks at
/// the words (capitals, given names, honorifics, words that names do not hold), the size of the type, and whether an
/// e-mail address of the card is made from it.
float nameEvidence(const TextLine& line, const CardFacts& facts);

/// Whether the local part of an address is made from the words of a name, whole or by initials: "jdoe", "doe.jane".
/// Both folded.
bool isLocalOfName(const std::string& local, const std::string& name);

}  // namespace qv::recognition
