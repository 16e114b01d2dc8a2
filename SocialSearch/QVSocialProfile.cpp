#include "QVSocialSearch/QVSocialProfile.h"

#include "Merging/EntryMeaning.h"
#include "Merging/TelephoneIndex.h"
#include "QVPlatform/Format.h"

#include <unordered_set>

namespace {

/// Adds what `isNew` has not heard of before; what is there already is heard first, and stays.
template <typename Entry, typename Set, typename IsNew>
void append(std::vector<Entry>& list, const Set& set, IsNew isNew) {
    if (!set) return;
    for (const Entry& entry : list)
        isNew(entry);
    for (const Entry& entry : *set) {
        if (isNew(entry)) list.push_back(entry);
    }
}

std::string linesOf(const QVSocialProfile& profile) {
    std::string lines;
    for (const auto& email : profile.emailAddresses())
        lines += qv::format("\n  %@: %@", email->label(), email->address());
    for (const auto& phone : profile.phoneNumbers())
        lines += qv::format("\n  %@: %@", phone->type(), phone->number());
    for (const auto& handle : *profile.twitterAccounts())
        lines += qv::format("\n  Twitter: %@", handle);
    for (const auto& address : profile.addressList())
        lines += qv::format("\n  %@: %@", address->label(), address->formattedAddress());
    return lines;
}

}  // namespace

void QVSocialProfile::mergeWithEmailSet(const QVEmailSet& emails) {
    std::unordered_set<std::string> seen;
    append(mEmailAddresses, emails, [&](const std::shared_ptr<const QVEmail>& email) {
        return email && seen.insert(meaningOfEmail(email->address())).second;
    });
}

void QVSocialProfile::mergeWithPhoneNumberSet(const QVPhoneNumberSet& phoneNumbers) {
    TelephoneIndex seen;
    append(mPhoneNumbers, phoneNumbers,
           [&](const std::shared_ptr<const QVPhoneNumber>& phone) { return phone && seen.insert(phone->number()); });
}

void QVSocialProfile::mergeWithTwitterSet(const QVHandleSet& handles) {
    // A handle of which nothing is left says nothing.
    std::unordered_set<std::string> seen{""};
    append(mTwitterAccounts, handles,
           [&](const std::string& handle) { return seen.insert(meaningOfHandle(handle)).second; });
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
