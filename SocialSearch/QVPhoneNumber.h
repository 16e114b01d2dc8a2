#pragma once

#include "QVPlatform/Export.h"
#include "QVPlatform/Object.h"
#include "QVSocialSearch/QVSocialSearchTypes.h"

/// A phone number with its label (`type`); never changes. Two are equal when both texts are, character for character;
/// whether two numbers reach the same telephone is the profile's question.
class QV_EXPORT QVPhoneNumber : public qv::Object {
  public:
    /// `phoneNumberWithNumber:type:` Null when the number is absent or blank; nothing else is refused. The number is
    /// kept as it is written.
    static std::shared_ptr<const QVPhoneNumber> phoneNumberWithNumber(QVString number, QVString type);

    /// The number as it is written.
    const std::string& number() const { return mNumber; }
    /// The label, as "Mobile".
    const QVString& type() const { return mType; }

    bool isEqual(const std::shared_ptr<const qv::Object>& other) const override;
    std::size_t hash() const override;

  private:
    QVPhoneNumber() = default;
    std::string mNumber;
    QVString mType;
};
