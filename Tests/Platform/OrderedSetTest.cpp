#include "QVPlatform/OrderedSet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

using qv::OrderedSet;
using testing::ElementsAre;

namespace {

struct Named {
    explicit Named(std::string text) : name(std::move(text)) {}
    std::size_t hash() const { return std::hash<std::string>{}(name); }
    bool isEqual(const std::shared_ptr<Named>& other) const { return other && other->name == name; }
    std::string name;
};

struct Plain {
    int value = 0;
};

std::shared_ptr<Named> named(const char* text) {
    return std::make_shared<Named>(text);
}

TEST(OrderedSet, KeepsTheOrderOfArrival) {
    OrderedSet<std::string> set{"c", "a", "b", "a"};
    EXPECT_THAT(set, ElementsAre("c", "a", "b"));
    EXPECT_TRUE(set.insert("0"));
    EXPECT_FALSE(set.insert("c"));
    EXPECT_THAT(set, ElementsAre("c", "a", "b", "0"));
    EXPECT_EQ(set.size(), 4U);
}

TEST(OrderedSet, IsEmptyAtFirst) {
    const OrderedSet<std::string> set;
    EXPECT_TRUE(set.empty());
    EXPECT_EQ(set.size(), 0U);
    EXPECT_FALSE(set.contains(""));
    EXPECT_EQ(set.begin(), set.end());
}

TEST(OrderedSet, UnitesInTheOtherOnesOrder) {
    OrderedSet<std::string> set{"b", "a"};
    set.unite({"d", "a", "c"});
    EXPECT_THAT(set, ElementsAre("b", "a", "d", "c"));
    set.unite({});
    EXPECT_EQ(set.size(), 4U);
    set.unite(set);
    EXPECT_EQ(set.size(), 4U);
}

TEST(OrderedSet, TellsEmptyTextFromAbsentOne) {
    OrderedSet<std::string> set{""};
    EXPECT_TRUE(set.contains(""));
    EXPECT_EQ(set.size(), 1U);
}

TEST(OrderedSet, ComparesWithoutRegardToOrder) {
    using Set = OrderedSet<std::string>;
    EXPECT_EQ((Set{"a", "b"}), (Set{"b", "a"}));
    EXPECT_NE((Set{"a", "b"}), (Set{"a"}));
    EXPECT_NE((Set{"a", "b"}), (Set{"a", "c"}));
    EXPECT_EQ(Set{}, Set{});
}

TEST(OrderedSet, AsksSharedObjectsThemselves) {
    OrderedSet<std::shared_ptr<Named>> set;
    const auto first = named("x");
    EXPECT_TRUE(set.insert(first));
    EXPECT_FALSE(set.insert(named("x")));
    EXPECT_TRUE(set.insert(named("X")));
    EXPECT_TRUE(set.contains(named("x")));
    EXPECT_EQ(*set.begin(), first) << "the one that came first stays";
}

TEST(OrderedSet, TakesNullForAnElementLikeAnother) {
    OrderedSet<std::shared_ptr<Named>> set;
    EXPECT_TRUE(set.insert(nullptr));
    EXPECT_FALSE(set.insert(nullptr));
    EXPECT_TRUE(set.insert(named("")));
    EXPECT_EQ(set.size(), 2U);
}

TEST(OrderedSet, TellsObjectsWithoutIdentityByAddress) {
    const auto one = std::make_shared<Plain>();
    OrderedSet<std::shared_ptr<Plain>> set{one, std::make_shared<Plain>()};
    EXPECT_EQ(set.size(), 2U);
    EXPECT_FALSE(set.insert(one));
}

TEST(OrderedSet, CopiesAreIndependent) {
    const OrderedSet<std::string> original{"a"};
    OrderedSet<std::string> copy = original;
    copy.insert("b");
    EXPECT_EQ(original.size(), 1U);
    EXPECT_FALSE(original.contains("b"));
}

}  // namespace
