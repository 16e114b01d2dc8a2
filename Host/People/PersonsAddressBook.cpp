#include "People/PersonsAddressBook.h"

#include "People/OnePerson.h"

#include <utility>

namespace qvhost {

PersonsAddressBook::PersonsAddressBook(std::shared_ptr<QVAddressBook> book, Person person)
    : mBook(std::move(book)), mPerson(std::move(person)) {
}

QVAddressBookSaveResult PersonsAddressBook::saveProfile(const QVSocialProfile& profile) {
    return mBook->saveProfile(profile);
}

QVAddressBook::Profiles PersonsAddressBook::profiles(std::optional<qv::Error>* error) {
    return mBook->profiles(error);
}

QVAddressBook::Profiles PersonsAddressBook::profilesWithEmailAddress(const std::string& address,
                                                                     std::optional<qv::Error>* error) {
    Profiles records = mBook->profilesWithEmailAddress(address, error);
    std::erase_if(
        records, [&](const auto& record) { return !record || !canBeOnePerson(mPerson, Person::of(*record), address); });
    return records;
}

std::shared_ptr<QVSocialProfile> PersonsAddressBook::profileWithUID(const std::string& UID,
                                                                    std::optional<qv::Error>* error) {
    return mBook->profileWithUID(UID, error);
}

}  // namespace qvhost
