#pragma once

#include "QVCardScan/QVVeltoContact.h"
#include "QVSocialSearch/QVSocialProfile.h"

#include <memory>
#include <string>
#include <vector>

namespace qvhost {

/// What tells one person from another.
struct Person {
    QVString fullName;
    QVString company;
    std::vector<std::string> emails;

    static Person of(const QVVeltoContact& contact);
    static Person of(const QVSocialProfile& profile);

    /// Whether both have a name and it is the same, white space apart.
    bool hasNameOf(const Person& other) const;
    /// Whether both have a company and it is the same, white space and case of letters apart.
    bool hasCompanyOf(const Person& other) const;
};

/// The person as a message calls them: the name, else the first e-mail address, else "somebody without a name".
std::string nameInWords(const Person& person);

/// A record of the address book as a contact of the framework. Entries without a label get a card's.
std::shared_ptr<QVVeltoContact> contactOfRecord(const QVSocialProfile& record);

}  // namespace qvhost
