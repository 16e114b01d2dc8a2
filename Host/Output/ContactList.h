#pragma once

#include "People/ContactsShelf.h"

#include <string>

namespace qvhost {

/// Contacts as an aligned table for a terminal, a line for each: name, company, first e-mail address and number, and
/// what tells it from the others. Empty for none.
std::string contactList(const ContactsShelf::Contacts& contacts);

}  // namespace qvhost
