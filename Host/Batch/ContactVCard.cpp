#include "Batch/ContactVCard.h"

#include "People/RecordProfile.h"
#include "QVSocialSearch/QVVCardProfile.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace qvhost {
namespace {

template <typename Entry, typename Make>
std::shared_ptr<qv::OrderedSet<std::shared_ptr<const Entry>>> entriesOf(const QVContactFieldSet& fields, Make make) {
    auto entries = std::make_shared<qv::OrderedSet<std::shared_ptr<const Entry>>>();
    if (!fields) return entries;
    for (const auto& field : *fields) {
        if (auto entry = field ? make(*field) : nullptr) entries->insert(std::move(entry));
    }
    return entries;
}

std::shared_ptr<QVSocialProfile> profileOf(const QVVeltoContact& contact) {
    auto profile = profileForSaving(contact, nullptr);
    profile->mergeWithEmailSet(entriesOf<QVEmail>(contact.emailFields(), [](const QVVeltoContactField& field) {
        return QVEmail::emailWithLabel(field.label(), field.text());
    }));
    profile->mergeWithPhoneNumberSet(
        entriesOf<QVPhoneNumber>(contact.phoneFields(), [](const QVVeltoContactField& field) {
            return QVPhoneNumber::phoneNumberWithNumber(field.text(), field.label());
        }));
    profile->mergeWithTwitterSet(contact.twitterHandles());
    return profile;
}

/// A value that goes into the card as it is must not end its line.
bool isPlain(const std::string& address) {
    return !address.empty() &&
           std::none_of(address.begin(), address.end(), [](char c) { return static_cast<unsigned char>(c) <= ' '; });
}

}  // namespace

std::string contactVCard(const QVVeltoContact& contact, const std::string& UID) {
    QVVCard card = QVVCard::emptyCard();
    qv::updateCard(card, *profileOf(contact), UID);
    if (contact.URL() && isPlain(*contact.URL()))
        card.addProperty(QVVCardProperty::withValue(card.version(), "URL", *contact.URL()));
    return card.bytes();
}

}  // namespace qvhost
