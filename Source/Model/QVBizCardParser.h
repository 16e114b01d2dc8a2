#pragma once

#include "QVCardScan/QVBusinessCard.h"
#include "QVCardScan/QVCardRecoVocabulary.h"
#include "QVPlatform/Error.h"
#include "QVPlatform/Export.h"

#include <map>
#include <memory>
#include <optional>
#include <string>

/// Turns one recognition result into one card. Stateless between documents; runs on the thread that calls it.
class QV_EXPORT QVBizCardParser {
  public:
    /// `parse:error:` The card that was built, also from a malformed document as far as it went: its `fields` are null
    /// unless the end of its `recoIndex` was reached. Null when no card began, as in an absent or empty result. A slot
    /// in `error` that held an error when the call was made receives the outcome (nothing when the document was well
    /// formed); an empty one stays empty.
    std::shared_ptr<QVBusinessCard> parse(const QVString& result, std::optional<qv::Error>* error);

    /// `cardFieldTypeFromFieldName:` The code of a kind of field (`QVBusinessCardFieldType`), whatever the letters'
    /// case; 0 when it is absent or unknown.
    std::int32_t cardFieldTypeFromFieldName(const QVString& fieldName) const;

    /// `cardFieldFromAttributeDictionary:` A new field from an item's attributes, without text and weight. What is
    /// absent or no number is 0; attributes of other names are passed over.
    std::shared_ptr<QVBusinessCardField> cardFieldFromAttributeDictionary(
        const std::map<std::string, std::string>& attributes) const;

  private:
    friend class QVBizCardBuilder;
    /// What `cardFieldFromAttributeDictionary` puts into its new field.
    void readCardField(QVBusinessCardField& field, const std::map<std::string, std::string>& attributes) const;
};
