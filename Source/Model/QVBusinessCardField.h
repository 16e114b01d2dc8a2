#pragma once

#include "QVCardScan/QVCardScanTypes.h"
#include "QVPlatform/Export.h"
#include "QVPlatform/Geometry.h"
#include "QVPlatform/Object.h"

#include <cstdint>

/// What kind of thing a recognised field is.
enum QVBusinessCardFieldType : std::int32_t {
    QVBusinessCardFieldTypeUnknown = 0,
    QVBusinessCardFieldTypeName = 1,
    QVBusinessCardFieldTypeEmail = 2,
    QVBusinessCardFieldTypePhone = 3,
    QVBusinessCardFieldTypeTitle = 4,
    QVBusinessCardFieldTypeCompany = 5,
    QVBusinessCardFieldTypeDepartment = 6,
    QVBusinessCardFieldTypeURL = 7,
    QVBusinessCardFieldTypeAddress = 8,
    QVBusinessCardFieldTypeFax = 9,
    QVBusinessCardFieldTypeMobile = 10,
    QVBusinessCardFieldTypeTwitter = 11,
    QVBusinessCardFieldTypeSkype = 12,
};

/// One recognised item of a card. Not synchronised.
class QV_EXPORT QVBusinessCardField : public qv::Object {
  public:
    QVBusinessCardField() = default;

    /// `initWithType:label:name:text:frame:weight:orient:` Stores the values as they are; the text is not normalised.
    static std::shared_ptr<QVBusinessCardField> initWithType(std::int32_t type, std::int32_t label, QVString name,
                                                             QVString text, qv::Rect frame, std::int64_t weight,
                                                             std::int64_t orient);

    std::int32_t type() const { return mType; }
    void setType(std::int32_t type) { mType = type; }
    std::int32_t label() const { return mLabel; }
    void setLabel(std::int32_t label) { mLabel = label; }
    const QVString& name() const { return mName; }
    void setName(QVString name) { mName = std::move(name); }
    const QVString& text() const { return mText; }
    /// Normalises names and e-mail addresses before they are stored.
    void setText(const QVString& text);
    const qv::Rect& frame() const { return mFrame; }
    void setFrame(const qv::Rect& frame) { mFrame = frame; }
    std::int64_t weight() const { return mWeight; }
    void setWeight(std::int64_t weight) { mWeight = weight; }
    std::int64_t orient() const { return mOrient; }
    void setOrient(std::int64_t orient) { mOrient = orient; }

    bool canPerformNormalizationAndAutocorrection() const;
    /// `performNormalizationAndAutocorrectionForText:type:`
    QVString performNormalizationAndAutocorrectionForText(const QVString& text, std::int32_t type) const;

    std::string description() const override;

  private:
    std::int32_t mType = QVBusinessCardFieldTypeUnknown;
    std::int32_t mLabel = 0;
    QVString mName;
    QVString mText;
    qv::Rect mFrame;
    std::int64_t mWeight = 0;
    std::int64_t mOrient = 0;
};
