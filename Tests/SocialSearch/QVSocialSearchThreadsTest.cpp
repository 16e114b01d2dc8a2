#include "FakeProvider.h"
#include "SocialFixtures.h"
#include "SocialSearchManagerFixture.h"
#include "Support/Gate.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <thread>

using namespace std::chrono_literals;

namespace {

using social::finding;
using social::provider;
using social::request;
using testing::ElementsAre;
using testing::IsEmpty;
using testsupport::Gate;

using QVSocialSearchThreadsTest = social::SocialSearchManagerFixture;

TEST_F(QVSocialSearchThreadsTest, AsksSideBySide) {
    // Each waits for the other: one after the other they would never end.
    const auto first = std::make_shared<Gate>();
    const auto second = std::make_shared<Gate>();
    const auto meeting = [](std::shared_ptr<Gate> own, std::shared_ptr<Gate> other, const char* title) {
        return provider([=](const auto&) {
            EXPECT_NE(qv::MainQueue::executor()->isMainThread(), true);
            own->open();
            other->wait();
            auto profile = social::profile();
            profile->setJobTitle(title);
            return profile;
        });
    };
    mManager->setProviders({meeting(first, second, "One"), meeting(second, first, "Two")});
    search();
    ASSERT_TRUE(waitForAnswer());
    EXPECT_EQ(found()->jobTitle(), "One");
}

TEST_F(QVSocialSearchThreadsTest, TakesTheRequestAsItIsWhenItIsHandedOver) {
    const auto gate = std::make_shared<Gate>();
    mManager->addProvider(provider([=](const QVSocialSearchRequest& asked) {
        gate->wait();
        return social::profile(asked.requestID());
    }));
    const auto reused = request("jo@example.com", "note-1");
    search(reused);
    reused->setRequestID("note-2");
    search(reused);
    reused->setRequestID(std::nullopt);
    gate->open();
    ASSERT_TRUE(mMain.pumpUntil([this] { return mResponses.size() == 2; }));
    std::vector<QVString> tags;
    for (const auto& response : mResponses) {
        tags.push_back(response->requestID());
        EXPECT_EQ(response->mergedSocialProfile()->formattedName(), response->requestID());
    }
    EXPECT_THAT(tags, testing::UnorderedElementsAre("note-1", "note-2"));
}

TEST_F(QVSocialSearchThreadsTest, DoesWithoutASlowProviderAfterThreeSeconds) {
    const auto gate = std::make_shared<Gate>();
    const auto ended = std::make_shared<Gate>();
    mManager->setProviders({provider([=](const auto&) {
                                gate->wait();
                                ended->open();
                                return social::profile("Too Late");
                            }),
                            finding(social::profile("In Time"))});
    search();
    ASSERT_TRUE(mMain.pumpUntilRan(1));
    mMain.pass(3s - 1ns);
    EXPECT_THAT(mResponses, IsEmpty());
    mMain.pass(1ns);
    ASSERT_EQ(mResponses.size(), 1U);
    EXPECT_EQ(found()->formattedName(), "In Time");
    EXPECT_THAT(mLog.messages(), ElementsAre("<WARNING> 1 social search providers did not answer in time"));
    gate->open();
    ASSERT_TRUE(ended->waitFor());
    ASSERT_TRUE(mMain.pumpUntilRan(3)) << "the late answer arrives";
    EXPECT_EQ(mResponses.size(), 1U) << "and is dropped";
}

TEST_F(QVSocialSearchThreadsTest, LosesOnlyThePartOfAProviderThatThrows) {
    mManager->setProviders(
        {provider([](const auto&) -> std::shared_ptr<QVSocialProfile> { throw std::runtime_error("out of order"); },
                  "broken"),
         finding(social::profile("Jordan Example")),
         provider([](const auto&) -> std::shared_ptr<QVSocialProfile> { throw 7; }, "odd")});
    search();
    ASSERT_TRUE(waitForAnswer());
    EXPECT_EQ(found()->formattedName(), "Jordan Example");
    EXPECT_THAT(mLog.messages(),
                testing::UnorderedElementsAre("<ERROR> Exception from the social search provider broken: out of order",
                                              "<ERROR> Exception from the social search provider odd"));
}

TEST_F(QVSocialSearchThreadsTest, DoesNotAskAProviderThatHangs) {
    const auto gate = std::make_shared<Gate>();
    const auto asked = std::make_shared<std::atomic<int>>(0);
    mManager->addProvider(provider(
        [=](const auto&) {
            ++*asked;
            gate->wait();
            return std::shared_ptr<QVSocialProfile>();
        },
        "hanging"));
    constexpr std::size_t kMostUnfinished = 16;
    for (std::size_t count = 0; count < kMostUnfinished; ++count)
        search();
    EXPECT_FALSE(mLog.mentions("hanging"));
    search();
    mMain.pump();
    ASSERT_EQ(mResponses.size(), 1U) << "the last one is answered at once";
    EXPECT_TRUE(mLog.contains(
        "<WARNING> The social search provider hanging has too many look-ups unfinished and is not asked"));
    mMain.pass(3s);
    EXPECT_EQ(mResponses.size(), kMostUnfinished + 1);
    EXPECT_LE(*asked, 4) << "threads";
    gate->open();
    EXPECT_TRUE(mMain.pumpUntilRan(2 * kMostUnfinished + 2));
}

TEST_F(QVSocialSearchThreadsTest, SurvivesACompletionThatThrowsAndOneThatIsEmpty) {
    mManager->addSearchByRequest(request(), {});
    EXPECT_EQ(mMain.pump(), 0U);
    mManager->addSearchByRequest(request(), [](auto) { throw std::runtime_error("host"); });
    mMain.pump();
    EXPECT_THAT(mLog.messages(), ElementsAre("<ERROR> Exception from work on the main thread: host"));
}

TEST_F(QVSocialSearchThreadsTest, AnswersWhenTheManagerIsGone) {
    const auto gate = std::make_shared<Gate>();
    mManager->addProvider(provider([=](const auto&) {
        gate->wait();
        return social::profile("Jordan Example");
    }));
    search();
    mManager.reset();
    gate->open();
    ASSERT_TRUE(waitForAnswer());
    EXPECT_EQ(found()->formattedName(), "Jordan Example");
}

TEST_F(QVSocialSearchThreadsTest, MayBeAskedFromManyThreads) {
    mManager->addProvider(
        provider([](const QVSocialSearchRequest& asked) { return social::profile(asked.requestID()); }));
    constexpr int kThreads = 4;
    std::vector<std::thread> threads;
    for (int number = 0; number < kThreads; ++number) {
        threads.emplace_back([this, number] { search(request("jo@example.com", std::to_string(number))); });
    }
    for (auto& thread : threads)
        thread.join();
    ASSERT_TRUE(mMain.pumpUntil([this] { return mResponses.size() == kThreads; }));
    for (const auto& response : mResponses)
        EXPECT_EQ(response->mergedSocialProfile()->formattedName(), response->requestID());
}

}  // namespace
