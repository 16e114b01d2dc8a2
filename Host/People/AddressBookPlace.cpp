#include "People/AddressBookPlace.h"

#include "QVSocialSearch/QVVCardFolder.h"

#include <any>

namespace qvhost {

AddressBookPlace AddressBookPlace::folder(const std::filesystem::path& folder) {
    const auto book = std::make_shared<QVVCardFolder>(folder);
    return {book, "the folder \"" + folder.string() + "\"",
            [book](const std::string& UID) {
                const std::filesystem::path file = book->fileWithUID(UID);
                return file.empty() ? book->folder().string() : file.string();
            },
            folder};
}

AddressBookPlace AddressBookPlace::server(const std::string& url, const QVCardDAVCredentials& credentials) {
    const auto book = std::make_shared<QVCardDAVAddressBook>(url, credentials);
    return {book,
            "the address book at " + url,
            [book, url](const std::string& UID) {
                std::optional<qv::Error> ignored;
                return book->collectionAddress(&ignored).value_or(url) + " (UID " + UID + ")";
            },
            {}};
}

std::string descriptionOf(const qv::Error& error) {
    const auto found = error.userInfo.find(std::string(qv::kErrorDescriptionKey));
    const auto* text = found == error.userInfo.end() ? nullptr : std::any_cast<std::string>(&found->second);
    return text != nullptr ? *text : error.domain + " " + std::to_string(error.code);
}

}  // namespace qvhost
