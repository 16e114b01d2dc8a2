#include "Model/QVCardProcessingResponse+Write.h"

/// The one door to the response's private members.
struct QVCardProcessingResponseWrite {
    static auto& originalNoteUUID(QVCardProcessingResponse& response) { return response.mOriginalNoteUUID; }
    static auto& contactName(QVCardProcessingResponse& response) { return response.mContactName; }
    static auto& contactEmails(QVCardProcessingResponse& response) { return response.mContactEmails; }
    static auto& contactPhones(QVCardProcessingResponse& response) { return response.mContactPhones; }
    static auto& cardImages(QVCardProcessingResponse& response) { return response.mCardImages; }
    static auto& errors(QVCardProcessingResponse& response) { return response.mErrors; }
};

void setOriginalNoteUUID(QVCardProcessingResponse& response, QVString originalNoteUUID) {
    QVCardProcessingResponseWrite::originalNoteUUID(response).store(std::move(originalNoteUUID));
}

void setContactName(QVCardProcessingResponse& response, QVString contactName) {
    QVCardProcessingResponseWrite::contactName(response).store(std::move(contactName));
}

void setContactEmails(QVCardProcessingResponse& response, QVStringArray contactEmails) {
    QVCardProcessingResponseWrite::contactEmails(response).store(std::move(contactEmails));
}

void setContactPhones(QVCardProcessingResponse& response, QVStringArray contactPhones) {
    QVCardProcessingResponseWrite::contactPhones(response).store(std::move(contactPhones));
}

void setCardImages(QVCardProcessingResponse& response, QVImageArray cardImages) {
    QVCardProcessingResponseWrite::cardImages(response).store(std::move(cardImages));
}

void setErrors(QVCardProcessingResponse& response, QVErrorArray errors) {
    QVCardProcessingResponseWrite::errors(response).store(std::move(errors));
}
