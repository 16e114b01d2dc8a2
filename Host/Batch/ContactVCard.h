#pragma once

#include "QVCardScan/QVVeltoContact.h"

#include <string>

namespace qvhost {

/// A contact as a vCard of its own, with its web address.
std::string contactVCard(const QVVeltoContact& contact, const std::string& UID);

}  // namespace qvhost
