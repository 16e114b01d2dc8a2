#pragma once

#include "QVPlatform/Error.h"
#include "QVPlatform/Export.h"
#include "QVSocialSearch/QVSocialProfile.h"
#include "QVSocialSearch/QVSocialSearchTypes.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Domain of what an address book reports. A readable text, without secrets, is under `qv::kErrorDescriptionKey`.
inline constexpr std::string_view kQVAddressBookErrorDomain = "QVAddressBookErrorDomain";

/// Codes of that domain.
enum QVAddressBookErrorCode : long {
    /// The host has chosen no address book.
    QVAddressBookErrorNoAddressBook = 1,
    /// The address book, or the one record asked for, cannot be reached or read.
    QVAddressBookErrorUnreadable = 2,
    QVAddressBookErrorUnwritable = 3,
    /// Others kept changing the record while it was saved.
    QVAddressBookErrorConflict = 4,
    /// The record is not well formed; it was left as it is.
    QVAddressBookErrorBrokenRecord = 5,
    /// There was no profile to save.
    QVAddressBookErrorNoProfile = 6,
    /// The back end threw.
    QVAddressBookErrorBackEndFailed = 7,
    /// The user name and password (or token) were refused, or may not do this.
    QVAddressBookErrorNotAllowed = 8,
};

/// What a save did to the address book.
enum class QVAddressBookSaveOutcome { None, Created, Updated };

/// What became of a save: either an error, and nothing was changed, or the record's UID and what was done.
struct QVAddressBookSaveResult {
    /// Why nothing was saved; absent when it was.
    std::optional<qv::Error> error;
    /// The record's UID; absent when nothing was saved.
    QVString UID;
    /// What was done.
    QVAddressBookSaveOutcome outcome = QVAddressBookSaveOutcome::None;
};

/// The place where contacts are kept: a small interface, so that the host chooses. Calls block, never come from the
/// main thread, and may come from several threads at once. Profiles that are handed out have the bit
/// `QVSocialProfileSourceAddressBook` and their `addressBookUID`, and belong to the caller.
class QV_EXPORT QVAddressBook {
  public:
    /// Records as profiles; none is null.
    using Profiles = std::vector<std::shared_ptr<QVSocialProfile>>;

    virtual ~QVAddressBook();

    /// Writes the profile. With the address-book bit and a UID it updates that record, and makes it anew under that UID
    /// when it is gone; otherwise it makes a new record. What the profile lacks stays as it is in the record.
    virtual QVAddressBookSaveResult saveProfile(const QVSocialProfile& profile) = 0;

    /// Every contact, those with that e-mail address (without regard to case), and the one with that UID. What cannot
    /// be read is left out; `error` (null: nobody asks) is set when something was.
    virtual Profiles profiles(std::optional<qv::Error>* error) = 0;
    /// Those with that e-mail address; see `profiles`.
    virtual Profiles profilesWithEmailAddress(const std::string& address, std::optional<qv::Error>* error) = 0;
    /// The one with that UID; null when there is none. See `profiles`.
    virtual std::shared_ptr<QVSocialProfile> profileWithUID(const std::string& UID,
                                                            std::optional<qv::Error>* error) = 0;
};
