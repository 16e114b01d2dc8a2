#pragma once

#include "Text/TextLine.h"

#include <cstddef>
#include <string>
#include <vector>

namespace qv::recognition {

/// How much a line looks like part of a postal address, 0 to 1: post code, street and number, place and state, country.
float addressEvidence(const TextLine& line);

/// An address: which of the lines it takes, in their order, and how likely it is one (0–1).
struct AddressBlock {
    std::vector<std::size_t> lines;
    float likelihood = 0;
};

/// The addresses among these lines: each is a block, a line that is plainly part of an address with its neighbours
/// above and below in the same column that can be.
std::vector<AddressBlock> findAddresses(const std::vector<TextLine>& lines);

/// The lines of an address as one text: joined with ", " where a line does not end with a comma of its own.
std::string joinedAddress(const std::vector<std::string>& lines);

}  // namespace qv::recognition
