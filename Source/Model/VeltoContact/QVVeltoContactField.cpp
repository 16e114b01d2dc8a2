#include "QVCardScan/QVVeltoContactField.h"

namespace {

std::size_t hashOf(const QVString& string) {
    return string ? std::hash<std::string>{}(*string) : 0;
}

}  // namespace

std::shared_ptr<QVVeltoContactField> QVVeltoContactField::initWithLabel(QVString label, QVString andText) {
    auto field = std::make_shared<QVVeltoContactField>();
    field->mLabel = std::move(label);
    field->mText = std::move(andText);
    return field;
}

bool QVVeltoContactField::isEqual(const std::shared_ptr<const qv::Object>& other) const {
    if (other.get() == this) return true;
    const auto* field = dynamic_cast<const QVVeltoContactField*>(other.get());
    return field != nullptr && field->mLabel == mLabel && field->mText == mText;
}

std::size_t QVVeltoContactField::hash() const {
    return hashOf(mLabel) ^ hashOf(mText);
}
