#include "Services/GravatarProfile.h"

#include "Services/PublishedLinks.h"
#include "Services/ServiceLimits.h"
#include "Services/ServiceText.h"

#include <algorithm>
#include <utility>

namespace {

/// Only a given first and last name is a name: what people call themselves on the net must not replace the card's.
QVString nameOf(const qv::JSON& object) {
    const QVString first = lineOf(object.member("first_name"));
    const QVString last = lineOf(object.member("last_name"));
    const bool isOrganisation = object.member("is_organization").boolean().value_or(false);
    if (!first || !last || isOrganisation) return std::nullopt;
    return *first + " " + *last;
}

void takeWork(const qv::JSON& object, QVSocialProfile& profile) {
    profile.setJobTitle(lineOf(object.member("job_title")));
    if (profile.jobTitle()) profile.setJobTitleSource(QVSocialProfileSourceGravatar);
    profile.setCompany(lineOf(object.member("company")));
    if (profile.company()) profile.setCompanySource(QVSocialProfileSourceGravatar);
}

void takeLinks(const qv::JSON& list, QVSocialProfile& profile) {
    auto entries = list.elements();
    entries.resize(std::min(entries.size(), kMostLinks));
    for (const qv::JSON& entry : entries) {
        const QVString link = lineOf(entry.member("url"));
        const bool isHidden = entry.member("is_hidden").boolean().value_or(false);
        if (link && !isHidden) takePublishedLink(*link, profile);
    }
}

void takeContactInfo(const qv::JSON& info, QVSocialProfile& profile) {
    auto phones = std::make_shared<qv::OrderedSet<std::shared_ptr<const QVPhoneNumber>>>();
    constexpr std::pair<const char*, const char*> kPhones[] = {
        {"work_phone", "Work"}, {"cell_phone", "Mobile"}, {"home_phone", "Home"}};
    for (const auto& [member, label] : kPhones) {
        auto phone = QVPhoneNumber::phoneNumberWithNumber(lineOf(info.member(member)), label);
        if (phone) phones->insert(std::move(phone));
    }
    profile.mergeWithPhoneNumberSet(phones);
    const QVString email = lineOf(info.member("email"));
    if (email && email->find('@') != std::string::npos) {
        profile.setEmailAddresses({QVEmail::emailWithLabel(std::nullopt, email)});
    }
}

}  // namespace

std::shared_ptr<QVSocialProfile> profileOfGravatar(const qv::JSON& object) {
    auto profile = std::make_shared<QVSocialProfile>();
    profile->setProfileType(QVSocialProfileSourceGravatar);
    profile->setFormattedName(nameOf(object));
    takeWork(object, *profile);
    profile->setAddressList({QVPostalAddress::addressWithLabel(std::nullopt, lineOf(object.member("location")))});
    // What the service has verified comes before what people only say.
    takeLinks(object.member("verified_accounts"), *profile);
    takeLinks(object.member("links"), *profile);
    takeContactInfo(object.member("contact_info"), *profile);
    return profile;
}

QVString pictureLinkOfGravatar(const qv::JSON& object) {
    QVString link = lineOf(object.member("avatar_url"));
    if (!link) return std::nullopt;
    link->resize(std::min(link->size(), link->find('#')));
    return *link + (link->find('?') == std::string::npos ? "?" : "&") + "s=512&d=404";
}
