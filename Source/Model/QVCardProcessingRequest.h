#pragma once

#include "QVCardScan/QVCardScanTypes.h"
#include "QVPlatform/Atomic.h"
#include "QVPlatform/Export.h"
#include "QVPlatform/Object.h"

/// What the host wants read: the photographs of one card. Every property may be read and replaced from any thread; the
/// arrays are shared with the host and are not guarded. Nothing is validated here.
class QV_EXPORT QVCardProcessingRequest : public qv::Object {
  public:
    QVCardProcessingRequest() = default;

    /// `initWithNoteUUID:cardImages:imageHashes:authToken:processImageForOCR:` The language starts absent, and a note
    /// will be made.
    static std::shared_ptr<QVCardProcessingRequest> initWithNoteUUID(QVString noteUUID, QVImageArray cardImages,
                                                                     QVStringArray imageHashes, QVString authToken,
                                                                     bool processImageForOCR);

    /// Identifier of the host's note, and the request's own identity.
    QVString noteUUID() const { return mNoteUUID.load(); }
    void setNoteUUID(QVString noteUUID) { mNoteUUID.store(std::move(noteUUID)); }

    /// Element 0 is the front, element 1 the back; more are never read.
    QVImageArray cardImages() const { return mCardImages.load(); }
    void setCardImages(QVImageArray cardImages) { mCardImages.store(std::move(cardImages)); }

    /// The host's resource hashes of the images, in the same order. Replaced by the operation when the back won.
    QVStringArray imageHashes() const { return mImageHashes.load(); }
    void setImageHashes(QVStringArray imageHashes) { mImageHashes.store(std::move(imageHashes)); }

    /// Sent to the recognition server and to nobody else. Required.
    QVString authToken() const { return mAuthToken.load(); }
    void setAuthToken(QVString authToken) { mAuthToken.store(std::move(authToken)); }

    /// Whether the images pass through the operation's pre-processing hook.
    bool processImageForOCR() const { return mProcessImageForOCR.load(); }
    void setProcessImageForOCR(bool processImageForOCR) { mProcessImageForOCR.store(processImageForOCR); }

    /// Recognition language ("de"); absent means "en".
    QVString recoLanguage() const { return mRecoLanguage.load(); }
    void setRecoLanguage(QVString recoLanguage) { mRecoLanguage.store(std::move(recoLanguage)); }

    /// Whether only the card is wanted, without contact and note.
    bool skipNoteGeneration() const { return mSkipNoteGeneration.load(); }
    void setSkipNoteGeneration(bool skipNoteGeneration) { mSkipNoteGeneration.store(skipNoteGeneration); }

  private:
    qv::Atomic<QVString> mNoteUUID;
    qv::Atomic<QVImageArray> mCardImages;
    qv::Atomic<QVStringArray> mImageHashes;
    qv::Atomic<QVString> mAuthToken;
    qv::Atomic<bool> mProcessImageForOCR;
    qv::Atomic<QVString> mRecoLanguage;
    qv::Atomic<bool> mSkipNoteGeneration;
};
