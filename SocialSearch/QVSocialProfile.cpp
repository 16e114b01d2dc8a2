#include "QVSocialSearch/QVSocialProfile.h"

#include "Merging/EntryMeaning.h"
#include "Merging/TelephoneIndex.h"
#include "QVPlatform/Format.h"

#include <unordered_set>

namespace {

/// Each says whether an entry is the first of its meaning.
struct NewMailboxes {
    std::unordered_set<std::string> seen;
    bool operator()(const std::shared_ptr<const QVEmail>& email) {
        return email && seen.insert(meaningOfEmail(email->address())).second;
    }
};

struct NewTelephones {
    TelephoneIndex seen;
    bool operator()(const std::shared_ptr<const QVPhoneNumber>& phone) { return phone && seen.insert(phone->number()); }
};

struct NewHandles {
    /// A handle of which nothing is left says nothing.
    std::unordered_set<std::string> seen{""};
    bool operator()(const std::string& handle) { return seen.insert(meaningOfHandle(handle)).second; }
};

/// Adds what `isNew` has not heard of before; what is there already is heard first, and stays.
template <typename Entry, typename Set, typename IsNew>
void append(std::vector<Entry>& list, const Set& set, IsNew isNew) {
    for (const Entry& entry : list)
        isNew(entry);
    for (const Entry& entry : set) {
        if (isNew(entry)) list.push_back(entry);
    }
}

std::string linesOf(const QVSocialProfile& profile) {
    std::string lines;
    for (const auto& email : profile.emailAddresses())
        lines += qv::format("\n  %@: %@", email->label(), email->address());
    for (const auto& phone : profile.phoneNumbers())
        lines += qv::format("\n  %@: %@", phone->type(), phone->number());
    const auto handles = profile.twitterAccounts();
    for (const auto& handle : *handles)
        lines += qv::format("\n  Twitter: %@", handle);
    for (const auto& address : profile.addressList())
        lines += qv::format("\n  %@: %@", address->label(), address->formattedAddress());
    return lines;
}

}  // namespace

void QVSocialProfile::mergeWithEmailSet(const QVEmailSet& emails) {
    if (emails) append(mEmailAddresses, *emails, NewMailboxes());
}

void QVSocialProfile::setEmailAddresses(const QVEmailList& emailAddresses) {
    QVEmailList list;
    append(list, emailAddresses, NewMailboxes());
    mEmailAddresses.swap(list);
}

void QVSocialProfile::mergeWithPhoneNumberSet(const QVPhoneNumberSet& phoneNumbers) {
    if (phoneNumbers) append(mPhoneNumbers, *phoneNumbers, NewTelephones());
}

void QVSocialProfile::setPhoneNumbers(const QVPhoneNumberList& phoneNumbers) {
    QVPhoneNumberList list;
    append(list, phoneNumbers, NewTelephones());
    mPhoneNumbers.swap(list);
}

void QVSocialProfile::mergeWithTwitterSet(const QVHandleSet& handles) {
    if (handles) append(mTwitterAccounts, *handles, NewHandles());
}

QVHandleSet QVSocialProfile::twitterAccounts() const {
    auto handles = std::make_shared<qv::OrderedSet<std::string>>();
    for (const std::string& handle : mTwitterAccounts)
        handles->insert(handle);
    return handles;
}

void QVSocialProfile::setAddressList(QVPostalAddressList addressList) {
    std::erase(addressList, nullptr);
    mAddressList = std::move(addressList);
}

std::string QVSocialProfile::description() const {
    return qv::format("Social profile of type %d, record %@: %@, %@, %@%@\n  LinkedIn: %@\n  Facebook: %@",
                      mProfileType, mAddressBookUID, mFormattedName, mJobTitle, mCompany, linesOf(*this),
                      mProfileURLLinkedInPublic, mProfileURLFacebook);
}
