#include "People/RecordProfile.h"

namespace qvhost {
namespace {

bool isEmpty(const QVString& text) {
    return !text || text->empty();
}

/// The contact has weighed the card against what was found.
void takeFromContact(QVSocialProfile& profile, const QVVeltoContact& contact) {
    if (!isEmpty(contact.fullName())) profile.setFormattedName(contact.fullName());
    if (!isEmpty(contact.jobTitle())) profile.setJobTitle(contact.jobTitle());
    if (!isEmpty(contact.company())) profile.setCompany(contact.company());
    if (auto address = QVPostalAddress::addressWithLabel(std::nullopt, contact.address()))
        profile.setAddressList({std::move(address)});
}

void fillAddress(QVSocialProfile& profile, const QVVeltoContact& contact) {
    if (!profile.addressList().empty()) return;
    if (auto address = QVPostalAddress::addressWithLabel(std::nullopt, contact.address()))
        profile.setAddressList({std::move(address)});
}

void fillLinks(QVSocialProfile& profile, const QVVeltoContact& contact) {
    if (isEmpty(profile.profileURLLinkedInPublic())) profile.setProfileURLLinkedInPublic(contact.linkedInProfileURL());
    if (isEmpty(profile.profileURLFacebook())) profile.setProfileURLFacebook(contact.facebookProfileURL());
}

void fillPicture(QVSocialProfile& profile, const QVVeltoContact& contact) {
    if (profile.addressBookAvatarData() || !contact.avatar() || contact.avatar()->encodedData().empty()) return;
    profile.setAddressBookAvatarData(contact.avatar()->encodedData());
}

}  // namespace

bool isRecord(const std::shared_ptr<QVSocialProfile>& profile) {
    return profile && (profile->profileType() & QVSocialProfileSourceAddressBook) != 0;
}

std::shared_ptr<QVSocialProfile> profileForSaving(const QVVeltoContact& contact,
                                                  const std::shared_ptr<QVSocialProfile>& base) {
    auto profile = base ? base->copy() : std::make_shared<QVSocialProfile>();
    if (!isRecord(profile)) takeFromContact(*profile, contact);
    fillAddress(*profile, contact);
    fillLinks(*profile, contact);
    fillPicture(*profile, contact);
    return profile;
}

}  // namespace qvhost
