#pragma once

#include "Fields/Field.h"

#include <vector>

namespace qv::recognition {

/// What fields of one card say of each other's letters.

/// The host of a link and of an address are mostly one: where the two differ as misread letters do, the better read
/// wins.
void agreeOnHosts(std::vector<Field>& fields);

/// An address made from the card's name is spelt like it: "janedoe@" beside "jane.doe@" on a card of Jane Doe (the
/// engine overlooks a dot more often than it invents one), "Imcaldane@" on one of Lucas McAldane.
void agreeOnNames(std::vector<Field>& fields);

/// "ale.com" beside "jane@martindale.com" is what the engine read of the same line once more, cut off.
void dropFragments(std::vector<Field>& fields);

}  // namespace qv::recognition
