#pragma once

#include "People/AddressBookPlace.h"
#include "People/Person.h"

#include <memory>
#include <string>
#include <vector>

namespace qvhost {

/// Who of an address book a person is.
struct ContactMatch {
    enum class Outcome {
        Nobody,     ///< the person is not there
        ByEmail,    ///< one contact has the person's address
        ByName,     ///< one contact has the person's name and company
        Ambiguous,  ///< several would do
        Unknown,    ///< the address book could not be read
    };
    Outcome outcome = Outcome::Nobody;
    /// The contact's record; null unless there is one.
    std::shared_ptr<QVSocialProfile> record;
    /// What was not merged and why, and cards that are broken; a sentence or two each.
    std::vector<std::string> remarks;
};

/// Finds a person among the contacts of an address book: by any of the e-mail addresses, unless the names say that
/// those are two people who share it (see `canBeOnePerson`); only a person without one by name, if one contact has
/// exactly that name and the company agrees. Of several contacts that share an address the one with the person's name
/// counts. Namesakes are never taken for one another in silence.
class ContactMatcher {
  public:
    explicit ContactMatcher(const AddressBookPlace& place) : mPlace(place) {}

    ContactMatch match(const Person& person);

  private:
    ContactMatch matchByEmail(const Person& person);
    ContactMatch matchByName(const Person& person);
    /// Those who can be the person; `others` gets those who share an address and are somebody else.
    QVAddressBook::Profiles profilesWithAddressOf(const Person& person, QVAddressBook::Profiles& others);
    std::string sharedAddress(const QVAddressBook::Profiles& others) const;
    ContactMatch found(ContactMatch::Outcome outcome, std::shared_ptr<QVSocialProfile> record);
    ContactMatch notFound(ContactMatch::Outcome outcome);
    void note(const std::optional<qv::Error>& error);

    const AddressBookPlace& mPlace;
    std::vector<std::string> mRemarks;
    bool mIsUnreadable = false;
};

}  // namespace qvhost
