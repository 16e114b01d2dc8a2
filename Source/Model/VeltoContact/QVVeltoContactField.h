#pragma once

#include "QVCardScan/QVCardScanTypes.h"
#include "QVPlatform/Export.h"
#include "QVPlatform/Object.h"

/// A (label, text) entry of a contact. Two entries are equal when both strings are.
class QV_EXPORT QVVeltoContactField : public qv::Object {
  public:
    QVVeltoContactField() = default;

    /// `initWithLabel:andText:`
    static std::shared_ptr<QVVeltoContactField> initWithLabel(QVString label, QVString andText);

    /// What kind of entry it is, in the host's words; notes take it as markup.
    const QVString& label() const { return mLabel; }
    void setLabel(QVString label) { mLabel = std::move(label); }
    /// The entry itself: an address or a number.
    const QVString& text() const { return mText; }
    void setText(QVString text) { mText = std::move(text); }

    bool isEqual(const std::shared_ptr<const qv::Object>& other) const override;
    std::size_t hash() const override;

  private:
    QVString mLabel;
    QVString mText;
};
