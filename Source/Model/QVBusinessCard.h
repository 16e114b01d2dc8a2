#pragma once

#include "QVCardScan/QVBusinessCardField.h"
#include "QVCardScan/QVCardScanTypes.h"
#include "QVPlatform/Export.h"
#include "QVPlatform/Object.h"

#include <cstdint>

/// The recognised content of one card image. Fields and images are shared references, null when absent; absent entries
/// of `fields` are passed over. Not synchronised: one thread at a time while it changes.
class QV_EXPORT QVBusinessCard : public qv::Object {
  public:
    QVBusinessCard() = default;

    /// `initWithLanguage:fields:frontImage:backImage:` Stores the four values.
    static std::shared_ptr<QVBusinessCard> initWithLanguage(QVString language, QVFieldArray fields,
                                                            std::shared_ptr<qv::Image> frontImage,
                                                            std::shared_ptr<qv::Image> backImage);

    /// The recognition language as the server reported it.
    const QVString& language() const { return mLanguage; }
    void setLanguage(QVString language) { mLanguage = std::move(language); }
    /// The card's size in the server's units.
    std::int64_t cardWidth() const { return mCardWidth; }
    void setCardWidth(std::int64_t cardWidth) { mCardWidth = cardWidth; }
    /// The card's height in the server's units.
    std::int64_t cardHeight() const { return mCardHeight; }
    void setCardHeight(std::int64_t cardHeight) { mCardHeight = cardHeight; }
    /// The recognised fields in the order of the document; null for a card whose result was cut off.
    const QVFieldArray& fields() const { return mFields; }
    void setFields(QVFieldArray fields) { mFields = std::move(fields); }
    /// The photographs as the host gave them; null when absent.
    const std::shared_ptr<qv::Image>& frontImage() const { return mFrontImage; }
    void setFrontImage(std::shared_ptr<qv::Image> frontImage) { mFrontImage = std::move(frontImage); }
    /// As `frontImage`, of the other side.
    const std::shared_ptr<qv::Image>& backImage() const { return mBackImage; }
    void setBackImage(std::shared_ptr<qv::Image> backImage) { mBackImage = std::move(backImage); }

    /// The orientation of the last field; 0 without fields.
    std::int64_t rotationByDegrees() const;
    /// 0 to 2: one for a name that is not empty, one for a title. Always computed; what is set is ignored.
    std::int64_t score() const;
    void setScore(std::int64_t score) { mScore = score; }
    /// Whether any field is a title. Always computed; what is set is ignored.
    bool hasTitleField() const;
    void setHasTitleField(bool hasTitleField) { mHasTitleField = hasTitleField; }

    /// The text of the first of the name fields with the highest weight above 0; absent when there is none.
    QVString fullName() const;
    /// The texts of all e-mail fields in their order; null, never empty, when there is none.
    QVStringArray emails() const;
    /// The same for fields of the type phone; fax and mobile numbers do not count.
    QVStringArray phoneNumbers() const;

    /// `mergeWithCard:` Appends those fields of `card` that this card did not have before, in a new list of its own.
    /// `card` stays as it is; an absent card changes nothing. Afterwards there is a list, if an empty one.
    void mergeWithCard(const std::shared_ptr<QVBusinessCard>& card);
    /// `hasField:` Whether a field of this card has the same type and exactly the same text. An absent text never
    /// matches.
    bool hasField(const std::shared_ptr<QVBusinessCardField>& field) const;

    /// `description` "Business Card" and one line for each field.
    std::string description() const override;

  private:
    QVString mLanguage;
    std::int64_t mCardWidth = 0;
    std::int64_t mCardHeight = 0;
    QVFieldArray mFields;
    std::shared_ptr<qv::Image> mFrontImage;
    std::shared_ptr<qv::Image> mBackImage;
    std::int64_t mScore = 0;
    bool mHasTitleField = false;
};
