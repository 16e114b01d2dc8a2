#include "QVPlatform/HTTPDate.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(HTTPDate, ReadsTheThreeFormsOfADate) {
    // The examples of RFC 9110, 5.6.7.
    constexpr std::chrono::seconds kMoment{784111777};
    for (const char* text :
         {"Sun, 06 Nov 1994 08:49:37 GMT", "Sunday, 06-Nov-94 08:49:37 GMT", "Sun Nov  6 08:49:37 1994"}) {
        const auto date = qv::dateFromHTTPHeader(text);
        ASSERT_TRUE(date) << text;
        EXPECT_EQ(date->time_since_epoch(), kMoment) << text;
    }
}

TEST(HTTPDate, ReachesAsFarAsDatesDo) {
    EXPECT_EQ(qv::dateFromHTTPHeader("Fri, 31 Dec 9999 23:59:59 GMT")->time_since_epoch(),
              std::chrono::seconds(253402300799));
}

TEST(HTTPDate, TakesNothingElseForADate) {
    for (const std::string& text :
         {std::string(), std::string("120"), std::string("soon"), std::string("-1"), std::string("20261231"),
          std::string("Sun, 99 Nov 1994 08:49:37 GMT"), std::string(100000, ':')}) {
        EXPECT_FALSE(qv::dateFromHTTPHeader(text)) << text.substr(0, 40);
    }
}

}  // namespace
