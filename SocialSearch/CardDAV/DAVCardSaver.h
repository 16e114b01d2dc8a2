#pragma once

#include "CardDAV/DAVCollection.h"
#include "CardDAV/DAVLookUp.h"
#include "QVSocialSearch/QVAddressBook.h"

#include <optional>
#include <string>

/// One save into a collection. Each attempt looks at what is there and writes on the condition that it is still so; one
/// whose outcome is not known is followed by another, which finds what the first one did.
class DAVCardSaver {
  public:
    DAVCardSaver(DAVCollection& collection, DAVTrust& trust, const QVSocialProfile& profile);

    QVAddressBookSaveResult save();

  private:
    /// Nothing when somebody was quicker, or nobody knows, and the save starts again.
    using Attempt = std::optional<QVAddressBookSaveResult>;

    Attempt attempt();
    DAVReading find();
    std::optional<qv::URL> addressByUID(std::optional<qv::Error>& failure);
    Attempt update(DAVReading& record);
    Attempt create();
    Attempt put(const qv::URL& url, std::string bytes, bool isNew, const std::string& ETag);
    Attempt afterPut(const DAVAnswer& answer, bool isNew);
    Attempt accept(const DAVAnswer& answer);
    Attempt lose(const DAVAnswer& answer);
    QVAddressBookSaveResult finish() const;

    DAVCollection& mCollection;
    DAVLookUp mLookUp;
    const QVSocialProfile& mProfile;
    std::string mUID;
    /// Where a new card goes.
    qv::URL mURL;
    bool mHasRecord = false;
    bool mMustLook = false;
    bool mIsOurs = false;
    int mLost = 0;
    int mRefused = 0;
    int mAccepted = 0;
};
