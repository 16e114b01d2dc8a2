#include "ResponseObject.h"

namespace qvc {

std::shared_ptr<const ResponseObject> ResponseObject::make(const std::shared_ptr<QVCardProcessingResponse>& response,
                                                           const std::vector<CardPicture>& pictures) {
    auto object = std::make_shared<ResponseObject>();
    object->response = response;
    object->pictures = pictures;
    if (!response) return object;
    object->readTexts();
    object->readRotation();
    object->readFields();
    const auto contact = response->contact();
    object->contactFields = ContactFields(contact);
    object->resources = NoteResources(object->note, pictures, contact ? contact->avatar() : nullptr);
    return object;
}

void ResponseObject::readTexts() {
    noteUUID = response->originalNoteUUID();
    note = response->qvmlContent();
    name = response->contactName();
    rawResults[0] = response->rawResultForFirstCard();
    rawResults[1] = response->rawResultForSecondCard();
    canSearch = response->willStartLinkedInSearch();
    if (const auto list = response->errors()) errors = *list;
}

void ResponseObject::readRotation() {
    const auto map = response->imageRotationMap();
    if (map && !map->empty()) rotation = map->begin()->second;
}

void ResponseObject::readFields() {
    const auto card = response->card();
    if (!card || !card->fields()) return;
    cardFields.reserve(card->fields()->size());
    for (const auto& field : *card->fields()) {
        if (field) cardFields.push_back(field);
    }
}

}  // namespace qvc
