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

/// What is done with the people on cards: merged with a contact that is known, searched for, saved. To be made on the
/// main thread before a card is read, and kept until all is done. For the main thread.
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

    /// To be called before each card is handed to the library: whom the card is merged with, null when contacts are not
    /// compared. To be kept until the card was read and is given to `run`.
    std::shared_ptr<KnownContacts> nextCard();

    /// After the card was read. The scan's response then holds what came of it: contact, note, picture. `newUID`: see
    /// `ContactSaver::save`.
    PersonOutcome run(const ScanOutcome& scan, const std::shared_ptr<KnownContacts>& known,
                      const QVString& newUID = std::nullopt);

    bool comparesContacts() const { return mPlan.known.has_value(); }
    bool searches() const { return mPlan.searchKey.has_value(); }
    /// Where contacts are saved; null when they are not.
    const AddressBookPlace* savesIn() const { return mPlan.saves ? &*mPlan.addressBook : nullptr; }

    /// From now on nothing is shown while something is waited for.
    void stopShowingProgress() { mShowsProgress = false; }

  private:
    void search(const ScanOutcome& scan, PersonOutcome& outcome);
    void save(const ScanOutcome& scan, const QVString& newUID, PersonOutcome& outcome);

    MainLoop mLoop;
    Plan mPlan;
    std::optional<SocialLookup> mLookup;
    bool mShowsProgress = true;
};

}  // namespace qvhost
