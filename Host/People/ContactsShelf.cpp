#include "People/ContactsShelf.h"

#include "People/Person.h"
#include "QVPlatform/Text.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace qvhost {
namespace {

constexpr std::size_t kShortestUID = 8;

std::string lowercased(const QVString& text) {
    return qv::Text::lowercased(text.value_or(""));
}

std::vector<std::string> textsOf(const QVSocialProfile& record) {
    std::vector<std::string> texts;
    for (const QVString& text : {record.formattedName(), record.jobTitle(), record.company(),
                                 record.profileURLLinkedInPublic(), record.profileURLFacebook()})
        texts.push_back(lowercased(text));
    for (const auto& email : record.emailAddresses())
        texts.push_back(lowercased(email->address()));
    for (const auto& phone : record.phoneNumbers())
        texts.push_back(lowercased(phone->number()));
    for (const auto& address : record.addressList())
        texts.push_back(lowercased(address->formattedAddress()));
    const auto handles = record.twitterAccounts();
    for (const std::string& handle : *handles)
        texts.push_back(lowercased(handle));
    return texts;
}

bool hasEmail(const QVSocialProfile& record, const std::string& address) {
    const auto& emails = record.emailAddresses();
    return std::any_of(emails.begin(), emails.end(),
                       [&](const auto& email) { return lowercased(email->address()) == address; });
}

std::size_t commonLength(std::string_view one, std::string_view other) {
    const auto end = std::mismatch(one.begin(), one.end(), other.begin(), other.end()).first;
    return static_cast<std::size_t>(end - one.begin());
}

/// Cut between characters.
std::string beginning(const std::string& text, std::size_t length) {
    while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
        ++length;
    return text.substr(0, length);
}

/// What all UIDs of some programs begin with (RFC 9562) tells nothing.
std::string withoutURNPrefix(const std::string& UID) {
    constexpr std::string_view kPrefix = "urn:uuid:";
    const bool hasPrefix = qv::Text::lowercased(UID.substr(0, kPrefix.size())) == kPrefix;
    return hasPrefix ? UID.substr(kPrefix.size()) : UID;
}

/// A UID shares most with one of its neighbours in the order of the alphabet.
void shortenUIDs(std::vector<ShelvedContact>& contacts) {
    std::vector<std::pair<std::string, ShelvedContact*>> sorted;
    sorted.reserve(contacts.size());
    for (ShelvedContact& contact : contacts)
        sorted.emplace_back(withoutURNPrefix(contact.UID), &contact);
    std::sort(sorted.begin(), sorted.end());
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        const std::string& own = sorted[i].first;
        std::size_t shared = i > 0 ? commonLength(own, sorted[i - 1].first) : 0;
        if (i + 1 < sorted.size()) shared = std::max(shared, commonLength(own, sorted[i + 1].first));
        sorted[i].second->shortUID = beginning(own, std::max(kShortestUID, shared + 1));
    }
}

}  // namespace

ContactsShelf ContactsShelf::read(const AddressBookPlace& place) {
    ContactsShelf shelf;
    if (!place.book) return shelf;
    std::optional<qv::Error> error;
    for (auto& record : place.book->profiles(&error)) {
        if (!record) continue;
        std::string UID = record->addressBookUID().value_or("");
        shelf.mContacts.push_back({std::move(record), std::move(UID), ""});
    }
    if (error) shelf.mProblem = "Not everything in " + place.name + " could be read: " + descriptionOf(*error) + ".";
    shortenUIDs(shelf.mContacts);
    std::stable_sort(shelf.mContacts.begin(), shelf.mContacts.end(), [](const auto& one, const auto& other) {
        return lowercased(one.record->formattedName()) < lowercased(other.record->formattedName());
    });
    return shelf;
}

template <typename Predicate>
ContactsShelf::Contacts ContactsShelf::those(Predicate predicate) const {
    Contacts found;
    for (const ShelvedContact& contact : mContacts) {
        if (predicate(contact)) found.push_back(&contact);
    }
    return found;
}

ContactsShelf::Contacts ContactsShelf::all() const {
    return those([](const ShelvedContact&) { return true; });
}

ContactsShelf::Contacts ContactsShelf::containing(const std::string& text) const {
    const std::string wanted = qv::Text::lowercased(text);
    return those([&](const ShelvedContact& contact) {
        const std::vector<std::string> texts = textsOf(*contact.record);
        return std::any_of(texts.begin(), texts.end(),
                           [&](const std::string& own) { return own.find(wanted) != std::string::npos; });
    });
}

ContactsShelf::Contacts ContactsShelf::named(const std::string& text) const {
    Contacts found = those([&](const ShelvedContact& contact) { return contact.UID == text; });
    if (found.empty()) {
        found = those([&](const ShelvedContact& contact) {
            return contact.UID.starts_with(text) || withoutURNPrefix(contact.UID).starts_with(text);
        });
    }
    const std::string wanted = qv::Text::lowercased(text);
    if (found.empty()) found = those([&](const ShelvedContact& contact) { return hasEmail(*contact.record, wanted); });
    if (!found.empty()) return found;
    return those([&](const ShelvedContact& contact) { return lowercased(contact.record->formattedName()) == wanted; });
}

}  // namespace qvhost
