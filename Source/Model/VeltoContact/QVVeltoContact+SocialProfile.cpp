#include "Model/VeltoContact/SocialProfileEntries.h"
#include "QVCardScan/QVVeltoContact.h"
#include "QVPlatform/Bundle.h"
#include "QVSocialSearch/QVLinkFetcher.h"

namespace {

using FieldSet = qv::OrderedSet<std::shared_ptr<QVVeltoContactField>>;

bool isEmpty(const QVString& text) {
    return !text || text->empty();
}

/// What a professional network says replaces the card's word; anything else only fills a gap.
void mergeWork(QVString& own, const QVString& found, std::int32_t source) {
    if (isEmpty(found)) return;
    if (source == QVSocialProfileSourceProfessionalNetwork || isEmpty(own)) own = found;
}

std::shared_ptr<QVVeltoContactField> entry(const QVString& label, std::string_view kind, const std::string& text) {
    return QVVeltoContactField::initWithLabel(isEmpty(label) ? qv::Bundle::localizedString(kind) : label, text);
}

QVContactFieldSet emailFieldsOf(const QVSocialProfile& profile) {
    auto fields = std::make_shared<FieldSet>();
    for (const auto& email : profile.emailAddresses())
        fields->insert(entry(email->label(), "email", email->address()));
    return fields;
}

QVContactFieldSet phoneFieldsOf(const QVSocialProfile& profile) {
    auto fields = std::make_shared<FieldSet>();
    for (const auto& phone : profile.phoneNumbers())
        fields->insert(entry(phone->type(), "phone", phone->number()));
    return fields;
}

/// The source is chosen by the presence of a link, not by what comes of it: a picture that cannot be fetched is not
/// looked for elsewhere.
std::optional<qv::Data> pictureOf(const QVSocialProfile& profile) {
    if (profile.avatarURLLinkedIn()) return QVLinkFetcher::contentsOfLink(profile.avatarURLLinkedIn());
    if (profile.avatarURLFacebookBig()) return QVLinkFetcher::contentsOfLink(profile.avatarURLFacebookBig());
    return profile.addressBookAvatarData();
}

std::shared_ptr<qv::Image> avatarOf(const QVSocialProfile& profile) {
    auto data = pictureOf(profile);
    if (!data) return nullptr;
    auto image = qv::Image::initWithData(*std::move(data));
    return image->isValid() ? image : nullptr;
}

}  // namespace

void QVVeltoContact::mergeContactInfoFromSocialProfile(const std::shared_ptr<QVSocialProfile>& profile,
                                                       bool& avatarIsUpdated) {
    if (!profile) return;
    if (!isEmpty(profile->formattedName())) mFullName = profile->formattedName();
    mergeWork(mJobTitle, profile->jobTitle(), profile->jobTitleSource());
    mergeWork(mCompany, profile->company(), profile->companySource());
    profile->mergeWithEmailSet(profileEmailsOf(*this));
    mEmailFields = emailFieldsOf(*profile);
    profile->mergeWithPhoneNumberSet(profilePhoneNumbersOf(*this));
    mPhoneFields = phoneFieldsOf(*profile);
    if (!mFacebookProfileURL) mFacebookProfileURL = profile->profileURLFacebook();
    if (!mLinkedInProfileURL) mLinkedInProfileURL = profile->profileURLLinkedInPublic();
    if (!mAddress && !profile->addressList().empty()) mAddress = profile->addressList().front()->formattedAddress();
    profile->mergeWithTwitterSet(mTwitterHandles);
    mTwitterHandles = profile->twitterAccounts();
    if (mAvatar) return;
    mAvatar = avatarOf(*profile);
    if (mAvatar) avatarIsUpdated = true;
}
