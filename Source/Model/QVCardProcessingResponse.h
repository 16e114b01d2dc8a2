#pragma once

#include "QVCardScan/QVBusinessCard.h"
#include "QVCardScan/QVCardScanTypes.h"
#include "QVCardScan/QVVeltoContact.h"
#include "QVPlatform/Atomic.h"
#include "QVPlatform/Error.h"
#include "QVPlatform/Export.h"
#include "QVPlatform/Object.h"

#include <map>
#include <vector>

/// Errors in the order in which they happened, shared by reference; null when absent.
using QVErrorArray = std::shared_ptr<std::vector<qv::Error>>;
/// Degrees by image hash, shared by reference; null when absent.
using QVRotationMap = std::shared_ptr<std::map<std::string, std::int64_t>>;

/// What became of a request. Made by the framework; every property starts absent, false or zero and may be read from
/// any thread.
class QV_EXPORT QVCardProcessingResponse : public qv::Object {
  public:
    QVCardProcessingResponse() = default;

    /// The request's note UUID; absent when there was no server to ask.
    QVString originalNoteUUID() const { return mOriginalNoteUUID.load(); }

    /// The contact note's content; absent when note generation was skipped.
    QVString qvmlContent() const { return mQvmlContent.load(); }
    void setQvmlContent(QVString qvmlContent) { mQvmlContent.store(std::move(qvmlContent)); }

    /// The request's images, in the request's order.
    QVImageArray cardImages() const { return mCardImages.load(); }

    /// One element, the contact's avatar, when it has one; otherwise absent.
    QVImageArray avatars() const { return mAvatars.load(); }
    void setAvatars(QVImageArray avatars) { mAvatars.store(std::move(avatars)); }

    /// The contact; absent when note generation was skipped.
    std::shared_ptr<QVVeltoContact> contact() const { return mContact.load(); }
    void setContact(std::shared_ptr<QVVeltoContact> contact) { mContact.store(std::move(contact)); }

    /// The recognised card's full name, e-mail addresses and phone numbers, in card order; absent when it has none.
    QVString contactName() const { return mContactName.load(); }
    /// The recognised e-mail addresses in card order; null when there are none.
    QVStringArray contactEmails() const { return mContactEmails.load(); }
    /// The recognised phone numbers in card order; null when there are none.
    QVStringArray contactPhones() const { return mContactPhones.load(); }

    /// The recognised card; set only when note generation was skipped.
    std::shared_ptr<QVBusinessCard> card() const { return mCard.load(); }
    void setCard(std::shared_ptr<QVBusinessCard> card) { mCard.store(std::move(card)); }

    /// Whether a social search is possible for this response.
    bool willStartLinkedInSearch() const { return mWillStartLinkedInSearch.load(); }
    void setWillStartLinkedInSearch(bool willStartLinkedInSearch) {
        mWillStartLinkedInSearch.store(willStartLinkedInSearch);
    }

    /// At most one entry: the winning image's hash and how many degrees it is turned; absent when it is not.
    QVRotationMap imageRotationMap() const { return mImageRotationMap.load(); }
    void setImageRotationMap(QVRotationMap imageRotationMap) { mImageRotationMap.store(std::move(imageRotationMap)); }

    /// Everything that failed, in order; empty when nothing did.
    QVErrorArray errors() const { return mErrors.load(); }

    /// The server's raw answers for the first and second image scanned.
    QVString rawResultForFirstCard() const { return mRawResultForFirstCard.load(); }
    void setRawResultForFirstCard(QVString rawResult) { mRawResultForFirstCard.store(std::move(rawResult)); }
    /// As `rawResultForFirstCard`; absent when no second image was sent.
    QVString rawResultForSecondCard() const { return mRawResultForSecondCard.load(); }
    void setRawResultForSecondCard(QVString rawResult) { mRawResultForSecondCard.store(std::move(rawResult)); }

  private:
    friend struct QVCardProcessingResponseWrite;

    qv::Atomic<QVString> mOriginalNoteUUID;
    qv::Atomic<QVString> mQvmlContent;
    qv::Atomic<QVImageArray> mCardImages;
    qv::Atomic<QVImageArray> mAvatars;
    qv::Atomic<std::shared_ptr<QVVeltoContact>> mContact;
    qv::Atomic<QVString> mContactName;
    qv::Atomic<QVStringArray> mContactEmails;
    qv::Atomic<QVStringArray> mContactPhones;
    qv::Atomic<std::shared_ptr<QVBusinessCard>> mCard;
    qv::Atomic<bool> mWillStartLinkedInSearch;
    qv::Atomic<QVRotationMap> mImageRotationMap;
    qv::Atomic<QVErrorArray> mErrors;
    qv::Atomic<QVString> mRawResultForFirstCard;
    qv::Atomic<QVString> mRawResultForSecondCard;
};
