#include "Model/VeltoContact/SocialProfileEntries.h"

namespace {

/// `make` gives null for what a profile does not take.
template <typename Entry, typename Make>
std::shared_ptr<qv::OrderedSet<std::shared_ptr<const Entry>>> entriesOf(const QVContactFieldSet& fields, Make make) {
    auto entries = std::make_shared<qv::OrderedSet<std::shared_ptr<const Entry>>>();
    if (!fields) return entries;
    for (const auto& field : *fields) {
        if (auto entry = field ? make(*field) : nullptr) entries->insert(std::move(entry));
    }
    return entries;
}

}  // namespace

QVEmailSet profileEmailsOf(const QVVeltoContact& contact) {
    return entriesOf<QVEmail>(contact.emailFields(), [](const QVVeltoContactField& field) {
        return QVEmail::emailWithLabel(field.label(), field.text());
    });
}

QVPhoneNumberSet profilePhoneNumbersOf(const QVVeltoContact& contact) {
    return entriesOf<QVPhoneNumber>(contact.phoneFields(), [](const QVVeltoContactField& field) {
        return QVPhoneNumber::phoneNumberWithNumber(field.text(), field.label());
    });
}
