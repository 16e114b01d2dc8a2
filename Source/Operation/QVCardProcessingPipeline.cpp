#include "Operation/QVCardProcessingPipeline.h"

#include "Model/QVCardProcessingResponse+Write.h"
#include "QVCardScan/QVBusinessCard.h"
#include "QVCardScan/QVVeltoContact.h"
#include "QVCardScan/QVVeltoNoteGenerator.h"
#include "QVPlatform/Log.h"

#include <algorithm>
#include <exception>

namespace {

template <typename Array>
bool hasElements(const Array& array) {
    return array && !array->empty();
}

std::shared_ptr<qv::Image> imageAt(const QVImageArray& images, std::size_t index) {
    return images && images->size() > index ? (*images)[index] : nullptr;
}

std::int64_t rotationOf(const std::shared_ptr<QVBusinessCard>& card) {
    return card ? card->rotationByDegrees() : 0;
}

std::int64_t scoreOf(const std::shared_ptr<QVBusinessCard>& card) {
    return card ? card->score() : 0;
}

QVString firstOf(const QVStringArray& strings) {
    return hasElements(strings) ? QVString(strings->front()) : std::nullopt;
}

}  // namespace

QVCardProcessingPipeline::QVCardProcessingPipeline(const QVCardProcessingOperation& operation,
                                                   std::shared_ptr<QVCardProcessingRequest> request, std::string token,
                                                   QVErrorArray errors)
    : mOperation(operation), mRequest(std::move(request)), mToken(std::move(token)), mErrors(std::move(errors)) {
}

void QVCardProcessingPipeline::run(const Publish& publish) {
    takeImages();
    passImagesThroughHook();
    scanFront();
    if (backIsNeeded()) {
        scanBack();
        mergeSides();
    }
    attachImagesToCard();
    if (mBackWon) putWinningHashFirst();
    const auto response = responseFromCard();
    publish(response);
    if (mRequest->skipNoteGeneration()) {
        response->setCard(mCard);
    } else {
        addContactAndNote(*response);
    }
}

void QVCardProcessingPipeline::takeImages() {
    mCardImages = mRequest->cardImages();
    mFrontImage = imageAt(mCardImages, 0);
    mBackImage = imageAt(mCardImages, 1);
}

void QVCardProcessingPipeline::passImagesThroughHook() {
    const bool hook = mRequest->processImageForOCR();
    mFrontScanImage = hook ? mOperation.processNSImageForOCR(mFrontImage) : mFrontImage;
    mBackScanImage = hook ? mOperation.processNSImageForOCR(mBackImage) : mBackImage;
}

std::shared_ptr<QVBusinessCard> QVCardProcessingPipeline::scan(const std::shared_ptr<qv::Image>& image,
                                                               QVString& rawResult) {
    QVErrorArray errors;
    auto card = mOperation.performCardScanSynchronouslyFromImage(image, mToken, errors, rawResult);
    mErrors->insert(mErrors->end(), errors->begin(), errors->end());
    return card;
}

void QVCardProcessingPipeline::scanFront() {
    mCard = scan(mFrontScanImage, mFirstRawResult);
    mFrontRotation = rotationOf(mCard);
}

bool QVCardProcessingPipeline::backIsNeeded() const {
    if (!mBackScanImage) return false;
    return !mCard || !hasElements(mCard->fields()) || !hasElements(mCard->emails()) || !mCard->hasTitleField();
}

void QVCardProcessingPipeline::scanBack() {
    mBackCard = scan(mBackScanImage, mSecondRawResult);
    mBackRotation = rotationOf(mBackCard);
}

void QVCardProcessingPipeline::mergeSides() {
    // Without a front card there would be nothing to absorb the back, and a tie would lose it.
    if (!mCard && mBackCard) mCard = std::make_shared<QVBusinessCard>();
    if (scoreOf(mCard) >= scoreOf(mBackCard)) {
        if (mCard) mCard->mergeWithCard(mBackCard);
        return;
    }
    mBackCard->mergeWithCard(mCard);
    mCard = mBackCard;
    mBackWon = true;
}

void QVCardProcessingPipeline::attachImagesToCard() {
    if (!mCard) return;
    mCard->setFrontImage(mFrontImage);
    mCard->setBackImage(mBackImage);
}

void QVCardProcessingPipeline::putWinningHashFirst() {
    const auto hashes = mRequest->imageHashes();
    if (!hashes) return;
    auto winnerFirst = std::make_shared<std::vector<std::string>>(*hashes);
    if (winnerFirst->size() >= 2) std::swap((*winnerFirst)[0], (*winnerFirst)[1]);
    mRequest->setImageHashes(winnerFirst);
}

QVRotationMap QVCardProcessingPipeline::rotationMap() const {
    const std::int64_t rotation = mBackWon ? mBackRotation : mFrontRotation;
    const auto hashes = mRequest->imageHashes();
    if (rotation == 0 || !hasElements(hashes)) return nullptr;
    return std::make_shared<std::map<std::string, std::int64_t>>(
        std::map<std::string, std::int64_t>{{hashes->front(), rotation}});
}

std::shared_ptr<QVCardProcessingResponse> QVCardProcessingPipeline::responseFromCard() const {
    const auto map = rotationMap();
    qv::Log::write("<Debug> Card reco result: %@", mCard);
    auto response = std::make_shared<QVCardProcessingResponse>();
    setOriginalNoteUUID(*response, mRequest->noteUUID());
    setContactName(*response, mCard ? mCard->fullName() : std::nullopt);
    setContactEmails(*response, mCard ? mCard->emails() : nullptr);
    setContactPhones(*response, mCard ? mCard->phoneNumbers() : nullptr);
    setErrors(*response, mErrors);
    response->setImageRotationMap(map);
    setCardImages(*response, mCardImages);
    response->setRawResultForFirstCard(mFirstRawResult);
    response->setRawResultForSecondCard(mSecondRawResult);
    return response;
}

std::shared_ptr<QVVeltoContact> QVCardProcessingPipeline::contactOfHost() const {
    const auto dataSource = mOperation.contactNoteDataSource();
    if (!dataSource) return nullptr;
    const QVString fullName = mCard ? mCard->fullName() : std::nullopt;
    const QVString email = firstOf(mCard ? mCard->emails() : nullptr);
    // A host's failure costs the match, not the card: the note is still made from what was read.
    try {
        if (!dataSource->implementsContactMatchingFullName()) return nullptr;
        return dataSource->contactMatchingFullName(fullName, /*firstName=*/std::nullopt, /*lastName=*/std::nullopt,
                                                   email, /*phone=*/std::nullopt);
    } catch (const std::exception& failure) {
        qv::Log::write("<ERROR> The contact data source failed: %@", failure.what());
    } catch (...) {
        qv::Log::write("<ERROR> The contact data source failed");
    }
    return nullptr;
}

void QVCardProcessingPipeline::addContactAndNote(QVCardProcessingResponse& response) const {
    const auto match = contactOfHost();
    const auto contact = QVVeltoContact::initWithCard(mCard);
    if (match) {
        contact->mergeContactInfoFromContact(match);
        qv::Log::write("<INFO> Merged Contact:\n%@", contact);
    }
    if (const auto hashes = mRequest->imageHashes(); hasElements(hashes)) contact->setResourceHashes(hashes);
    const QVString content = QVVeltoNoteGenerator().noteFromObject(contact);
    response.setContact(contact);
    response.setQvmlContent(content);
    if (const auto avatar = contact->avatar()) {
        response.setAvatars(std::make_shared<std::vector<std::shared_ptr<qv::Image>>>(1, avatar));
    }
}
