#pragma once

#include "ContactFields.h"
#include "NoteResources.h"
#include "QVCardScan/QVCardProcessingResponse.h"
#include "RequestObject.h"

#include <memory>
#include <vector>

namespace qvc {

/// A response as it was when the card was done, so that a search that changes the contact changes nothing here.
struct ResponseObject {
    /// Null gives an empty response.
    static std::shared_ptr<const ResponseObject> make(const std::shared_ptr<QVCardProcessingResponse>& response,
                                                      const std::vector<CardPicture>& pictures);

    std::shared_ptr<QVCardProcessingResponse> response;
    std::vector<CardPicture> pictures;

    QVString noteUUID;
    QVString note;
    QVString name;
    QVString rawResults[2];
    std::int64_t rotation = 0;
    bool canSearch = false;
    std::vector<qv::Error> errors;
    ContactFields contactFields;
    /// Not null.
    std::vector<std::shared_ptr<QVBusinessCardField>> cardFields;
    NoteResources resources;

  private:
    void readTexts();
    void readRotation();
    void readFields();
};

}  // namespace qvc
