#pragma once

#include "Fields/Field.h"

#include <vector>

namespace qv::recognition {

/// The e-mail addresses in a line, text as printed but for what the engine broke: spaces inside, a lost or misread dot,
/// a misread "@". The label before an address ("E-mail:") belongs to its claim.
std::vector<Claim> findEmails(const TextLine& line);

/// Whether the text is a whole e-mail address.
bool isEmail(std::string_view text);

/// An address corrected by a host name that was read elsewhere on the card: where the address's own host differs from
/// it by one misread character (or by a letter that the engine added after "@"), the host takes its place. Otherwise
/// the address as it is.
std::string snappedToHost(const std::string& email, const std::string& host);

/// An address whose local part is made from a name but for letters that print alike (I, l and 1; O and 0):
/// "Imcaldane@" on a card of Lucas McAldane. Otherwise the address as it is; an unusual one that was read well stays.
std::string snappedToName(const std::string& email, const std::string& name);

}  // namespace qv::recognition
