#pragma once

#include "QVSocialSearch/QVCardDAVAddressBook.h"
#include "SocialSearch/VCardFolderSupport.h"
#include "Support/CapturedLog.h"
#include "Support/FakeCardDAVServer.h"

#include <gtest/gtest.h>

#include <any>
#include <optional>
#include <string>

/// What the tests of the CardDAV address book share.
namespace davtest {

inline constexpr const char* kUser = "ada";
inline constexpr const char* kPassword = "s3cret-pass";
/// "ada:s3cret-pass" as Basic wants it.
inline constexpr const char* kBasic = "Basic YWRhOnMzY3JldC1wYXNz";

inline std::string descriptionOf(const std::optional<qv::Error>& error) {
    if (!error) return "";
    return std::any_cast<std::string>(error->userInfo.at(std::string(qv::kErrorDescriptionKey)));
}

inline std::string card(const std::string& UID, const std::string& lines) {
    return "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:" + UID + "\r\n" + lines + "END:VCARD\r\n";
}

/// A server with credentials, and an address book that has them. Nothing of them may be told to anybody else.
class CardDAVTest : public testing::Test {
  protected:
    CardDAVTest() { change({}); }
    void TearDown() override {
        EXPECT_FALSE(mLog.mentions(kPassword));
        EXPECT_FALSE(mLog.mentions("YWRhOnMzY3JldC1wYXNz"));
    }

    /// Habits, with the credentials that the book has.
    void change(testsupport::CardDAVHabits habits) {
        if (!habits.authorization) habits.authorization = kBasic;
        mServer.setHabits(habits);
    }

    testsupport::CapturedLog mLog;
    testsupport::FakeCardDAVServer mServer;
    QVCardDAVAddressBook mBook{mServer.collection(), {.user = kUser, .password = kPassword, .token = std::nullopt}};
};

}  // namespace davtest
