#include "QVSocialSearch/QVPostalAddress.h"

#include "Merging/EntryMeaning.h"
#include "Merging/TextHash.h"

std::shared_ptr<const QVPostalAddress> QVPostalAddress::addressWithLabel(QVString label, QVString formattedAddress) {
    if (isBlank(formattedAddress)) return nullptr;
    const std::shared_ptr<QVPostalAddress> address(new QVPostalAddress);
    address->mLabel = std::move(label);
    address->mFormattedAddress = *std::move(formattedAddress);
    return address;
}

bool QVPostalAddress::isEqual(const std::shared_ptr<const qv::Object>& other) const {
    const auto* address = dynamic_cast<const QVPostalAddress*>(other.get());
    return address != nullptr && address->mLabel == mLabel && address->mFormattedAddress == mFormattedAddress;
}

std::size_t QVPostalAddress::hash() const {
    return hashOfTexts(mLabel, mFormattedAddress);
}
