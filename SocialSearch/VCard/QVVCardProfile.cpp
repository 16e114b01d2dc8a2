#include "QVSocialSearch/QVVCardProfile.h"

#include "AddressBook/QVRecordAsRead.h"
#include "Merging/EntryMeaning.h"
#include "VCard/CardAddress.h"
#include "VCard/CardLabels.h"
#include "VCard/CardLinks.h"
#include "VCard/CardPicture.h"
#include "VCard/CardTexts.h"

#include <algorithm>
#include <vector>

namespace {

/// A 4.0 phone number may be a URI.
std::string phoneNumberOf(const std::string& text) {
    std::string number = trimmed(text);
    return number.starts_with("tel:") ? number.substr(4) : number;
}

QVEmailSet emailsOf(const QVVCard& card) {
    auto emails = std::make_shared<qv::OrderedSet<std::shared_ptr<const QVEmail>>>();
    const CardLabels labels(card);
    for (const QVVCardProperty* property : card.propertiesNamed("EMAIL")) {
        const QVString label = labels.labelOfProperty(*property);
        if (auto email = QVEmail::emailWithLabel(label, trimmed(property->text()))) emails->insert(std::move(email));
    }
    return emails;
}

QVPhoneNumberSet phonesOf(const QVVCard& card) {
    auto phones = std::make_shared<qv::OrderedSet<std::shared_ptr<const QVPhoneNumber>>>();
    const CardLabels labels(card);
    for (const QVVCardProperty* property : card.propertiesNamed("TEL")) {
        const QVString label = labels.labelOfProperty(*property);
        auto phone = QVPhoneNumber::phoneNumberWithNumber(phoneNumberOf(property->text()), label);
        if (phone) phones->insert(std::move(phone));
    }
    return phones;
}

template <typename List>
auto setOf(const List& list) {
    auto set = std::make_shared<qv::OrderedSet<typename List::value_type>>();
    for (const auto& entry : list)
        set->insert(entry);
    return set;
}

void writeEmails(QVVCard& card, const QVSocialProfile& profile) {
    QVSocialProfile all;
    all.mergeWithEmailSet(emailsOf(card));
    const std::size_t known = all.emailAddresses().size();
    all.mergeWithEmailSet(setOf(profile.emailAddresses()));
    for (std::size_t i = known; i < all.emailAddresses().size(); ++i) {
        const QVEmail& email = *all.emailAddresses()[i];
        addPropertyWithLabel(card, QVVCardProperty::withTexts(card.version(), "EMAIL", {trimmed(email.address())}),
                             email.label());
    }
}

void writePhones(QVVCard& card, const QVSocialProfile& profile) {
    QVSocialProfile all;
    all.mergeWithPhoneNumberSet(phonesOf(card));
    const std::size_t known = all.phoneNumbers().size();
    all.mergeWithPhoneNumberSet(setOf(profile.phoneNumbers()));
    for (std::size_t i = known; i < all.phoneNumbers().size(); ++i) {
        const QVPhoneNumber& phone = *all.phoneNumbers()[i];
        // What could not be read back would be written again with every save.
        if (isBlank(phoneNumberOf(phone.number()))) continue;
        addPropertyWithLabel(card, QVVCardProperty::withTexts(card.version(), "TEL", {trimmed(phone.number())}),
                             phone.type());
    }
}

}  // namespace

namespace qv {

QVString uidOfCard(const QVVCard& card) {
    return textNamed(card, "UID");
}

bool cardHasEmailAddress(const QVVCard& card, const std::string& address) {
    const std::string meaning = meaningOfEmail(address);
    const auto properties = card.propertiesNamed("EMAIL");
    return !meaning.empty() && std::any_of(properties.begin(), properties.end(), [&](const QVVCardProperty* property) {
        return meaningOfEmail(property->text()) == meaning;
    });
}

std::shared_ptr<QVSocialProfile> profileOfCard(const QVVCard& card, const std::string& UID) {
    auto profile = std::make_shared<QVSocialProfile>();
    profile->setProfileType(QVSocialProfileSourceAddressBook);
    profile->setAddressBookUID(uidOfCard(card).value_or(UID));
    profile->setFormattedName(nameOf(card));
    profile->setJobTitle(textNamed(card, "TITLE"));
    if (profile->jobTitle()) profile->setJobTitleSource(QVSocialProfileSourceAddressBook);
    profile->setCompany(companyOf(card));
    if (profile->company()) profile->setCompanySource(QVSocialProfileSourceAddressBook);
    profile->mergeWithEmailSet(emailsOf(card));
    profile->mergeWithPhoneNumberSet(phonesOf(card));
    profile->setAddressList(addressesOfCard(card));
    readLinks(card, *profile);
    profile->setAddressBookAvatarData(pictureOfCard(card));
    profile->setRecordAsRead(recordAsRead(*profile));
    return profile;
}

void updateCard(QVVCard& card, const QVSocialProfile& fullProfile, const std::string& UID) {
    // A card that is made anew has nothing of what was read.
    const bool isNew = card.properties().size() <= 1;
    const QVSocialProfile profile = isNew ? fullProfile : changesSinceRead(fullProfile);
    if (!uidOfCard(card)) writeText(card, "UID", UID);
    writeName(card, profile);
    writeText(card, "TITLE", profile.jobTitle());
    writeCompany(card, profile.company());
    writeEmails(card, profile);
    writePhones(card, profile);
    writeAddresses(card, profile.addressList());
    writeLinks(card, profile);
    if (profile.addressBookAvatarData()) writePicture(card, *profile.addressBookAvatarData());
}

bool profileHasContents(const QVSocialProfile& profile) {
    return !isBlank(profile.formattedName()) || !isBlank(profile.jobTitle()) || !isBlank(profile.company()) ||
           !profile.emailAddresses().empty() || !profile.phoneNumbers().empty() || !profile.addressList().empty() ||
           profile.twitterAccounts()->size() > 0 || profile.profileURLLinkedInPublic() ||
           profile.profileURLFacebook() || profile.addressBookAvatarData();
}

}  // namespace qv
