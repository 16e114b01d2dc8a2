#pragma once

#include "Fields/Field.h"
#include "Fields/PhoneLabel.h"

#include <optional>
#include <string>
#include <vector>

namespace qv::recognition {

/// What is known around a line that its numbers depend on.
struct PhoneContext {
    std::string region;               ///< ISO code of the country that numbers without a country code are likely from
    std::optional<NumberKind> label;  ///< of a label that stands to the left of the line or above it
    std::string languageRegion = {};  ///< the country that the card's language is spoken in, where it tells one
};

/// The telephone, mobile and fax numbers in a line, with the labels before or after them: a number's kind is what its
/// label says, else what the numbering plan says of it. Not taken: dates, years, post codes, house, tax and register
/// numbers.
std::vector<Claim> findPhones(const TextLine& line, const PhoneContext& context);

/// The label that a line is, if it is nothing else ("Tel:", "Mobile phone").
std::optional<NumberKind> labelOf(const TextLine& line);

/// The country of the first number with a country code ("+49 …" → "DE"); empty when there is none.
std::string countryOfNumber(std::string_view text);

}  // namespace qv::recognition
