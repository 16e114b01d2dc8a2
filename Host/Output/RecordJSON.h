#pragma once

#include "Output/JSON.h"
#include "People/ContactsShelf.h"

namespace qvhost {

/// A contact of the address book: `{uid, fullName, jobTitle, company, emailFields, phoneFields, twitterHandles,
/// addresses, linkedInProfileURL, facebookProfileURL, picture}`. Entries are `{label, text}`; `picture` is null or
/// `{width, height, bytes}`.
JSON::Value recordJSON(const ShelvedContact& contact);

/// Several, as a list.
JSON::Value recordsJSON(const ContactsShelf::Contacts& contacts);

}  // namespace qvhost
