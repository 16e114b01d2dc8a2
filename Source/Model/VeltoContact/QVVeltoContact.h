#pragma once

#include "QVCardScan/QVBusinessCard.h"
#include "QVCardScan/QVCardScanTypes.h"
#include "QVCardScan/QVVeltoContactField.h"
#include "QVPlatform/Export.h"
#include "QVPlatform/Object.h"
#include "QVSocialSearch/QVAddressBookController.h"
#include "QVSocialSearch/QVSocialProfile.h"

/// The person a card stands for. Everything is absent until set; collections and images are shared references. Not
/// synchronised: one thread at a time while it changes.
class QV_EXPORT QVVeltoContact : public qv::Object {
  public:
    QVVeltoContact() = default;

    /// `initWithCard:` A contact from a recognised card; from no card, one without name and with empty sets.
    static std::shared_ptr<QVVeltoContact> initWithCard(const std::shared_ptr<QVBusinessCard>& card);

    /// `mergeContactInfoFromContact:` Takes what another contact of the same person has more: its entries and handles
    /// where this contact has such a set at all, and title, company, URL and avatar where this one has none. A null
    /// contact changes nothing.
    void mergeContactInfoFromContact(const std::shared_ptr<QVVeltoContact>& contact);

    /// `mergeContactInfoFromSocialProfile:avatarIsUpdated:` Takes what a social profile knows of the person. The
    /// profile takes this contact's addresses, numbers and handles in, and the contact's own are then what the profile
    /// has. Sets `avatarIsUpdated` when the contact got an avatar, and never clears it. A picture behind a link is
    /// fetched by the calling thread, which waits for it. A null profile changes nothing.
    void mergeContactInfoFromSocialProfile(const std::shared_ptr<QVSocialProfile>& profile, bool& avatarIsUpdated);

    /// `saveToContactsWithVeltoContact:socialProfile:completionHandler:` Saves a contact into the address book: the
    /// record that the profile stands for is updated; with any other profile, or null, there is a new record. The
    /// receiver plays no part, the profile stays as it is, and the handler gets what the address book reports. A null
    /// contact has nothing to add to the profile.
    void saveToContactsWithVeltoContact(const std::shared_ptr<QVVeltoContact>& contact,
                                        const std::shared_ptr<QVSocialProfile>& socialProfile,
                                        QVAddressBookCompletionHandler completionHandler) const;
    /// `updateExistingAddressBookRecordWithVeltoContact:andSocialProfile:completionHandler:` A title or company that
    /// the profile lacks comes from the contact, unless a professional network is among the profile's sources.
    void updateExistingAddressBookRecordWithVeltoContact(const std::shared_ptr<QVVeltoContact>& contact,
                                                         const std::shared_ptr<QVSocialProfile>& andSocialProfile,
                                                         QVAddressBookCompletionHandler completionHandler) const;
    /// `saveNewAddressBookRecordWithVeltoContact:andSocialProfile:completionHandler:` Name, title and company come from
    /// the contact only when there is no profile.
    void saveNewAddressBookRecordWithVeltoContact(const std::shared_ptr<QVVeltoContact>& contact,
                                                  const std::shared_ptr<QVSocialProfile>& andSocialProfile,
                                                  QVAddressBookCompletionHandler completionHandler) const;

