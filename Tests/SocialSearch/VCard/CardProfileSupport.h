#pragma once

#include "QVSocialSearch/QVVCardProfile.h"
#include "SocialSearch/SocialFixtures.h"
#include "Support/TestImages.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

/// What the tests of cards and profiles share.
namespace cardprofile {

using social::emailsOf;
using social::Entries;
using social::handlesOf;
using social::phonesOf;

inline QVVCard readCard(const std::string& bytes) {
    std::string problem;
    auto card = QVVCard::cardWithBytes(bytes, &problem);
    EXPECT_TRUE(card) << problem << "\n" << bytes;
    return card ? *std::move(card) : QVVCard::emptyCard();
}

inline std::string cardWithLines(const std::string& version, const std::string& lines) {
    return "BEGIN:VCARD\r\nVERSION:" + version + "\r\n" + lines + "END:VCARD\r\n";
}

inline std::shared_ptr<QVSocialProfile> profileOf(const std::string& version, const std::string& lines) {
    return qv::profileOfCard(readCard(cardWithLines(version, lines)), "the-uid");
}

inline void addEmail(QVSocialProfile& profile, QVString label, const std::string& address) {
    auto set = std::make_shared<qv::OrderedSet<std::shared_ptr<const QVEmail>>>();
    set->insert(QVEmail::emailWithLabel(std::move(label), address));
    profile.mergeWithEmailSet(set);
}

inline void addPhone(QVSocialProfile& profile, QVString label, const std::string& number) {
    auto set = std::make_shared<qv::OrderedSet<std::shared_ptr<const QVPhoneNumber>>>();
    set->insert(QVPhoneNumber::phoneNumberWithNumber(number, std::move(label)));
    profile.mergeWithPhoneNumberSet(set);
}

inline void addHandle(QVSocialProfile& profile, const std::string& handle) {
    auto set = std::make_shared<qv::OrderedSet<std::string>>();
    set->insert(handle);
    profile.mergeWithTwitterSet(set);
}

inline Entries addressesOf(const QVSocialProfile& profile) {
    Entries entries;
    for (const auto& address : profile.addressList())
        entries.emplace_back(address->label(), address->formattedAddress());
    return entries;
}

inline testsupport::Pixels picture(int width, int height) {
    return testsupport::Pixels(width, height);
}

}  // namespace cardprofile
