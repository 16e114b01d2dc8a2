#include "QVPlatform/Object.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

class Thing : public qv::Object {};

TEST(Object, IsEqualToItselfOnly) {
    const auto one = std::make_shared<Thing>();
    const auto other = std::make_shared<Thing>();
    EXPECT_TRUE(one->isEqual(one));
    EXPECT_FALSE(one->isEqual(other));
    EXPECT_FALSE(one->isEqual(nullptr));
    EXPECT_EQ(one->hash(), one->hash());
}

TEST(Object, DescribesItsClass) {
    EXPECT_NE(Thing().description().find("Thing"), std::string::npos);
}

}  // namespace
