#include "QVCardScan/QVBusinessCardField.h"

#include "QVCardScan/QVCardScanResultFormatter.h"
#include "QVPlatform/Format.h"
#include "QVPlatform/Log.h"
#include "QVPlatform/RangeError.h"

std::shared_ptr<QVBusinessCardField> QVBusinessCardField::initWithType(std::int32_t type, std::int32_t label,
                                                                       QVString name, QVString text, qv::Rect frame,
                                                                       std::int64_t weight, std::int64_t orient) {
    auto field = std::make_shared<QVBusinessCardField>();
    field->mType = type;
    field->mLabel = label;
    field->mName = std::move(name);
    field->mText = std::move(text);
    field->mFrame = frame;
    field->mWeight = weight;
    field->mOrient = orient;
    return field;
}

void QVBusinessCardField::setText(const QVString& text) {
    if (!QVCardScanResultFormatterEnabled || !canPerformNormalizationAndAutocorrection()) {
        mText = text;
        return;
    }
    try {
        mText = performNormalizationAndAutocorrectionForText(text, mType);
    } catch (const qv::RangeError& exception) {
        qv::Log::write("Exception when performing name / email normalization: %@", exception.what());
        mText = text;
    }
}

bool QVBusinessCardField::canPerformNormalizationAndAutocorrection() const {
    return mType == QVBusinessCardFieldTypeName || mType == QVBusinessCardFieldTypeEmail;
}

QVString QVBusinessCardField::performNormalizationAndAutocorrectionForText(const QVString& text,
                                                                           std::int32_t type) const {
    if (!text || text->empty()) return text;
    if (type == QVBusinessCardFieldTypeEmail) return QVCardScanResultFormatter::normalizedEmailForEmail(text);
    if (type == QVBusinessCardFieldTypeName) return QVCardScanResultFormatter::normalizedNameForName(text);
    return std::nullopt;
}

std::string QVBusinessCardField::description() const {
    return qv::format("Business Card Field: %d %d %@ %@", mType, mLabel, mName, mText);
}
