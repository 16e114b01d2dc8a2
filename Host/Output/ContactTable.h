#pragma once

#include "People/ContactsShelf.h"
#include "QVCardScan/QVVeltoContact.h"

#include <string>

namespace qvhost {

/// A contact as an aligned table for a terminal, a line for each thing known; empty when nothing is.
std::string contactTable(const QVVeltoContact& contact);

/// The same for a contact of the address book, with all its postal addresses and its UID.
std::string recordTable(const ShelvedContact& contact);

}  // namespace qvhost
