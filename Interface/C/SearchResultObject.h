#pragma once

#include "ContactFields.h"
#include "NoteResources.h"
#include "QVCardScan/QVSocialSearchResult.h"
#include "ResponseObject.h"

#include <memory>
#include <string>

namespace qvc {

/// What came of a search, as it was announced. Never changes.
struct SearchResultObject {
    SearchResultObject(const QVSocialSearchResult& result, const ResponseObject& origin);

    std::string noteUUID;
    std::int32_t type;
    bool hasProfile;
    QVString note;
    ContactFields contactFields;
    NoteResources resources;
};

}  // namespace qvc
