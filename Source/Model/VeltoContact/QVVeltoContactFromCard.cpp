#include "QVCardScan/QVVeltoContact.h"
#include "QVPlatform/Bundle.h"
#include "QVPlatform/Text.h"

namespace {

using FieldSet = qv::OrderedSet<std::shared_ptr<QVVeltoContactField>>;

/// An entry with the field's own name as its label, or else the host's word for the kind.
std::shared_ptr<QVVeltoContactField> entry(const QVBusinessCardField& field, std::string_view kind) {
    std::string label = qv::Text::capitalized(field.name().value_or(""));
    if (label.empty()) label = qv::Bundle::localizedString(kind);
    return QVVeltoContactField::initWithLabel(std::move(label), field.text());
}

/// Puts one field where it belongs. The last one of a kind wins, names included: a later name replaces the one that
/// the card itself prefers.
void take(const QVBusinessCardField& field, QVVeltoContact& contact) {
    switch (field.type()) {
        case QVBusinessCardFieldTypeName:
            return contact.setFullName(field.text());
        case QVBusinessCardFieldTypeEmail:
            contact.emailFields()->insert(entry(field, "Email"));
            return;
        case QVBusinessCardFieldTypePhone:
        case QVBusinessCardFieldTypeFax:
        case QVBusinessCardFieldTypeMobile:
            contact.phoneFields()->insert(entry(field, "Phone"));
            return;
        case QVBusinessCardFieldTypeTitle:
            return contact.setJobTitle(field.text());
        case QVBusinessCardFieldTypeCompany:
            return contact.setCompany(field.text());
        case QVBusinessCardFieldTypeURL:
            return contact.setURL(field.text());
        case QVBusinessCardFieldTypeAddress:
            return contact.setAddress(field.text());
        default:
            return;  // a contact has no place for the other kinds
    }
}

QVImageSet imagesOf(const QVBusinessCard& card) {
    auto images = std::make_shared<qv::OrderedSet<std::shared_ptr<qv::Image>>>();
    if (card.frontImage()) images->insert(card.frontImage());
    if (card.backImage()) images->insert(card.backImage());
    return images;
}

}  // namespace

std::shared_ptr<QVVeltoContact> QVVeltoContact::initWithCard(const std::shared_ptr<QVBusinessCard>& card) {
    auto contact = std::make_shared<QVVeltoContact>();
    contact->mEmailFields = std::make_shared<FieldSet>();
    contact->mPhoneFields = std::make_shared<FieldSet>();
    contact->mResources = imagesOf(card ? *card : QVBusinessCard());
    if (!card) return contact;
    contact->mFullName = card->fullName();
    if (!card->fields()) return contact;
    for (const auto& field : *card->fields()) {
        if (field && field->text()) take(*field, *contact);
    }
    return contact;
}
