#include "QVSocialSearch/VCardProfile.h"

#include "Merging/EntryMeaning.h"
#include "QVSocialSearch/PersonName.h"
#include "VCard/CardAddress.h"
#include "VCard/CardLabels.h"
#include "VCard/CardLinks.h"
#include "VCard/CardPicture.h"

#include <algorithm>
#include <vector>

namespace {

/// Absent when nothing is there but blanks.
QVString presentText(const std::string& text) {
    return isBlank(text) ? QVString() : QVString(trimmed(text));
}

QVString textNamed(const VCard& card, std::string_view name) {
    for (const VCardProperty* property : card.propertiesNamed(name)) {
        if (QVString text = presentText(property->text())) return text;
    }
    return std::nullopt;
}

QVString companyOf(const VCard& card) {
    const VCardProperty* property = card.propertyNamed("ORG");
    return property != nullptr ? presentText(property->components().front()) : std::nullopt;
}

/// FN, or the parts of N in the order of a western name where an old card has no FN.
QVString nameOf(const VCard& card) {
    if (QVString name = textNamed(card, "FN")) return name;
    const VCardProperty* property = card.propertyNamed("N");
    if (property == nullptr) return std::nullopt;
    std::vector<std::string> parts = property->components();
    parts.resize(5);
    std::string name;
    for (const std::size_t part : {3U, 1U, 2U, 0U, 4U}) {
        if (!isBlank(parts[part])) name += (name.empty() ? "" : " ") + trimmed(parts[part]);
    }
    return presentText(name);
}

/// A 4.0 phone number may be a URI.
std::string phoneNumberOf(const VCardProperty& property) {
    const std::string text = trimmed(property.text());
    return text.starts_with("tel:") ? text.substr(4) : text;
}

QVEmailSet emailsOf(const VCard& card) {
    auto emails = std::make_shared<qv::OrderedSet<std::shared_ptr<const QVEmail>>>();
    for (const VCardProperty* property : card.propertiesNamed("EMAIL")) {
        const QVString label = labelOfProperty(card, *property);
        if (auto email = QVEmail::emailWithLabel(label, trimmed(property->text()))) emails->insert(std::move(email));
    }
    return emails;
}

QVPhoneNumberSet phonesOf(const VCard& card) {
    auto phones = std::make_shared<qv::OrderedSet<std::shared_ptr<const QVPhoneNumber>>>();
    for (const VCardProperty* property : card.propertiesNamed("TEL")) {
        const QVString label = labelOfProperty(card, *property);
        auto phone = QVPhoneNumber::phoneNumberWithNumber(phoneNumberOf(*property), label);
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

/// The first property of that name gets the text, or a new one when there is none or only empty ones.
void writeText(VCard& card, const std::string& name, const QVString& text) {
    if (isBlank(text)) return;
    for (const VCardProperty* property : card.propertiesNamed(name)) {
        if (textNamed(card, name) && isBlank(property->text())) continue;
        if (trimmed(property->text()) == trimmed(*text)) return;
        VCardProperty changed = *property;
        changed.value = VCardProperty::withTexts(card.version(), name, {trimmed(*text)}).value;
        return card.replaceProperty(property, std::move(changed));
    }
    card.addProperty(VCardProperty::withTexts(card.version(), name, {trimmed(*text)}));
}

/// Departments behind the company stay.
void writeCompany(VCard& card, const QVString& company) {
    if (isBlank(company) || companyOf(card) == trimmed(*company)) return;
    const VCardProperty* property = card.propertyNamed("ORG");
    if (property == nullptr)
        return card.addProperty(VCardProperty::withTexts(card.version(), "ORG", {trimmed(*company)}));
    VCardProperty changed = *property;
    changed.value = property->valueWithFirstComponent(trimmed(*company));
    card.replaceProperty(property, std::move(changed));
}

void writeEmails(VCard& card, const QVSocialProfile& profile) {
    QVSocialProfile all;
    all.mergeWithEmailSet(emailsOf(card));
    const std::size_t known = all.emailAddresses().size();
    all.mergeWithEmailSet(setOf(profile.emailAddresses()));
    for (std::size_t i = known; i < all.emailAddresses().size(); ++i) {
        const QVEmail& email = *all.emailAddresses()[i];
        addPropertyWithLabel(card, VCardProperty::withTexts(card.version(), "EMAIL", {trimmed(email.address())}),
                             email.label());
    }
}

void writePhones(VCard& card, const QVSocialProfile& profile) {
    QVSocialProfile all;
    all.mergeWithPhoneNumberSet(phonesOf(card));
    const std::size_t known = all.phoneNumbers().size();
    all.mergeWithPhoneNumberSet(setOf(profile.phoneNumbers()));
    for (std::size_t i = known; i < all.phoneNumbers().size(); ++i) {
        const QVPhoneNumber& phone = *all.phoneNumbers()[i];
        addPropertyWithLabel(card, VCardProperty::withTexts(card.version(), "TEL", {trimmed(phone.number())}),
                             phone.type());
    }
}

/// What stands for the name of somebody without one.
std::string displayNameFor(const VCard& card, const QVSocialProfile& profile) {
    for (const QVString& name : {nameOf(card), profile.company(), companyOf(card)}) {
        if (!isBlank(name)) return trimmed(*name);
    }
    if (!profile.emailAddresses().empty()) return trimmed(profile.emailAddresses().front()->address());
    if (!profile.phoneNumbers().empty()) return trimmed(profile.phoneNumbers().front()->number());
    const QVHandleSet handles = profile.twitterAccounts();
    return handles->begin() == handles->end() ? "Unnamed" : trimmed(*handles->begin());
}

VCardProperty nameProperty(const VCard& card, const std::string& displayName) {
    const PersonName name = PersonName::nameWithText(displayName);
    return VCardProperty::withTexts(card.version(), "N",
                                    {name.family, name.given, name.additional, name.prefix, name.suffix});
}

/// A new display name brings a new N; one that stays keeps the N that somebody may have corrected. A name that only
/// stands for a missing one is not split.
void writeName(VCard& card, const QVSocialProfile& profile) {
    const bool isOther = !isBlank(profile.formattedName()) && nameOf(card) != trimmed(*profile.formattedName());
    const std::string displayName = nameOf(card).value_or("");
    if (isOther) writeText(card, "FN", profile.formattedName());
    if (!textNamed(card, "FN")) writeText(card, "FN", displayNameFor(card, profile));
    const VCardProperty* old = card.propertyNamed("N");
    if (old == nullptr) return card.addProperty(nameProperty(card, isOther ? *profile.formattedName() : displayName));
    if (!isOther) return;
    VCardProperty changed = *old;
    changed.value = nameProperty(card, *profile.formattedName()).value;
    card.replaceProperty(old, std::move(changed));
}

}  // namespace

QVString uidOfCard(const VCard& card) {
    return textNamed(card, "UID");
}

bool cardHasEmailAddress(const VCard& card, const std::string& address) {
    const std::string meaning = meaningOfEmail(address);
    const auto properties = card.propertiesNamed("EMAIL");
    return !meaning.empty() && std::any_of(properties.begin(), properties.end(), [&](const VCardProperty* property) {
        return meaningOfEmail(property->text()) == meaning;
    });
}

std::shared_ptr<QVSocialProfile> profileOfCard(const VCard& card, const std::string& UID) {
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
    return profile;
}

void updateCard(VCard& card, const QVSocialProfile& profile, const std::string& UID) {
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
