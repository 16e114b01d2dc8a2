#include "QVCardScan/QVCardProcessingRequest.h"

std::shared_ptr<QVCardProcessingRequest> QVCardProcessingRequest::initWithNoteUUID(QVString noteUUID,
                                                                                   QVImageArray cardImages,
                                                                                   QVStringArray imageHashes,
                                                                                   QVString authToken,
                                                                                   bool processImageForOCR) {
    auto request = std::make_shared<QVCardProcessingRequest>();
    request->setNoteUUID(std::move(noteUUID));
    request->setCardImages(std::move(cardImages));
    request->setImageHashes(std::move(imageHashes));
    request->setAuthToken(std::move(authToken));
    request->setProcessImageForOCR(processImageForOCR);
    return request;
}
