#pragma once

#include "QVCardScan/QVVeltoContact.h"
#include "QVSocialSearch/QVSocialProfile.h"

#include <memory>

namespace qvhost {

/// Whether a profile stands for a contact in the address book.
bool isRecord(const std::shared_ptr<QVSocialProfile>& profile);

/// What is handed to the library's save along with a contact. The library takes over only name, title, company,
/// addresses of mail, numbers and handles, the first three only without a profile. This profile therefore
/// already holds postal address, links and picture of the contact where `base` has none, and, where that is no record,
/// the contact's own name, title, company and postal address. `base` is a record, another profile or null, and stays as
/// it is.
std::shared_ptr<QVSocialProfile> profileForSaving(const QVVeltoContact& contact,
                                                  const std::shared_ptr<QVSocialProfile>& base);

}  // namespace qvhost