    /// The person's name as it is shown.
    const QVString& fullName() const { return mFullName; }
    void setFullName(QVString fullName) { mFullName = std::move(fullName); }
    /// The e-mail addresses, in their order.
    const QVContactFieldSet& emailFields() const { return mEmailFields; }
    void setEmailFields(QVContactFieldSet emailFields) { mEmailFields = std::move(emailFields); }
    /// The telephone numbers, in their order.
    const QVContactFieldSet& phoneFields() const { return mPhoneFields; }
    void setPhoneFields(QVContactFieldSet phoneFields) { mPhoneFields = std::move(phoneFields); }
    /// A picture of the person.
    const std::shared_ptr<qv::Image>& avatar() const { return mAvatar; }
    void setAvatar(std::shared_ptr<qv::Image> avatar) { mAvatar = std::move(avatar); }
    /// The pictures of the card.
    const QVImageSet& resources() const { return mResources; }
    void setResources(QVImageSet resources) { mResources = std::move(resources); }
    /// The hashes under which the host keeps the card's pictures; a note refers to them.
    const QVStringArray& resourceHashes() const { return mResourceHashes; }
    void setResourceHashes(QVStringArray resourceHashes) { mResourceHashes = std::move(resourceHashes); }
    /// Twitter handles.
    const QVHandleSet& twitterHandles() const { return mTwitterHandles; }
    void setTwitterHandles(QVHandleSet twitterHandles) { mTwitterHandles = std::move(twitterHandles); }
    /// Weibo handles.
    const QVHandleSet& weiboHandles() const { return mWeiboHandles; }
    void setWeiboHandles(QVHandleSet weiboHandles) { mWeiboHandles = std::move(weiboHandles); }
    /// The job title.
    const QVString& jobTitle() const { return mJobTitle; }
    void setJobTitle(QVString jobTitle) { mJobTitle = std::move(jobTitle); }
    /// The company.
    const QVString& company() const { return mCompany; }
    void setCompany(QVString company) { mCompany = std::move(company); }
    /// A web address; notes do not show it.
    const QVString& URL() const { return mURL; }
    void setURL(QVString URL) { mURL = std::move(URL); }
    /// The postal address in one text.
    const QVString& address() const { return mAddress; }
    void setAddress(QVString address) { mAddress = std::move(address); }
    /// The person's public LinkedIn page.
    const QVString& linkedInProfileURL() const { return mLinkedInProfileURL; }
    void setLinkedInProfileURL(QVString linkedInProfileURL) { mLinkedInProfileURL = std::move(linkedInProfileURL); }
    /// The person's Facebook page.
    const QVString& facebookProfileURL() const { return mFacebookProfileURL; }
    void setFacebookProfileURL(QVString facebookProfileURL) { mFacebookProfileURL = std::move(facebookProfileURL); }
    /// For notes: taken instead of `emailFields` when it is there, even empty.
    const QVContactFieldArray& orderedEmailFields() const { return mOrderedEmailFields; }
    void setOrderedEmailFields(QVContactFieldArray orderedEmailFields) {
        mOrderedEmailFields = std::move(orderedEmailFields);
    }
    /// For notes: taken instead of `phoneFields` when it is there, even empty.
    const QVContactFieldArray& orderedPhoneFields() const { return mOrderedPhoneFields; }
    void setOrderedPhoneFields(QVContactFieldArray orderedPhoneFields) {
        mOrderedPhoneFields = std::move(orderedPhoneFields);
    }
    /// For notes: taken instead of `twitterHandles` when it is there, even empty.
    const QVStringArray& orderedTwitterHandles() const { return mOrderedTwitterHandles; }
    void setOrderedTwitterHandles(QVStringArray orderedTwitterHandles) {
        mOrderedTwitterHandles = std::move(orderedTwitterHandles);
    }
    /// For notes: taken instead of `weiboHandles` when it is there, even empty.
    const QVStringArray& orderedWeiboHandles() const { return mOrderedWeiboHandles; }
    void setOrderedWeiboHandles(QVStringArray orderedWeiboHandles) {
        mOrderedWeiboHandles = std::move(orderedWeiboHandles);
    }
    /// Where the host's own page finds the avatar; for the contact-info block.
    const QVString& profileImageQVURLString() const { return mProfileImageQVURLString; }
    void setProfileImageQVURLString(QVString profileImageQVURLString) {
        mProfileImageQVURLString = std::move(profileImageQVURLString);
    }
    /// Where the host's own page finds the card's pictures; kept for the host.
    const QVStringArray& cardImageQVURLStrings() const { return mCardImageQVURLStrings; }
    void setCardImageQVURLStrings(QVStringArray cardImageQVURLStrings) {
        mCardImageQVURLStrings = std::move(cardImageQVURLStrings);
    }

    /// Several lines for logs; absent values print as "(null)".
    std::string description() const override;

  private:
    QVString mFullName;
    QVContactFieldSet mEmailFields;
    QVContactFieldSet mPhoneFields;
    std::shared_ptr<qv::Image> mAvatar;
    QVImageSet mResources;
    QVStringArray mResourceHashes;
    QVHandleSet mTwitterHandles;
    QVHandleSet mWeiboHandles;
    QVString mJobTitle;
    QVString mCompany;
    QVString mURL;
    QVString mAddress;
    QVString mLinkedInProfileURL;
    QVString mFacebookProfileURL;
    QVContactFieldArray mOrderedEmailFields;
    QVContactFieldArray mOrderedPhoneFields;
    QVStringArray mOrderedTwitterHandles;
    QVStringArray mOrderedWeiboHandles;
    QVString mProfileImageQVURLString;
    QVStringArray mCardImageQVURLStrings;
};
