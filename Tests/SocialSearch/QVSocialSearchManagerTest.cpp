#include "FakeProvider.h"
#include "SocialFixtures.h"
#include "SocialSearchManagerFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

using social::finding;
using social::provider;
using social::request;
using testing::ElementsAre;
using testing::IsEmpty;

using QVSocialSearchManagerTest = social::SocialSearchManagerFixture;

TEST_F(QVSocialSearchManagerTest, AnswersOnceOnTheMainExecutorAndNeverInsideTheCall) {
    mManager->addProvider(finding(social::profile("Jordan Example")));
    search();
    EXPECT_THAT(mResponses, IsEmpty());
    ASSERT_TRUE(waitForAnswer());
    EXPECT_EQ(mResponses.front()->requestID(), "note-1");
    EXPECT_EQ(found()->formattedName(), "Jordan Example");
    mMain.pass(1h);
    EXPECT_EQ(mResponses.size(), 1U);
    EXPECT_THAT(mLog.messages(), IsEmpty());
}

TEST_F(QVSocialSearchManagerTest, AnswersNoRequestAtOnceWithNothing) {
    mManager->addProvider(provider([](const auto&) -> std::shared_ptr<QVSocialProfile> {
        ADD_FAILURE() << "nobody is to be asked";
        return nullptr;
    }));
    search(nullptr);
    EXPECT_THAT(mResponses, IsEmpty()) << "through the executor";
    mMain.pump();
    ASSERT_EQ(mResponses.size(), 1U);
    EXPECT_EQ(mResponses.front()->requestID(), std::nullopt);
    EXPECT_EQ(found(), nullptr);
}

TEST_F(QVSocialSearchManagerTest, AnswersARequestWithoutAnAddressAtOnceWithNothing) {
    mManager->addProvider(finding(social::profile("Jordan Example")));
    for (const QVString& address : {QVString(), QVString(""), QVString(" \n")}) {
        mResponses.clear();
        search(request(address));
        mMain.pump();
        ASSERT_EQ(mResponses.size(), 1U);
        EXPECT_EQ(mResponses.front()->requestID(), "note-1");
        EXPECT_EQ(found(), nullptr);
    }
}

TEST_F(QVSocialSearchManagerTest, AnswersAtOnceWithNothingWhenThereIsNobodyToAsk) {
    search();
    mMain.pump();
    ASSERT_EQ(mResponses.size(), 1U);
    EXPECT_EQ(found(), nullptr);
}

TEST_F(QVSocialSearchManagerTest, FindsNothingWhenNobodyDoes) {
    mManager->setProviders({finding(nullptr), finding(nullptr)});
    search();
    ASSERT_TRUE(waitForAnswer());
    EXPECT_EQ(found(), nullptr);
}

TEST_F(QVSocialSearchManagerTest, KeepsTheProvidersInOrderWithoutNulls) {
    const auto first = finding(nullptr);
    const auto second = finding(nullptr);
    mManager->setProviders({first, nullptr});
    mManager->addProvider(nullptr);
    mManager->addProvider(second);
    EXPECT_THAT(mManager->providers(), ElementsAre(first, second));
    mManager->setProviders({});
    EXPECT_THAT(mManager->providers(), IsEmpty());
}

TEST_F(QVSocialSearchManagerTest, IsSharedUntilItIsReplaced) {
    const auto standard = QVSocialSearchManager::sharedManager();
    EXPECT_EQ(QVSocialSearchManager::sharedManager(), standard);
    QVSocialSearchManager::setSharedManager(mManager);
    EXPECT_EQ(QVSocialSearchManager::sharedManager(), mManager);
    QVSocialSearchManager::setSharedManager(nullptr);
    EXPECT_EQ(QVSocialSearchManager::sharedManager(), standard);
}

TEST(QVSocialSearchResponse, SaysForTheLogWhetherSomebodyWasFound) {
    EXPECT_EQ(QVSocialSearchResponse().description(), "request (null): nothing found");
    EXPECT_EQ(QVSocialSearchResponse::initWithRequestID("note-1", nullptr)->description(),
              "request note-1: nothing found");
    EXPECT_EQ(QVSocialSearchResponse::initWithRequestID("note-1", social::profile("Jordan", 5))->description(),
              "request note-1: found a profile of type 5");
}

TEST(QVSocialSearchRequest, KeepsItsAddressAndTag) {
    const auto made = request("a@example.com", "tag");
    EXPECT_EQ(made->emailAddress(), "a@example.com");
    EXPECT_EQ(made->requestID(), "tag");
    EXPECT_EQ(QVSocialSearchRequest().emailAddress(), std::nullopt);
    EXPECT_EQ(QVSocialSearchRequest().requestID(), std::nullopt);
}

}  // namespace
