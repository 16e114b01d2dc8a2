#pragma once

#include "Text/TextLine.h"

#include <cstddef>
#include <string>
#include <vector>

namespace qv::recognition {

enum class FieldType { Name, Email, Phone, Title, Company, Department, URL, Address, Fax, Mobile, Twitter, Skype };

/// One thing that a card says: its text as printed, where it stands, how sure the engine is of its letters (0–100), and
/// how likely it is what `type` says, given that it was read well (0–1).
struct Field {
    FieldType type = FieldType::Name;
    std::string text;
    Box box;
    float confidence = 0;
    float likelihood = 1;
    std::vector<std::string> others = {};  ///< the same field as other readings of its words have it
    bool isSure = false;                   ///< a code on the card says it: neither read nor guessed
};

/// A field found inside one line: it uses the words from `first` up to, not including, `end` (its label among them).
struct Claim {
    FieldType type = FieldType::Name;
    std::size_t first = 0;
    std::size_t end = 0;
    std::string text;
    float likelihood = 1;
};

}  // namespace qv::recognition
