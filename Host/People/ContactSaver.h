#pragma once

#include "People/AddressBookPlace.h"
#include "People/ContactMatcher.h"
#include "People/MainLoop.h"
#include "QVCardScan/QVVeltoContact.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qvhost {

/// What became of a contact that was to be saved.
struct SaveOutcome {
    QVAddressBookSaveOutcome outcome = QVAddressBookSaveOutcome::None;
    QVString UID;
    /// Where the contact lies now; empty when it was not saved.
    std::string where;
    /// The contact that was updated, in words; empty for a new one.
    std::string updated;
    /// Whether an updated one was found by name and company; by an e-mail address otherwise.
    bool byName = false;
    /// Why nothing was saved, in words; absent when it was.
    std::optional<std::string> failure;
    std::vector<std::string> remarks;
};

/// Saves contacts through the library into the address book that was chosen.
class ContactSaver {
  public:
    /// The address book becomes the library's.
    ContactSaver(MainLoop& loop, const AddressBookPlace& place);

    /// Updates the contact that `found` (null: nobody) stands for, else the one that is the same person, else makes a
    /// new one: under `newUID` when that is given, so that saving the same once more, after whatever came in between,
    /// is no second contact. Waits for it.
    SaveOutcome save(const std::shared_ptr<QVVeltoContact>& contact, const std::shared_ptr<QVSocialProfile>& found,
                     const QVString& newUID = std::nullopt);

  private:
    SaveOutcome saveRecord(const std::shared_ptr<QVVeltoContact>& contact,
                           const std::shared_ptr<QVSocialProfile>& profile, SaveOutcome outcome);

    MainLoop& mLoop;
    const AddressBookPlace& mPlace;
};

}  // namespace qvhost
