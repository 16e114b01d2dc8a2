#include "Search/ProfileMerging.h"

#include <algorithm>
#include <utility>

namespace {

bool isEmpty(const QVString& text) {
    return !text || text->empty();
}

void fill(QVString& own, const QVString& other) {
    if (isEmpty(own)) own = other;
}

/// A title or company with its source: what a professional network says comes before what others say.
using Sourced = std::pair<QVString, std::int32_t>;

Sourced preferred(const Sourced& own, const Sourced& other) {
    const auto fromNetwork = [](const Sourced& value) {
        return value.second == QVSocialProfileSourceProfessionalNetwork && !isEmpty(value.first);
    };
    if (isEmpty(own.first) || (fromNetwork(other) && !fromNetwork(own))) return isEmpty(other.first) ? own : other;
    return own;
}

void mergeWork(QVSocialProfile& own, const QVSocialProfile& other) {
    const auto [title, titleSource] =
        preferred({own.jobTitle(), own.jobTitleSource()}, {other.jobTitle(), other.jobTitleSource()});
    own.setJobTitle(title);
    own.setJobTitleSource(titleSource);
    const auto [company, companySource] =
        preferred({own.company(), own.companySource()}, {other.company(), other.companySource()});
    own.setCompany(company);
    own.setCompanySource(companySource);
}

template <typename Entry>
auto setOf(const std::vector<Entry>& list) {
    auto set = std::make_shared<qv::OrderedSet<Entry>>();
    for (const Entry& entry : list)
        set->insert(entry);
    return set;
}

void mergeLists(QVSocialProfile& own, const QVSocialProfile& other) {
    own.mergeWithEmailSet(setOf(other.emailAddresses()));
    own.mergeWithPhoneNumberSet(setOf(other.phoneNumbers()));
    own.mergeWithTwitterSet(other.twitterAccounts());
    const auto addresses = setOf(own.addressList());
    addresses->unite(*setOf(other.addressList()));
    own.setAddressList({addresses->begin(), addresses->end()});
}

void mergeTexts(QVSocialProfile& own, const QVSocialProfile& other) {
    const auto take = [&](auto get, auto set) {
        QVString value = (own.*get)();
        fill(value, (other.*get)());
        (own.*set)(std::move(value));
    };
    using Profile = QVSocialProfile;
    take(&Profile::addressBookUID, &Profile::setAddressBookUID);
    take(&Profile::formattedName, &Profile::setFormattedName);
    take(&Profile::profileURLLinkedInPublic, &Profile::setProfileURLLinkedInPublic);
    take(&Profile::profileURLFacebook, &Profile::setProfileURLFacebook);
    take(&Profile::avatarURLLinkedIn, &Profile::setAvatarURLLinkedIn);
    take(&Profile::avatarURLFacebookBig, &Profile::setAvatarURLFacebookBig);
}

void merge(QVSocialProfile& own, const QVSocialProfile& other) {
    own.setProfileType(own.profileType() | other.profileType());
    // It goes with the UID.
    if (isEmpty(own.addressBookUID())) own.setRecordAsRead(other.recordAsRead());
    mergeTexts(own, other);
    mergeWork(own, other);
    mergeLists(own, other);
    const auto& picture = own.addressBookAvatarData();
    if (!picture || picture->empty()) own.setAddressBookAvatarData(other.addressBookAvatarData());
}

}  // namespace

std::shared_ptr<QVSocialProfile> mergedProfile(const std::vector<std::shared_ptr<QVSocialProfile>>& profiles) {
    std::shared_ptr<QVSocialProfile> merged;
    for (const auto& profile : profiles) {
        if (!profile) continue;
        if (merged) {
            merge(*merged, *profile);
        } else {
            merged = profile->copy();
        }
    }
    return merged;
}
