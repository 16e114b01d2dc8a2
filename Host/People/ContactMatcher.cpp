#include "People/ContactMatcher.h"

#include "People/OnePerson.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace qvhost {
namespace {

using Profiles = QVAddressBook::Profiles;

bool holdsRecord(const Profiles& records, const QVSocialProfile& wanted) {
    return std::any_of(records.begin(), records.end(),
                       [&](const auto& record) { return record->addressBookUID() == wanted.addressBookUID(); });
}

Profiles namesakesAmong(const Profiles& records, const Person& person) {
    Profiles namesakes;
    std::copy_if(records.begin(), records.end(), std::back_inserter(namesakes),
                 [&](const auto& record) { return person.hasNameOf(Person::of(*record)); });
    return namesakes;
}

std::string names(const Profiles& records) {
    constexpr std::size_t kTold = 5;
    std::string list;
    for (std::size_t i = 0; i < std::min(records.size(), kTold); ++i)
        list.append(i == 0 ? "" : ", ").append(nameInWords(Person::of(*records[i])));
    return records.size() > kTold ? list + " and " + std::to_string(records.size() - kTold) + " more" : list;
}

}  // namespace

ContactMatch ContactMatcher::match(const Person& person) {
    mRemarks.clear();
    mIsUnreadable = false;
    return person.emails.empty() ? matchByName(person) : matchByEmail(person);
}

ContactMatch ContactMatcher::matchByEmail(const Person& person) {
    Profiles others;
    const Profiles records = profilesWithAddressOf(person, others);
    if (records.empty() && !others.empty()) mRemarks.push_back(sharedAddress(others));
    if (records.empty()) return notFound(ContactMatch::Outcome::Nobody);
    if (records.size() == 1) return found(ContactMatch::Outcome::ByEmail, records.front());
    const Profiles namesakes = namesakesAmong(records, person);
    if (namesakes.size() == 1) return found(ContactMatch::Outcome::ByEmail, namesakes.front());
    const std::string several = std::to_string(records.size()) + " contacts in " + mPlace.name +
                                " have an e-mail address of the card: " + names(records) + ". ";
    mRemarks.push_back(several + (namesakes.empty() ? "None of them has the card's name, and none is merged with it."
                                                    : "Which of them is meant cannot be told; none is merged with it. "
                                                      "Join those that are one person, then scan again."));
    return notFound(namesakes.empty() ? ContactMatch::Outcome::Nobody : ContactMatch::Outcome::Ambiguous);
}

ContactMatch ContactMatcher::matchByName(const Person& person) {
    std::optional<qv::Error> error;
    const Profiles namesakes = namesakesAmong(mPlace.book->profiles(&error), person);
    note(error);
    if (namesakes.size() == 1 && person.hasCompanyOf(Person::of(*namesakes.front())))
        return found(ContactMatch::Outcome::ByName, namesakes.front());
    if (namesakes.size() == 1) {
        mRemarks.push_back("There is a contact " + names(namesakes) + " in " + mPlace.name +
                           ", but the card has no e-mail address and not the same company: they are not merged.");
    } else if (!namesakes.empty()) {
        mRemarks.push_back(std::to_string(namesakes.size()) + " contacts in " + mPlace.name + " are called " +
                           nameInWords(person) + ", and the card has no e-mail address: none is merged with it.");
    }
    return notFound(ContactMatch::Outcome::Nobody);
}

Profiles ContactMatcher::profilesWithAddressOf(const Person& person, Profiles& others) {
    Profiles records;
    for (const std::string& email : person.emails) {
        std::optional<qv::Error> error;
        for (auto& record : mPlace.book->profilesWithEmailAddress(email, &error)) {
            if (!record) continue;
            Profiles& list = canBeOnePerson(person, Person::of(*record), email) ? records : others;
            if (!holdsRecord(list, *record)) list.push_back(std::move(record));
        }
        note(error);
    }
    return records;
}

std::string ContactMatcher::sharedAddress(const Profiles& others) const {
    return names(others) + " in " + mPlace.name + (others.size() == 1 ? " has" : " have") +
           " an e-mail address of the card, but another name: they are not merged.";
}

ContactMatch ContactMatcher::found(ContactMatch::Outcome outcome, std::shared_ptr<QVSocialProfile> record) {
    return {outcome, std::move(record), std::move(mRemarks)};
}

ContactMatch ContactMatcher::notFound(ContactMatch::Outcome outcome) {
    return {mIsUnreadable ? ContactMatch::Outcome::Unknown : outcome, nullptr, std::move(mRemarks)};
}

void ContactMatcher::note(const std::optional<qv::Error>& error) {
    if (!error) return;
    // A broken card is somebody else's; one that cannot be opened may be the one that is looked for.
    mIsUnreadable = mIsUnreadable || error->code != QVAddressBookErrorBrokenRecord;
    std::string remark = "Not everything in " + mPlace.name + " could be read: " + descriptionOf(*error) + ".";
    if (std::find(mRemarks.begin(), mRemarks.end(), remark) == mRemarks.end()) mRemarks.push_back(std::move(remark));
}

}  // namespace qvhost
