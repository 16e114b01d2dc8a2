#pragma once

#include "People/PersonOutcome.h"
#include "QVCardScan/QVVeltoContact.h"

#include <string>

namespace qvhost {

/// What was found out about a person and where they were kept, in lines for a terminal; empty when nothing was asked.
/// `contact` may be null.
std::string personText(const PersonOutcome& person, const std::shared_ptr<QVVeltoContact>& contact);

/// Why a contact was not saved, as a message; empty when it was, or was not to be.
std::string saveFailureText(const PersonOutcome& person);

}  // namespace qvhost
