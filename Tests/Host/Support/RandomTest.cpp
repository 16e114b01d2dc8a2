#include "Support/Random.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace {

using testing::MatchesRegex;

TEST(Random, UUIDsAreVersionFourAndNeverTheSame) {
    std::set<std::string> seen;
    for (int i = 0; i < 1000; ++i) {
        const std::string uuid = qvhost::Random::uuid();
        EXPECT_THAT(uuid, MatchesRegex("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}"));
        EXPECT_TRUE(seen.insert(uuid).second);
    }
}

TEST(Random, TokensAre256BitsAndNeverTheSame) {
    std::set<std::string> seen;
    for (int i = 0; i < 1000; ++i) {
        const std::string token = qvhost::Random::token();
        EXPECT_THAT(token, MatchesRegex("[0-9a-f]{64}"));
        EXPECT_TRUE(seen.insert(token).second);
    }
}

}  // namespace
