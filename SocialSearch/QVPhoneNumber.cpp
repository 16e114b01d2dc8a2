#include "QVSocialSearch/QVPhoneNumber.h"

#include "Merging/EntryMeaning.h"
#include "Merging/TextHash.h"

std::shared_ptr<const QVPhoneNumber> QVPhoneNumber::phoneNumberWithNumber(QVString number, QVString type) {
    if (isBlank(number)) return nullptr;
    const std::shared_ptr<QVPhoneNumber> phone(new QVPhoneNumber);
    phone->mNumber = *std::move(number);
    phone->mType = std::move(type);
    return phone;
}

bool QVPhoneNumber::isEqual(const std::shared_ptr<const qv::Object>& other) const {
    const auto* phone = dynamic_cast<const QVPhoneNumber*>(other.get());
    return phone != nullptr && phone->mNumber == mNumber && phone->mType == mType;
}

std::size_t QVPhoneNumber::hash() const {
    return hashOfTexts(mNumber, mType);
}
