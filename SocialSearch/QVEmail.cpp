#include "QVSocialSearch/QVEmail.h"

#include "Merging/EntryMeaning.h"
#include "Merging/TextHash.h"

std::shared_ptr<const QVEmail> QVEmail::emailWithLabel(QVString label, QVString address) {
    if (isBlank(address)) return nullptr;
    const std::shared_ptr<QVEmail> email(new QVEmail);
    email->mLabel = std::move(label);
    email->mAddress = *std::move(address);
    return email;
}

bool QVEmail::isEqual(const std::shared_ptr<const qv::Object>& other) const {
    const auto* email = dynamic_cast<const QVEmail*>(other.get());
    return email != nullptr && email->mLabel == mLabel && email->mAddress == mAddress;
}

std::size_t QVEmail::hash() const {
    return hashOfTexts(mLabel, mAddress);
}
