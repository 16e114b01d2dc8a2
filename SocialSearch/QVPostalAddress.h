#pragma once

#include "QVPlatform/Export.h"
#include "QVPlatform/Object.h"
#include "QVSocialSearch/QVSocialSearchTypes.h"

/// A postal address as it is written on a letter; never changes.
class QV_EXPORT QVPostalAddress : public qv::Object {
  public:
    /// `addressWithLabel:formattedAddress:` Null when the address is absent or blank.
    static std::shared_ptr<const QVPostalAddress> addressWithLabel(QVString label, QVString formattedAddress);

    /// What kind of address it is; may be absent.
    const QVString& label() const { return mLabel; }
    /// One or several lines, separated by LF.
    const std::string& formattedAddress() const { return mFormattedAddress; }

    bool isEqual(const std::shared_ptr<const qv::Object>& other) const override;
    std::size_t hash() const override;

  private:
    QVPostalAddress() = default;
    QVString mLabel;
    std::string mFormattedAddress;
};
