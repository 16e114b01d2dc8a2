#include "Model/VeltoContact/SocialProfileEntries.h"
#include "QVCardScan/QVVeltoContact.h"

#include <utility>

namespace {

bool isEmpty(const QVString& text) {
    return !text || text->empty();
}

bool hasSource(const QVSocialProfile& profile, QVSocialProfileSource source) {
    return (profile.profileType() & source) != 0;
}

void mergeEntries(const QVVeltoContact& contact, QVSocialProfile& profile) {
    profile.mergeWithEmailSet(profileEmailsOf(contact));
    profile.mergeWithPhoneNumberSet(profilePhoneNumbersOf(contact));
    profile.mergeWithTwitterSet(contact.twitterHandles());
}

void fillWork(const QVVeltoContact& contact, QVSocialProfile& profile) {
    if (hasSource(profile, QVSocialProfileSourceProfessionalNetwork)) return;
    if (isEmpty(profile.jobTitle())) profile.setJobTitle(contact.jobTitle());
    if (isEmpty(profile.company())) profile.setCompany(contact.company());
}

std::shared_ptr<QVSocialProfile> newProfileOf(const QVVeltoContact& contact) {
    auto profile = std::make_shared<QVSocialProfile>();
    profile->setFormattedName(contact.fullName());
    profile->setJobTitle(contact.jobTitle());
    profile->setCompany(contact.company());
    return profile;
}

void save(const std::shared_ptr<QVSocialProfile>& profile, QVAddressBookCompletionHandler handler) {
    QVAddressBookController::sharedController()->saveSocialProfileInAddressBook(profile, std::move(handler));
}

std::shared_ptr<const QVVeltoContact> orEmpty(const std::shared_ptr<QVVeltoContact>& contact) {
    return contact ? contact : std::make_shared<QVVeltoContact>();
}

}  // namespace

void QVVeltoContact::saveToContactsWithVeltoContact(const std::shared_ptr<QVVeltoContact>& contact,
                                                    const std::shared_ptr<QVSocialProfile>& socialProfile,
                                                    QVAddressBookCompletionHandler completionHandler) const {
    if (socialProfile && hasSource(*socialProfile, QVSocialProfileSourceAddressBook)) {
        updateExistingAddressBookRecordWithVeltoContact(contact, socialProfile, std::move(completionHandler));
    } else {
        saveNewAddressBookRecordWithVeltoContact(contact, socialProfile, std::move(completionHandler));
    }
}

void QVVeltoContact::updateExistingAddressBookRecordWithVeltoContact(
    const std::shared_ptr<QVVeltoContact>& contact, const std::shared_ptr<QVSocialProfile>& andSocialProfile,
    QVAddressBookCompletionHandler completionHandler) const {
    const auto profile = andSocialProfile ? andSocialProfile->copy() : nullptr;
    if (profile) {
        fillWork(*orEmpty(contact), *profile);
        mergeEntries(*orEmpty(contact), *profile);
    }
    save(profile, std::move(completionHandler));
}

void QVVeltoContact::saveNewAddressBookRecordWithVeltoContact(const std::shared_ptr<QVVeltoContact>& contact,
                                                              const std::shared_ptr<QVSocialProfile>& andSocialProfile,
                                                              QVAddressBookCompletionHandler completionHandler) const {
    const auto profile = andSocialProfile ? andSocialProfile->copy() : newProfileOf(*orEmpty(contact));
    mergeEntries(*orEmpty(contact), *profile);
    save(profile, std::move(completionHandler));
}
