#include "Output/JSON.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <limits>
#include <string>

namespace {

TEST(JSONText, NeverFailsOnOddStringsAndNumbers) {
    EXPECT_EQ(qvhost::JSON::text("a\xFF"), "\"a\xEF\xBF\xBD\"\n");
    EXPECT_EQ(qvhost::JSON::text(std::string("\x1b\0", 2)), "\"\\u001b\\u0000\"\n");
    EXPECT_EQ(qvhost::JSON::text(std::numeric_limits<double>::infinity()), "null\n");
    EXPECT_EQ(qvhost::JSON::text(std::numeric_limits<double>::quiet_NaN()), "null\n");
}

}  // namespace
