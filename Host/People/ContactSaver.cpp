#include "People/ContactSaver.h"

#include "People/RecordProfile.h"
#include "People/SavingTurn.h"

#include <chrono>
#include <utility>

namespace qvhost {
namespace {

/// Longer than any address book tries.
constexpr std::chrono::minutes kLongestWait{10};

std::string ambiguous(const AddressBookPlace& place) {
    return "Which contact in " + place.name + " the card belongs to cannot be told";
}

std::string unknown(const AddressBookPlace& place) {
    return "Whether the contact is in " + place.name + " already cannot be told as long as that cannot be read";
}

/// A record that is not there is made under the UID that it was looked for by.
void nameRecord(QVSocialProfile& profile, const std::string& UID) {
    profile.setProfileType(profile.profileType() | QVSocialProfileSourceAddressBook);
    profile.setAddressBookUID(UID);
}

}  // namespace

ContactSaver::ContactSaver(MainLoop& loop, const AddressBookPlace& place) : mLoop(loop), mPlace(place) {
    QVAddressBookController::sharedController()->setAddressBook(place.book);
}

SaveOutcome ContactSaver::save(const std::shared_ptr<QVVeltoContact>& contact,
                               const std::shared_ptr<QVSocialProfile>& found, const QVString& newUID) {
    const SavingTurn turn(mPlace.files);
    SaveOutcome outcome;
    std::shared_ptr<QVSocialProfile> base = found;
    if (!isRecord(found)) {
        ContactMatch match = ContactMatcher(mPlace).match(Person::of(*contact));
        outcome.remarks = std::move(match.remarks);
        if (match.outcome == ContactMatch::Outcome::Ambiguous) outcome.failure = ambiguous(mPlace);
        if (match.outcome == ContactMatch::Outcome::Unknown) outcome.failure = unknown(mPlace);
        if (outcome.failure) return outcome;
        outcome.byName = match.outcome == ContactMatch::Outcome::ByName;
        if (match.record) base = std::move(match.record);
    }
    if (isRecord(base)) outcome.updated = nameInWords(Person::of(*base));
    const auto profile = profileForSaving(*contact, base);
    if (!isRecord(base) && newUID) nameRecord(*profile, *newUID);
    return saveRecord(contact, profile, std::move(outcome));
}

SaveOutcome ContactSaver::saveRecord(const std::shared_ptr<QVVeltoContact>& contact,
                                     const std::shared_ptr<QVSocialProfile>& profile, SaveOutcome outcome) {
    // Shared with the handler, which may still come when nobody waits any longer.
    const auto result = std::make_shared<std::optional<QVAddressBookSaveResult>>();
    QVVeltoContact().saveToContactsWithVeltoContact(
        contact, profile, [result](const QVAddressBookSaveResult& reported) { *result = reported; });
    if (!mLoop.runUntil([&result] { return result->has_value(); }, kLongestWait)) {
        outcome.failure = "There was no answer from " + mPlace.name;
    } else if ((*result)->error) {
        outcome.failure = descriptionOf(*(*result)->error);
    } else {
        outcome.outcome = (*result)->outcome;
        outcome.UID = (*result)->UID;
        outcome.where = mPlace.locate(outcome.UID.value_or(""));
    }
    return outcome;
}

}  // namespace qvhost
