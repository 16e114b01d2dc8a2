#pragma once

#include "QVPlatform/Data.h"
#include "QVSocialSearch/QVSocialProfile.h"

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Short ways to make profiles for tests, and to see what is in them.
namespace social {

/// A label and a text.
using Entry = std::pair<QVString, std::string>;
using Entries = std::vector<Entry>;

inline QVEmailSet emails(const Entries& entries) {
    auto set = std::make_shared<qv::OrderedSet<std::shared_ptr<const QVEmail>>>();
    for (const auto& [label, address] : entries)
        set->insert(QVEmail::emailWithLabel(label, address));
    return set;
}

inline QVPhoneNumberSet phones(const Entries& entries) {
    auto set = std::make_shared<qv::OrderedSet<std::shared_ptr<const QVPhoneNumber>>>();
    for (const auto& [label, number] : entries)
        set->insert(QVPhoneNumber::phoneNumberWithNumber(number, label));
    return set;
}

inline QVHandleSet handles(std::initializer_list<std::string> texts) {
    return std::make_shared<qv::OrderedSet<std::string>>(texts);
}

inline Entries emailsOf(const QVSocialProfile& profile) {
    Entries entries;
    for (const auto& email : profile.emailAddresses())
        entries.emplace_back(email->label(), email->address());
    return entries;
}

inline Entries phonesOf(const QVSocialProfile& profile) {
    Entries entries;
    for (const auto& phone : profile.phoneNumbers())
        entries.emplace_back(phone->type(), phone->number());
    return entries;
}

inline std::vector<std::string> handlesOf(const QVSocialProfile& profile) {
    const auto set = profile.twitterAccounts();
    return {set->begin(), set->end()};
}

inline std::shared_ptr<QVSocialProfile> profile(QVString formattedName = std::nullopt, std::int32_t type = 0) {
    auto made = std::make_shared<QVSocialProfile>();
    made->setFormattedName(std::move(formattedName));
    made->setProfileType(type);
    return made;
}

inline qv::Data bytes(std::string_view text) {
    return {text.begin(), text.end()};
}

}  // namespace social
