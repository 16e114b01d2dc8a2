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

/// One recognised item of a card: what it is, what it says, where it lies on the card. Positions are in the recognition
/// server's units, the orientation in degrees clockwise. Not synchronised: one thread at a time while it changes.
class QV_EXPORT QVBusinessCardField : public qv::Object {
  public:
    QVBusinessCardField() = default;

    /// `initWithType:label:name:text:frame:weight:orient:` Stores the values as they are; the text is not normalised.
    static std::shared_ptr<QVBusinessCardField> initWithType(std::int32_t type, std::int32_t label, QVString name,
                                                             QVString text, qv::Rect frame, std::int64_t weight,
                                                             std::int64_t orient);

    /// A `QVBusinessCardFieldType`.
    std::int32_t type() const { return mType; }
    void setType(std::int32_t type) { mType = type; }
    /// A secondary code, 0 throughout.
    std::int32_t label() const { return mLabel; }
    void setLabel(std::int32_t label) { mLabel = label; }
    /// The server's word for the kind of field, unchanged; absent when it gave none.
    const QVString& name() const { return mName; }
    void setName(QVString name) { mName = std::move(name); }
    /// What the field says; absent when nothing was recognised.
    const QVString& text() const { return mText; }
    /// `setText:` Repairs names and e-mail addresses before they are stored, absent results included. A text whose
    /// repair leaves the range of a string (`qv::RangeError`) is logged and stored as it is; nothing else is caught.
    void setText(const QVString& text);
    /// Where the field lies on the picture that was sent.
    const qv::Rect& frame() const { return mFrame; }
    void setFrame(const qv::Rect& frame) { mFrame = frame; }
    /// The recogniser's confidence; higher is better, 0 when it gave none.
    std::int64_t weight() const { return mWeight; }
    void setWeight(std::int64_t weight) { mWeight = weight; }
    /// How far the picture is turned, in degrees.
    std::int64_t orient() const { return mOrient; }
    void setOrient(std::int64_t orient) { mOrient = orient; }

    /// Whether this is a name or an e-mail address.
    bool canPerformNormalizationAndAutocorrection() const;
    /// `performNormalizationAndAutocorrectionForText:type:` An absent or empty text as it is, an e-mail address or a
    /// name repaired, absent for every other type. Virtual, so that a host can bring repair rules of its own.
    virtual QVString performNormalizationAndAutocorrectionForText(const QVString& text, std::int32_t type) const;

    /// `description` "Business Card Field: TYPE LABEL NAME TEXT".
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
