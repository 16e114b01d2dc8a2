#include "QVPlatform/Atomic.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace {

TEST(Atomic, HoldsItsValue) {
    qv::Atomic<std::string> value("first");
    EXPECT_EQ(value.load(), "first");
    value.store("second");
    EXPECT_EQ(value.load(), "second");
}

TEST(Atomic, BeginsWithTheTypesOwnDefault) {
    EXPECT_EQ(qv::Atomic<int>().load(), 0);
    EXPECT_EQ(qv::Atomic<std::optional<std::string>>().load(), std::nullopt);
    EXPECT_EQ(qv::Atomic<std::shared_ptr<int>>().load(), nullptr);
}

/// Reads the property that holds it while it goes.
struct ReadsAtItsEnd {
    explicit ReadsAtItsEnd(qv::Atomic<std::shared_ptr<ReadsAtItsEnd>>& property) : mProperty(property) {}
    ~ReadsAtItsEnd() { mProperty.load(); }
    ReadsAtItsEnd(const ReadsAtItsEnd&) = delete;
    ReadsAtItsEnd& operator=(const ReadsAtItsEnd&) = delete;
    qv::Atomic<std::shared_ptr<ReadsAtItsEnd>>& mProperty;
};

TEST(Atomic, ReleasesThePreviousValueOutsideOfTheLock) {
    qv::Atomic<std::shared_ptr<ReadsAtItsEnd>> property;
    property.store(std::make_shared<ReadsAtItsEnd>(property));
    property.store(nullptr);  // would wait for itself for ever
    EXPECT_EQ(property.load(), nullptr);
}

TEST(Atomic, NeverShowsAHalfReplacedValue) {
    qv::Atomic<std::string> value(std::string(100, 'a'));
    std::atomic<int> torn{0};
    {
        std::vector<std::jthread> threads;
        for (const char letter : {'a', 'b'}) {
            threads.emplace_back([&value, letter] {
                for (int i = 0; i < 2000; ++i)
                    value.store(std::string(letter == 'a' ? 100U : 300U, letter));
            });
            threads.emplace_back([&] {
                for (int i = 0; i < 2000; ++i) {
                    const std::string seen = value.load();
                    if (seen != std::string(100, 'a') && seen != std::string(300, 'b')) ++torn;
                }
            });
        }
    }
    EXPECT_EQ(torn, 0);
}

}  // namespace
