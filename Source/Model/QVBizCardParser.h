#pragma once

#include "QVCardScan/QVBusinessCard.h"
#include "QVPlatform/Error.h"
#include "QVPlatform/Export.h"

#include <map>
#include <string>

/// Turns one recognition result into one card. One object serves one document, on one thread.
class QV_EXPORT QVBizCardParser {
  public:
    QVBizCardParser();
    ~QVBizCardParser();

    /// `parse:error:` The card that was built, also from a malformed document as far as it went; null when none was.
    /// `error` is replaced only if it already held an error when the call was made.
    std::shared_ptr<QVBusinessCard> parse(const QVString& result, std::optional<qv::Error>* error);

    /// `cardFieldTypeFromFieldName:`
    std::int32_t cardFieldTypeFromFieldName(const QVString& fieldName) const;
    /// `cardFieldFromAttributeDictionary:`
    std::shared_ptr<QVBusinessCardField> cardFieldFromAttributeDictionary(
        const std::map<std::string, std::string>& attributes) const;

  private:
    class State;
    std::unique_ptr<State> mState;
};
