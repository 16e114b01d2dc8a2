#include "QVCardScan/QVSocialSearchResult.h"

#include <gtest/gtest.h>

namespace {

qv::Notification notification(qv::Dictionary userInfo) {
    return {.name = "QVSocialSearchFinishedNotification", .object = {}, .userInfo = std::move(userInfo)};
}

TEST(QVSocialSearchResult, ReadsATimeOut) {
    const auto contact = std::make_shared<QVVeltoContact>();
    const auto result = QVSocialSearchResult::fromNotification(
        notification({{"QVSocialSearchRequestIDKey", std::string("note-1")},
                      {"QVSocialSearchResultTypeKey", QVSocialSearchResultTimedOut},
                      {"QVSocialSearchBaseVeltoContactKey", contact}}));
    ASSERT_TRUE(result);
    EXPECT_EQ(result->requestID, "note-1");
    EXPECT_EQ(result->resultType, QVSocialSearchResultTimedOut);
    EXPECT_EQ(result->baseVeltoContact, contact);
    EXPECT_EQ(result->socialProfile, nullptr);
    EXPECT_EQ(result->newQVMLContent, std::nullopt);
    EXPECT_EQ(result->newImageResources, nullptr);
}

TEST(QVSocialSearchResult, IsNothingForWhatIsNoResult) {
    const qv::Dictionary whole = {{"QVSocialSearchRequestIDKey", std::string("note-1")},
                                  {"QVSocialSearchResultTypeKey", QVSocialSearchResultNotFound}};
    EXPECT_TRUE(QVSocialSearchResult::fromNotification(notification(whole)));
    qv::Notification other = notification(whole);
    other.name = "Other";
    EXPECT_FALSE(QVSocialSearchResult::fromNotification(other));
    qv::Dictionary part = whole;
    part.erase("QVSocialSearchRequestIDKey");
    EXPECT_FALSE(QVSocialSearchResult::fromNotification(notification(part)));
    part = whole;
    part.erase("QVSocialSearchResultTypeKey");
    EXPECT_FALSE(QVSocialSearchResult::fromNotification(notification(part)));
    part = whole;
    part["QVSocialSearchRequestIDKey"] = 7;
    EXPECT_FALSE(QVSocialSearchResult::fromNotification(notification(part)));
}

TEST(QVSocialSearchResult, LeavesOutValuesOfAnotherKind) {
    const auto result = QVSocialSearchResult::fromNotification(
        notification({{"QVSocialSearchRequestIDKey", std::string("note-1")},
                      {"QVSocialSearchResultTypeKey", QVSocialSearchResultLinkedIn},
                      {"QVSocialSearchNewQVMLContentKey", 7},
                      {"QVSocialSearchSocialProfileKey", std::string("profile")}}));
    ASSERT_TRUE(result);
    EXPECT_EQ(result->newQVMLContent, std::nullopt);
    EXPECT_EQ(result->socialProfile, nullptr);
}

}  // namespace
