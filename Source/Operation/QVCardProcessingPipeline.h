#pragma once

#include "QVCardScan/QVCardProcessingOperation.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

/// What an operation does with its request once its guards have passed: read the front and, where that is not good
/// enough, the back; merge the two; and answer with the card, or with a contact and its note. Used once, on the
/// operation's thread; never stopped half-way by a cancellation.
class QVCardProcessingPipeline {
  public:
    using Publish = std::function<void(std::shared_ptr<QVCardProcessingResponse>)>;

    /// The operation is borrowed; `errors` goes on to the response.
    QVCardProcessingPipeline(const QVCardProcessingOperation& operation,
                             std::shared_ptr<QVCardProcessingRequest> request, std::string token, QVErrorArray errors);

    /// Runs to the end. `publish` receives the response as soon as it holds what was recognised; contact and note
    /// follow in the same object.
    void run(const Publish& publish);

  private:
    void takeImages();
    void passImagesThroughHook();
    void scanFront();
    bool backIsNeeded() const;
    void scanBack();
    void mergeSides();
    void attachImagesToCard();
    void putWinningHashFirst();
    QVRotationMap rotationMap() const;
    std::shared_ptr<QVCardProcessingResponse> responseFromCard() const;
    void addContactAndNote(QVCardProcessingResponse& response) const;
    std::shared_ptr<QVVeltoContact> contactOfHost() const;
    std::shared_ptr<QVBusinessCard> scan(const std::shared_ptr<qv::Image>& image, QVString& rawResult);

    const QVCardProcessingOperation& mOperation;
    const std::shared_ptr<QVCardProcessingRequest> mRequest;
    const QVString mToken;
    const QVErrorArray mErrors;

    QVImageArray mCardImages;
    std::shared_ptr<qv::Image> mFrontImage;
    std::shared_ptr<qv::Image> mBackImage;
    std::shared_ptr<qv::Image> mFrontScanImage;
    std::shared_ptr<qv::Image> mBackScanImage;

    /// The front's card; after the merge, the result.
    std::shared_ptr<QVBusinessCard> mCard;
    std::shared_ptr<QVBusinessCard> mBackCard;
    std::int64_t mFrontRotation = 0;
    std::int64_t mBackRotation = 0;
    bool mBackWon = false;
    QVString mFirstRawResult;
    QVString mSecondRawResult;
};
