#include "QVPlatform/NotificationCenter.h"
#include "Support/CapturedLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <optional>
#include <stdexcept>
#include <thread>
#include <vector>

using qv::Notification;
using qv::NotificationCenter;
using testing::ElementsAre;
using testsupport::CapturedLog;

namespace {

class NotificationCenterTest : public testing::Test {
  protected:
    NotificationCenter::Observer note(std::string who) {
        return [this, who](const Notification&) { mCalls.push_back(who); };
    }
    void post(const char* name = "Finished") { mCenter.postNotification({name, {}, {}}); }

    NotificationCenter mCenter;
    std::vector<std::string> mCalls;
};

TEST_F(NotificationCenterTest, CallsObserversOfTheNameInTheOrderAdded) {
    const auto a = mCenter.addObserverForName("Finished", note("a"));
    const auto other = mCenter.addObserverForName("Other", note("other"));
    const auto b = mCenter.addObserverForName("Finished", note("b"));
    post();
    EXPECT_THAT(mCalls, ElementsAre("a", "b"));
    post("other");
    EXPECT_EQ(mCalls.size(), 2U) << "names are told apart by case";
}

TEST_F(NotificationCenterTest, HandsOverWhatWasPosted) {
    std::optional<Notification> seen;
    std::thread::id thread;
    const auto token = mCenter.addObserverForName("Finished", [&](const Notification& notification) {
        seen = notification;
        thread = std::this_thread::get_id();
    });
    mCenter.postNotification({"Finished", std::string("sender"), {{"key", 7}}});
    ASSERT_TRUE(seen.has_value());
    EXPECT_EQ(seen->name, "Finished");
    EXPECT_EQ(std::any_cast<std::string>(seen->object), "sender");
    EXPECT_EQ(std::any_cast<int>(seen->userInfo.at("key")), 7);
    EXPECT_EQ(thread, std::this_thread::get_id());
    post();
    EXPECT_FALSE(seen->object.has_value());
}

TEST_F(NotificationCenterTest, ForgetsAnObserverWhoseTokenIsReleased) {
    auto token = mCenter.addObserverForName("Finished", note("a"));
    const auto copy = token;
    token.reset();
    post();
    EXPECT_EQ(mCalls.size(), 1U) << "a copy of the token still holds";
}

TEST_F(NotificationCenterTest, CallsNobodyAfterTheLastTokenWent) {
    mCenter.addObserverForName("Finished", note("a")).reset();
    post();
    EXPECT_TRUE(mCalls.empty());
}

TEST_F(NotificationCenterTest, ReleasesTheObserverWithItsToken) {
    const auto held = std::make_shared<int>();
    auto token = mCenter.addObserverForName("Finished", [held](const Notification&) {});
    EXPECT_EQ(held.use_count(), 2);
    token.reset();
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(NotificationCenterTest, GoesOnAfterAnObserverThatThrows) {
    const CapturedLog log;
    const auto a = mCenter.addObserverForName("Finished", [](const Notification&) { throw std::runtime_error("no"); });
    const auto b = mCenter.addObserverForName("Finished", [](const Notification&) { throw 7; });
    const auto c = mCenter.addObserverForName("Finished", note("c"));
    EXPECT_NO_THROW(post());
    EXPECT_THAT(mCalls, ElementsAre("c"));
    EXPECT_THAT(log.messages(), ElementsAre("<ERROR> Exception from a notification's observer: no",
                                            "<ERROR> Exception from a notification's observer"));
}

TEST_F(NotificationCenterTest, LetsObserversAddObserversForTheNextPost) {
    std::vector<NotificationCenter::Token> tokens;
    const auto a = mCenter.addObserverForName("Finished", [&](const Notification&) {
        mCalls.push_back("a");
        tokens.push_back(mCenter.addObserverForName("Finished", note("late")));
    });
    post();
    EXPECT_THAT(mCalls, ElementsAre("a"));
    post();
    EXPECT_THAT(mCalls, ElementsAre("a", "a", "late"));
}

TEST_F(NotificationCenterTest, LetsObserversRemoveThemselvesAndOthers) {
    NotificationCenter::Token a;
    NotificationCenter::Token b;
    a = mCenter.addObserverForName("Finished", [&](const Notification&) {
        mCalls.push_back("a");
        a.reset();
        b.reset();
    });
    b = mCenter.addObserverForName("Finished", note("b"));
    const auto c = mCenter.addObserverForName("Finished", note("c"));
    post();
    post();
    EXPECT_THAT(mCalls, ElementsAre("a", "c", "c"));
}

TEST_F(NotificationCenterTest, LetsObserversPost) {
    const auto outer = mCenter.addObserverForName("Finished", [&](const Notification&) { post("Inner"); });
    const auto inner = mCenter.addObserverForName("Inner", note("inner"));
    post();
    EXPECT_THAT(mCalls, ElementsAre("inner"));
}

TEST_F(NotificationCenterTest, TakesAnEmptyObserverInSilence) {
    const CapturedLog log;
    const auto token = mCenter.addObserverForName("Finished", {});
    EXPECT_NE(token, nullptr);
    post();
    EXPECT_TRUE(log.messages().empty());
}

TEST_F(NotificationCenterTest, MayGoBeforeItsTokens) {
    auto center = std::make_unique<NotificationCenter>();
    auto token = center->addObserverForName("Finished", note("a"));
    center.reset();
    token.reset();
    EXPECT_TRUE(mCalls.empty());
}

TEST_F(NotificationCenterTest, HasOneDefaultCenter) {
    NotificationCenter& center = NotificationCenter::defaultCenter();
    EXPECT_EQ(&center, &NotificationCenter::defaultCenter());
    const auto token = center.addObserverForName("Finished", note("a"));
    center.postNotification({"Finished", {}, {}});
    post();
    EXPECT_EQ(mCalls.size(), 1U);
}

TEST_F(NotificationCenterTest, IsForSeveralThreads) {
    std::atomic<int> calls{0};
    const auto steady = mCenter.addObserverForName("Finished", [&](const Notification&) { ++calls; });
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back([&] {
                for (int j = 0; j < 200; ++j) {
                    const auto token = mCenter.addObserverForName("Finished", [](const Notification&) {});
                    post();
                }
            });
        }
    }
    EXPECT_EQ(calls, 800);
}

}  // namespace
