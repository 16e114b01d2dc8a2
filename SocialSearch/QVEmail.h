#pragma once

#include "QVPlatform/Export.h"
#include "QVPlatform/Object.h"
#include "QVSocialSearch/QVSocialSearchTypes.h"

/// An e-mail address with its label; never changes. Two are equal when label and address are, character for character;
/// whether two addresses mean the same mailbox is the profile's question.
class QV_EXPORT QVEmail : public qv::Object {
  public:
    /// `emailWithLabel:address:` Null when the address is absent or blank; nothing else is refused, because a contact's
    /// addresses go through this and a misread one must not vanish. The address is kept as it is written.
    static std::shared_ptr<const QVEmail> emailWithLabel(QVString label, QVString address);

    /// What kind of address it is; may be absent.
    const QVString& label() const { return mLabel; }
    /// The address as it is written.
    const std::string& address() const { return mAddress; }

    bool isEqual(const std::shared_ptr<const qv::Object>& other) const override;
    std::size_t hash() const override;

  private:
    QVEmail() = default;
    QVString mLabel;
    std::string mAddress;
};
