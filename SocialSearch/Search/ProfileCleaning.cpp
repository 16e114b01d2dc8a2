#include "Search/ProfileCleaning.h"

#include "QVPlatform/URL.h"

#include <string_view>

namespace {

QVString cleanLink(const QVString& link) {
    const auto url = link ? qv::URL::URLWithString(*link) : std::nullopt;
    if (!url || url->host().empty()) return std::nullopt;
    const std::string scheme = url->scheme();
    return scheme == "http" || scheme == "https" ? link : std::nullopt;
}

QVString cleanLabel(QVString label) {
    constexpr std::string_view kMarkup = "<>&\"'";
    if (label) std::erase_if(*label, [&](char c) { return kMarkup.find(c) != std::string_view::npos; });
    return label;
}

void cleanLists(QVSocialProfile& profile) {
    QVEmailList emails;
    for (const auto& email : profile.emailAddresses())
        emails.push_back(QVEmail::emailWithLabel(cleanLabel(email->label()), email->address()));
    profile.setEmailAddresses(emails);
    QVPhoneNumberList phones;
    for (const auto& phone : profile.phoneNumbers())
        phones.push_back(QVPhoneNumber::phoneNumberWithNumber(phone->number(), cleanLabel(phone->type())));
    profile.setPhoneNumbers(phones);
    QVPostalAddressList addresses;
    for (const auto& address : profile.addressList()) {
        addresses.push_back(
            QVPostalAddress::addressWithLabel(cleanLabel(address->label()), address->formattedAddress()));
    }
    profile.setAddressList(std::move(addresses));
}

}  // namespace

std::shared_ptr<QVSocialProfile> cleanCopy(const std::shared_ptr<const QVSocialProfile>& profile) {
    if (!profile) return nullptr;
    auto clean = profile->copy();
    clean->setProfileURLLinkedInPublic(cleanLink(profile->profileURLLinkedInPublic()));
    clean->setProfileURLFacebook(cleanLink(profile->profileURLFacebook()));
    clean->setAvatarURLLinkedIn(cleanLink(profile->avatarURLLinkedIn()));
    clean->setAvatarURLFacebookBig(cleanLink(profile->avatarURLFacebookBig()));
    cleanLists(*clean);
    return clean;
}
