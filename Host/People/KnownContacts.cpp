#include "People/KnownContacts.h"

#include "QVCardScan/QVVeltoNoteGenerator.h"
#include "QVPlatform/Text.h"

#include <algorithm>
#include <utility>

namespace qvhost {
namespace {

/// The card has these already, perhaps under another label or in another case of letters, which would make two of one.
void removeEmails(QVVeltoContact& contact, const std::vector<std::string>& emails) {
    auto others = std::make_shared<qv::OrderedSet<std::shared_ptr<QVVeltoContactField>>>();
    for (const auto& field : *contact.emailFields()) {
        const std::string address = qv::Text::lowercased(field->text().value_or(""));
        const bool isKnown = std::any_of(emails.begin(), emails.end(), [&](const std::string& email) {
            return qv::Text::lowercased(email) == address;
        });
        if (!isKnown) others->insert(field);
    }
    contact.setEmailFields(others);
}

}  // namespace

std::shared_ptr<QVVeltoContact> KnownContacts::contactMatchingFullName(const QVString& fullName,
                                                                       const QVString& /*firstName*/,
                                                                       const QVString& /*lastName*/,
                                                                       const QVString& email,
                                                                       const QVString& /*phone*/) {
    // A card that is sent once more is asked for once more.
    mMerged.reset();
    mRemarks.clear();
    return email ? contactFor({fullName, std::nullopt, {*email}}) : nullptr;
}

void KnownContacts::completeByName(QVCardProcessingResponse& response) {
    const auto contact = response.contact();
    const Person person = contact ? Person::of(*contact) : Person();
    if (!contact || !person.emails.empty()) return;
    const auto known = contactFor(person);
    if (!known) return;
    contact->mergeContactInfoFromContact(known);
    response.setQvmlContent(QVVeltoNoteGenerator().noteFromObject(contact));
    if (contact->avatar())
        response.setAvatars(std::make_shared<std::vector<std::shared_ptr<qv::Image>>>(1, contact->avatar()));
}

std::shared_ptr<QVVeltoContact> KnownContacts::contactFor(const Person& person) {
    ContactMatch match = ContactMatcher(mPlace).match(person);
    mRemarks = std::move(match.remarks);
    if (!match.record) return nullptr;
    const QVString UID = match.record->addressBookUID();
    mMerged = MergedContact{UID, Person::of(*match.record), mPlace.locate(UID.value_or("")),
                            match.outcome == ContactMatch::Outcome::ByEmail};
    auto contact = contactOfRecord(*match.record);
    removeEmails(*contact, person.emails);
    return contact;
}

}  // namespace qvhost
