#include "Search/ProfileCleaning.h"

#include "QVPlatform/URL.h"

#include <string_view>

namespace {

/// Nobody has more of one kind. All of them are compared, and written, on the host's main thread.
constexpr std::size_t kMostEntries = 500;

/// Each entry of a list made anew, as far as it is kept.
template <typename List, typename Make>
List firstEntries(const List& list, Make make) {
    List kept;
    for (const auto& entry : list) {
        if (kept.size() == kMostEntries) break;
        kept.push_back(make(*entry));
    }
    return kept;
}

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
    profile.setEmailAddresses(firstEntries(profile.emailAddresses(), [](const QVEmail& email) {
        return QVEmail::emailWithLabel(cleanLabel(email.label()), email.address());
    }));
    profile.setPhoneNumbers(firstEntries(profile.phoneNumbers(), [](const QVPhoneNumber& phone) {
        return QVPhoneNumber::phoneNumberWithNumber(phone.number(), cleanLabel(phone.type()));
    }));
    profile.setAddressList(firstEntries(profile.addressList(), [](const QVPostalAddress& address) {
        return QVPostalAddress::addressWithLabel(cleanLabel(address.label()), address.formattedAddress());
    }));
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
