#include "People/Person.h"

#include "QVPlatform/Bundle.h"
#include "QVPlatform/Text.h"

#include <sstream>

namespace qvhost {
namespace {

/// The words with one space between them.
std::string words(const QVString& text) {
    std::istringstream stream(text.value_or(""));
    std::string joined;
    for (std::string word; stream >> word;)
        joined.append(joined.empty() ? "" : " ").append(word);
    return joined;
}

bool areSame(const std::string& one, const std::string& other) {
    return !one.empty() && one == other;
}

/// The label that a card's entries have, so that the same entry on both is one.
QVString labelOr(const QVString& label, std::string_view standard) {
    return label && !label->empty() ? label : qv::Bundle::localizedString(standard);
}

QVContactFieldSet emailFieldsOf(const QVSocialProfile& record) {
    auto fields = std::make_shared<qv::OrderedSet<std::shared_ptr<QVVeltoContactField>>>();
    for (const auto& email : record.emailAddresses())
        fields->insert(QVVeltoContactField::initWithLabel(labelOr(email->label(), "Email"), email->address()));
    return fields;
}

QVContactFieldSet phoneFieldsOf(const QVSocialProfile& record) {
    auto fields = std::make_shared<qv::OrderedSet<std::shared_ptr<QVVeltoContactField>>>();
    for (const auto& phone : record.phoneNumbers())
        fields->insert(QVVeltoContactField::initWithLabel(labelOr(phone->type(), "Phone"), phone->number()));
    return fields;
}

std::shared_ptr<qv::Image> pictureOf(const QVSocialProfile& record) {
    if (!record.addressBookAvatarData()) return nullptr;
    auto image = qv::Image::initWithData(*record.addressBookAvatarData());
    return image->isValid() ? image : nullptr;
}

}  // namespace

Person Person::of(const QVVeltoContact& contact) {
    Person person{contact.fullName(), contact.company(), {}};
    if (!contact.emailFields()) return person;
    for (const auto& field : *contact.emailFields()) {
        if (field && !words(field->text()).empty()) person.emails.push_back(*field->text());
    }
    return person;
}

Person Person::of(const QVSocialProfile& profile) {
    Person person{profile.formattedName(), profile.company(), {}};
    for (const auto& email : profile.emailAddresses())
        person.emails.push_back(email->address());
    return person;
}

bool Person::hasNameOf(const Person& other) const {
    return areSame(words(fullName), words(other.fullName));
}

bool Person::hasCompanyOf(const Person& other) const {
    return areSame(qv::Text::lowercased(words(company)), qv::Text::lowercased(words(other.company)));
}

std::string nameInWords(const Person& person) {
    const std::string name = words(person.fullName);
    if (!name.empty()) return "\"" + name + "\"";
    return person.emails.empty() ? "somebody without a name" : "\"" + person.emails.front() + "\"";
}

std::shared_ptr<QVVeltoContact> contactOfRecord(const QVSocialProfile& record) {
    auto contact = std::make_shared<QVVeltoContact>();
    contact->setFullName(record.formattedName());
    contact->setJobTitle(record.jobTitle());
    contact->setCompany(record.company());
    contact->setEmailFields(emailFieldsOf(record));
    contact->setPhoneFields(phoneFieldsOf(record));
    contact->setTwitterHandles(record.twitterAccounts());
    if (!record.addressList().empty()) contact->setAddress(record.addressList().front()->formattedAddress());
    contact->setLinkedInProfileURL(record.profileURLLinkedInPublic());
    contact->setFacebookProfileURL(record.profileURLFacebook());
    contact->setAvatar(pictureOf(record));
    return contact;
}

}  // namespace qvhost
