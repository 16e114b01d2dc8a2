#pragma once

#include "QVCardScan/QVBusinessCardField.h"
#include "QVCardScan/QVCardScanTypes.h"
#include "QVPlatform/Export.h"
#include "QVPlatform/Object.h"

#include <cstdint>

/// The recognised content of one card image. Not synchronised: one thread at a time while it changes.
class QV_EXPORT QVBusinessCard : public qv::Object {
  public:
    QVBusinessCard() = default;

    /// `initWithLanguage:fields:frontImage:backImage:`
    static std::shared_ptr<QVBusinessCard> initWithLanguage(QVString language, QVFieldArray fields,
                                                            std::shared_ptr<qv::Image> frontImage,
                                                            std::shared_ptr<qv::Image> backImage);

    const QVString& language() const { return mLanguage; }
    void setLanguage(QVString language) { mLanguage = std::move(language); }
    std::int64_t cardWidth() const { return mCardWidth; }
    void setCardWidth(std::int64_t cardWidth) { mCardWidth = cardWidth; }
    std::int64_t cardHeight() const { return mCardHeight; }
    void setCardHeight(std::int64_t cardHeight) { mCardHeight = cardHeight; }
    const QVFieldArray& fields() const { return mFields; }
    void setFields(QVFieldArray fields) { mFields = std::move(fields); }
    const std::shared_ptr<qv::Image>& frontImage() const { return mFrontImage; }
    void setFrontImage(std::shared_ptr<qv::Image> frontImage) { mFrontImage = std::move(frontImage); }
    const std::shared_ptr<qv::Image>& backImage() const { return mBackImage; }
    void setBackImage(std::shared_ptr<qv::Image> backImage) { mBackImage = std::move(backImage); }

    std::int64_t rotationByDegrees() const;
    std::int64_t score() const;
    void setScore(std::int64_t score) { mScore = score; }
    bool hasTitleField() const;
    void setHasTitleField(bool hasTitleField) { mHasTitleField = hasTitleField; }

    QVString fullName() const;
    QVStringArray emails() const;
    QVStringArray phoneNumbers() const;

    /// `mergeWithCard:`
    void mergeWithCard(const std::shared_ptr<QVBusinessCard>& card);
    /// `hasField:`
    bool hasField(const std::shared_ptr<QVBusinessCardField>& field) const;

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
