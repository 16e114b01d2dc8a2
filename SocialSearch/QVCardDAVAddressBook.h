#pragma once

#include "QVSocialSearch/QVAddressBook.h"

#include <memory>
#include <optional>
#include <string>

/// Who asks. A token goes out as "Bearer"; otherwise user and password answer what the server asks for: Digest
/// (RFC 7616) when it does, Basic from the start when not. Nothing of it is ever in a log, an error or an address.
struct QVCardDAVCredentials {
    /// The user's name.
    QVString user;
    /// The user's password.
    QVString password;
    /// Instead of both.
    QVString token;
};

/// An address book on a server that speaks CardDAV (RFC 6352).
///
/// It is given the collection of cards itself, or any address that leads there: the server's (the host's name alone
/// means https), the user's, or that of his books. Then the way is looked for once (RFC 6764), and of several books
/// the first counts in the order of their addresses, one that may be written before one that may not.
///
/// Credentials go to the origin of the given address only: scheme, host and port. Redirects and references to any other
/// are refused with an error that names the host, so that the user can decide for that address. Plain http is refused
/// but for the own machine, unless the host allows it.
///
/// Updates are conditional: a card that another program changes meanwhile is read and merged again. A save whose answer
/// is lost is looked up before it is sent again, so that no second card is made. Cards that are broken, or larger than
/// 16 MiB, are left alone and reported. What a server answers costs bounded memory and time, whatever it is.
///
/// All operations block and may be called from any thread.
class QV_EXPORT QVCardDAVAddressBook : public QVAddressBook {
  public:
    /// Nothing is asked of the server yet; an address that is none makes every operation answer with an error.
    QVCardDAVAddressBook(std::string address, QVCardDAVCredentials credentials);
    ~QVCardDAVAddressBook() override;
    QVCardDAVAddressBook(const QVCardDAVAddressBook&) = delete;
    QVCardDAVAddressBook& operator=(const QVCardDAVAddressBook&) = delete;

    /// Whether credentials and cards may go over plain http to other machines, where everybody on the way reads them.
    /// Off; set it before the first operation.
    void setAllowsClearText(bool allowsClearText);

    /// Seconds that one operation may take with all its requests; at least 1, and 120 at first. Set it before the first
    /// operation.
    void setTotalSeconds(long totalSeconds);

    /// The address of the collection that the cards are in; absent, with an error, when there is none.
    QVString collectionAddress(std::optional<qv::Error>* error);

    QVAddressBookSaveResult saveProfile(const QVSocialProfile& profile) override;
    Profiles profiles(std::optional<qv::Error>* error) override;
    Profiles profilesWithEmailAddress(const std::string& address, std::optional<qv::Error>* error) override;
    std::shared_ptr<QVSocialProfile> profileWithUID(const std::string& UID, std::optional<qv::Error>* error) override;

  private:
    struct State;
    std::unique_ptr<State> mState;
};
