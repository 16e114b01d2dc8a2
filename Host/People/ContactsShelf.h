#pragma once

#include "People/AddressBookPlace.h"
#include "QVSocialSearch/QVSocialProfile.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qvhost {

/// One contact of an address book.
struct ShelvedContact {
    std::shared_ptr<QVSocialProfile> record;
    std::string UID;
    /// The beginning of the UID, as long as it takes to tell the contact from all others.
    std::string shortUID;
};

/// All contacts of an address book as they are now, ordered by name.
class ContactsShelf {
  public:
    using Contacts = std::vector<const ShelvedContact*>;

    /// An address book that is not there yet (`book` is null) has no contacts.
    static ContactsShelf read(const AddressBookPlace& place);

    Contacts all() const;
    /// Those in which `text` occurs, without regard to case: in name, title, company, addresses, numbers or handles.
    Contacts containing(const std::string& text) const;
    /// Those that `text` names: by UID or its beginning, else by e-mail address, else by the whole name.
    Contacts named(const std::string& text) const;

    /// What could not be read, in words; absent when everything could.
    const std::optional<std::string>& problem() const { return mProblem; }

  private:
    template <typename Predicate>
    Contacts those(Predicate predicate) const;

    std::vector<ShelvedContact> mContacts;
    std::optional<std::string> mProblem;
};

}  // namespace qvhost
