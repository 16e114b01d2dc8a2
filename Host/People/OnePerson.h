#pragma once

#include "People/Person.h"

#include <string_view>

namespace qvhost {

/// Whether two that have the e-mail address in common can be one person. An address alone does not say so: a firm's
/// people print the one of its office on their cards, and whoever follows somebody in an office may get theirs.
/// - Behind an office's address (the names of RFC 2142 and their like in other languages, or the domain's own name) the
///   names have to agree: every word of the shorter one stands in the longer one, if only by its initial.
/// - Behind any other the names have to have one word in common.
/// Titles and degrees do not count, case does not, and a letter that was misread makes no other word of a longer one.
/// Where a name is missing, or the two are written in different scripts, nothing can be said against it: they can.
bool canBeOnePerson(const Person& one, const Person& other, std::string_view commonAddress);

}  // namespace qvhost
