#pragma once

#include "QVPlatform/Data.h"
#include "QVPlatform/Export.h"
#include "QVPlatform/Object.h"
#include "QVSocialSearch/QVEmail.h"
#include "QVSocialSearch/QVPhoneNumber.h"
#include "QVSocialSearch/QVPostalAddress.h"
#include "QVSocialSearch/QVSocialSearchTypes.h"

#include <cstdint>
#include <memory>

/// Where a profile, its title or its company comes from: one bit each, so that a merged profile tells all of them.
enum QVSocialProfileSource : std::int32_t {
    QVSocialProfileSourceUnknown = 0,
    /// A professional network's own answer, which outranks a card. A mere link to such a page does not count.
    QVSocialProfileSourceProfessionalNetwork = 1,
    QVSocialProfileSourceFacebook = 2,
    /// The profile stands for a record of the address book: `addressBookUID` says which.
    QVSocialProfileSourceAddressBook = 4,
    /// `QVGravatarProvider` and `QVWebFingerProvider`: what people, and the owners of their domains, say of themselves.
    QVSocialProfileSourceGravatar = 8,
    QVSocialProfileSourceWebFinger = 16,
    // Up to 128: this library's own providers, from 256 on those of hosts.
};

struct QVRecordAsRead;

/// What is known of a person from elsewhere than the card. Everything is absent or empty until set. A value: copies are
/// independent of each other. Not synchronised: one thread at a time while it changes.
class QV_EXPORT QVSocialProfile : public qv::Object {
  public:
    QVSocialProfile() = default;
    QVSocialProfile(const QVSocialProfile&) = default;
    QVSocialProfile& operator=(const QVSocialProfile&) = default;

    /// `copy` A profile of its own with the same contents.
    std::shared_ptr<QVSocialProfile> copy() const { return std::make_shared<QVSocialProfile>(*this); }

    /// Bits of `QVSocialProfileSource`.
    std::int32_t profileType() const { return mProfileType; }
    void setProfileType(std::int32_t profileType) { mProfileType = profileType; }

    /// The UID of the address-book record that this profile stands for; a save updates that record. Absent: a save
    /// makes a new one.
    const QVString& addressBookUID() const { return mAddressBookUID; }
    void setAddressBookUID(QVString addressBookUID) { mAddressBookUID = std::move(addressBookUID); }

    /// What the record said when an address book of this library read the profile from it; null for any other profile.
    /// A save leaves alone what the profile still says the same, so that what others have changed meanwhile stays.
    const std::shared_ptr<const QVRecordAsRead>& recordAsRead() const { return mRecordAsRead; }
    void setRecordAsRead(std::shared_ptr<const QVRecordAsRead> record) { mRecordAsRead = std::move(record); }

    /// The person's name as it is shown.
    const QVString& formattedName() const { return mFormattedName; }
    void setFormattedName(QVString formattedName) { mFormattedName = std::move(formattedName); }

    /// The job title.
    const QVString& jobTitle() const { return mJobTitle; }
    void setJobTitle(QVString jobTitle) { mJobTitle = std::move(jobTitle); }
    /// A `QVSocialProfileSource`; 1 replaces a card's title, any other only fills one that is empty.
    std::int32_t jobTitleSource() const { return mJobTitleSource; }
    void setJobTitleSource(std::int32_t jobTitleSource) { mJobTitleSource = jobTitleSource; }

    /// The company.
    const QVString& company() const { return mCompany; }
    void setCompany(QVString company) { mCompany = std::move(company); }
    /// As `jobTitleSource`.
    std::int32_t companySource() const { return mCompanySource; }
    void setCompanySource(std::int32_t companySource) { mCompanySource = companySource; }

    /// The e-mail addresses, each mailbox once.
    const QVEmailList& emailAddresses() const { return mEmailAddresses; }
    /// `mergeWithEmailSet:` Adds the addresses that are not there yet, in the set's order; the first entry of several
    /// for one mailbox stays, with its label. Two addresses are the same without regard to case and to blanks around
    /// them. A null set changes nothing.
    void mergeWithEmailSet(const QVEmailSet& emails);
    /// Replaces the list, without its null entries and duplicates.
    void setEmailAddresses(const QVEmailList& emailAddresses);

    /// The telephone numbers, each once.
    const QVPhoneNumberList& phoneNumbers() const { return mPhoneNumbers; }
    /// `mergeWithPhoneNumberSet:` The same for numbers. Two are the same when their digits are, a country or trunk
    /// prefix apart ("+1 202 555 0142", "001 202 555 0142", "202-555-0142"), and so are their extensions.
    void mergeWithPhoneNumberSet(const QVPhoneNumberSet& phoneNumbers);
    void setPhoneNumbers(const QVPhoneNumberList& phoneNumbers);

    /// The Twitter handles: a set of its own for each caller, never null.
    QVHandleSet twitterAccounts() const;
    /// `mergeWithTwitterSet:` The same for handles. Two are the same without regard to case and to a leading "@".
    void mergeWithTwitterSet(const QVHandleSet& handles);

    /// The postal addresses.
    const QVPostalAddressList& addressList() const { return mAddressList; }
    /// Entries that are null are left out.
    void setAddressList(QVPostalAddressList addressList);

    /// Pages of the person, http or https.
    const QVString& profileURLLinkedInPublic() const { return mProfileURLLinkedInPublic; }
    void setProfileURLLinkedInPublic(QVString link) { mProfileURLLinkedInPublic = std::move(link); }
    /// As `profileURLLinkedInPublic`.
    const QVString& profileURLFacebook() const { return mProfileURLFacebook; }
    void setProfileURLFacebook(QVString link) { mProfileURLFacebook = std::move(link); }

    /// Links to pictures. One that is present is fetched while the profile is merged into a contact, on that thread;
    /// an empty one counts as present.
    const QVString& avatarURLLinkedIn() const { return mAvatarURLLinkedIn; }
    void setAvatarURLLinkedIn(QVString link) { mAvatarURLLinkedIn = std::move(link); }
    /// As `avatarURLLinkedIn`.
    const QVString& avatarURLFacebookBig() const { return mAvatarURLFacebookBig; }
    void setAvatarURLFacebookBig(QVString link) { mAvatarURLFacebookBig = std::move(link); }

    /// A picture's encoded bytes, from the address book or fetched by a provider.
    const std::optional<qv::Data>& addressBookAvatarData() const { return mAddressBookAvatarData; }
    void setAddressBookAvatarData(std::optional<qv::Data> data) { mAddressBookAvatarData = std::move(data); }

    /// Several lines for logs, without the picture.
    std::string description() const override;

  private:
    std::int32_t mProfileType = 0;
    QVString mAddressBookUID;
    std::shared_ptr<const QVRecordAsRead> mRecordAsRead;
    QVString mFormattedName;
    QVString mJobTitle;
    std::int32_t mJobTitleSource = 0;
    QVString mCompany;
    std::int32_t mCompanySource = 0;
    QVEmailList mEmailAddresses;
    QVPhoneNumberList mPhoneNumbers;
    std::vector<std::string> mTwitterAccounts;
    QVPostalAddressList mAddressList;
    QVString mProfileURLLinkedInPublic;
    QVString mProfileURLFacebook;
    QVString mAvatarURLLinkedIn;
    QVString mAvatarURLFacebookBig;
    std::optional<qv::Data> mAddressBookAvatarData;
};
