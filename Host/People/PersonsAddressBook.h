#pragma once

#include "People/Person.h"
#include "QVSocialSearch/QVAddressBook.h"

#include <memory>
#include <optional>
#include <string>

namespace qvhost {

/// An address book as the search for one person sees it: whoever has the person's e-mail address and is somebody else
/// (see `canBeOnePerson`) is not there. Otherwise a search by the address of a firm's office would find a colleague,
/// whose name the card would get. Saves and reads what it is a view of; may be used from several threads as far as that
/// one may.
class PersonsAddressBook : public QVAddressBook {
  public:
    /// `book` is not null.
    PersonsAddressBook(std::shared_ptr<QVAddressBook> book, Person person);

    QVAddressBookSaveResult saveProfile(const QVSocialProfile& profile) override;
    Profiles profiles(std::optional<qv::Error>* error) override;
    Profiles profilesWithEmailAddress(const std::string& address, std::optional<qv::Error>* error) override;
    std::shared_ptr<QVSocialProfile> profileWithUID(const std::string& UID, std::optional<qv::Error>* error) override;

  private:
    const std::shared_ptr<QVAddressBook> mBook;
    const Person mPerson;
};

}  // namespace qvhost
