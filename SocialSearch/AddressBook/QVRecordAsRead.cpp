#include "AddressBook/QVRecordAsRead.h"

#include "QVPlatform/MD5.h"

namespace {

QVString digestOf(const std::optional<qv::Data>& picture) {
    return picture ? QVString(qv::lowerHexMD5(*picture)) : std::nullopt;
}

}  // namespace

std::shared_ptr<const QVRecordAsRead> recordAsRead(const QVSocialProfile& profile) {
    return std::make_shared<const QVRecordAsRead>(
        QVRecordAsRead{.formattedName = profile.formattedName(),
                       .jobTitle = profile.jobTitle(),
                       .company = profile.company(),
                       .profileURLLinkedInPublic = profile.profileURLLinkedInPublic(),
                       .profileURLFacebook = profile.profileURLFacebook(),
                       .pictureDigest = digestOf(profile.addressBookAvatarData())});
}

QVSocialProfile changesSinceRead(const QVSocialProfile& profile) {
    QVSocialProfile changes = profile;
    const auto& record = profile.recordAsRead();
    if (!record) return changes;
    if (changes.formattedName() == record->formattedName) changes.setFormattedName(std::nullopt);
    if (changes.jobTitle() == record->jobTitle) changes.setJobTitle(std::nullopt);
    if (changes.company() == record->company) changes.setCompany(std::nullopt);
    if (changes.profileURLLinkedInPublic() == record->profileURLLinkedInPublic)
        changes.setProfileURLLinkedInPublic(std::nullopt);
    if (changes.profileURLFacebook() == record->profileURLFacebook) changes.setProfileURLFacebook(std::nullopt);
    if (digestOf(changes.addressBookAvatarData()) == record->pictureDigest)
        changes.setAddressBookAvatarData(std::nullopt);
    return changes;
}
