#pragma once

#include "QVSocialSearch/QVAddressBook.h"
#include "QVSocialSearch/QVCardDAVAddressBook.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace qvhost {

/// An address book, and where it lies.
struct AddressBookPlace {
    std::shared_ptr<QVAddressBook> book;
    /// For messages: "the folder …", "the server …".
    std::string name;
    /// Where the contact with that UID lies: a file, an address.
    std::function<std::string(const std::string& UID)> locate;
    /// Where the cards lie as files; empty on a server.
    std::filesystem::path files;

    /// A folder of vCards.
    static AddressBookPlace folder(const std::filesystem::path& folder);
    /// A server; nothing is asked of it yet.
    static AddressBookPlace server(const std::string& url, const QVCardDAVCredentials& credentials);
};

/// What an address book reported, in words.
std::string descriptionOf(const qv::Error& error);

}  // namespace qvhost
