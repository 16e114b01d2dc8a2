#pragma once

#include "Batch/CardRecord.h"

#include <string>
#include <vector>

namespace qvhost {

/// What lists show of a card: the contact's entries, and those of the card that a contact has no place for.
struct CardFields {
    struct Field {
        /// As a heading: "Email".
        std::string kind;
        std::vector<std::string> texts;
    };
    /// All kinds, in the order in which one reads a contact, those without texts too.
    std::vector<Field> fields;

    static CardFields of(const CardRecord& card);
    /// The texts of a kind with that between them.
    std::string joined(const std::string& kind, const std::string& separator) const;
};

}  // namespace qvhost
