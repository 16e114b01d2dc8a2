#pragma once

#include "Fields/Field.h"

#include <string>
#include <vector>

namespace qv::recognition {

/// The country that a card's numbers without a country code are likely from, as an ISO code: that of another number on
/// it, of its post codes, of its hosts, else the usual one for the language ("en" → "US").
std::string guessedRegion(const std::vector<Field>& internet, const std::vector<TextLine>& lines,
                          const std::string& language);

/// The country of a language that is spoken in one country foremost; empty for one that is spoken everywhere.
std::string regionOfLanguage(const std::string& language);

}  // namespace qv::recognition
