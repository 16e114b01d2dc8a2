#pragma once

#include "Fields/Field.h"

#include <string>
#include <vector>

namespace qv::recognition {

/// What is known of a card as a whole when its names, titles and firms are told apart.
struct CardFacts {
    std::vector<std::string> emailLocals;  ///< folded: "jane.doe"
    std::vector<std::string> hostLabels;  ///< folded registered labels of firms' hosts: "acme-tools"; no mail providers
    float usualSize = 0;                  ///< the type size that half of the letters have at most
    float largestSize = 0;
};

/// From what was found so far and the lines of the card.
CardFacts factsOf(const std::vector<Field>& found, const std::vector<TextLine>& lines);

}  // namespace qv::recognition
