#pragma once

#include "People/AddressBookPlace.h"
#include "People/KnownContacts.h"
#include "People/MainLoop.h"
#include "People/PersonOutcome.h"
#include "QVSocialSearch/QVSocialSearchManager.h"
#include "Scan/CardScan.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace qvhost {

/// What is done with the person on a card: merged with a contact that is known, searched for, saved. To be made on the
/// main thread before the card is read, and kept until all is done.
class PersonSteps {
  public:
    struct Plan {
        /// The contacts that are known; absent: the card is not merged.
        std::optional<AddressBookPlace> known;
        /// Where to search and to save; absent when neither is wanted, its `book` null when there is none yet.
        std::optional<AddressBookPlace> addressBook;
        /// What the library wants before it searches; absent: there is no search.
        std::optional<std::pair<std::string, std::string>> searchKey;
        /// Where to search besides the address book.
        QVSocialSearchManager::Providers services;
        bool saves = false;
    };

    explicit PersonSteps(Plan plan);
    ~PersonSteps();
    PersonSteps(const PersonSteps&) = delete;
    PersonSteps& operator=(const PersonSteps&) = delete;

    /// After the card was read. The scan's response then holds what came of it: contact, note, picture.
    PersonOutcome run(const ScanOutcome& scan);

  private:
    void search(const ScanOutcome& scan, PersonOutcome& outcome);
    void save(const ScanOutcome& scan, PersonOutcome& outcome);

    MainLoop mLoop;
    Plan mPlan;
    std::shared_ptr<KnownContacts> mKnown;
    std::optional<SocialLookup> mLookup;
};

}  // namespace qvhost
