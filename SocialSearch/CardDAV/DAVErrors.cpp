#include "CardDAV/DAVErrors.h"

#include "AddressBook/AddressBookProblems.h"
#include "CardDAV/DAVAddress.h"

#include <array>
#include <string>
#include <string_view>

namespace {

struct StatusRow {
    long status;
    std::string_view text;
};

constexpr std::array<StatusRow, 16> kTexts{{
    {401, "the server does not accept the user name and password"},
    {403, "the server does not allow it"},
    {404, "there is nothing at this address"},
    {405, "there is no address book at this address"},
    {409, "the server refuses the card"},
    {410, "there is nothing at this address any more"},
    {412, "somebody else changes the card"},
    {413, "the card is too large for the server"},
    {415, "the server refuses the card"},
    {422, "the server refuses the card"},
    {423, "the card is locked"},
    {429, "the server has too much to do; try again later"},
    {501, "there is no address book at this address"},
    {502, "the server cannot be reached by the one in front of it"},
    {503, "the server has too much to do; try again later"},
    {507, "the server has no room left"},
}};

std::string textOfStatus(long status) {
    for (const StatusRow& row : kTexts) {
        if (row.status == status) return std::string(row.text);
    }
    if (status >= 500) return "the server failed";
    return status >= 400 ? "the server refuses the request" : "this is no answer of a CardDAV server";
}

QVAddressBookErrorCode codeOfStatus(long status, bool isWriting) {
    if (status == 401 || status == 403) return QVAddressBookErrorNotAllowed;
    if (status == 412 || status == 423) return QVAddressBookErrorConflict;
    return isWriting ? QVAddressBookErrorUnwritable : QVAddressBookErrorUnreadable;
}

}  // namespace

qv::Error errorOfStatus(long status, const qv::URL& url, bool isWriting) {
    return addressBookError(codeOfStatus(status, isWriting), url.absoluteString() + ": " + textOfStatus(status) +
                                                                 " (status " + std::to_string(status) + ")");
}

qv::Error elsewhere(const qv::URL& url, const std::optional<qv::URL>& target) {
    constexpr std::size_t kLongestHost = 200;
    const std::string where = target ? hostOf(*target).substr(0, kLongestHost) : "what is no address";
    return addressBookError(QVAddressBookErrorUnreadable,
                            url.absoluteString() + ": the server refers to " + where +
                                ", where the password does not go; give that address itself if you trust it");
}

qv::Error notCardDAV(const qv::URL& url) {
    return addressBookError(QVAddressBookErrorUnreadable,
                            url.absoluteString() + ": this is no answer of a CardDAV server");
}
