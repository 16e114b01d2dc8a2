#include "WholeHost.h"

/// Where a host gives nothing, nothing happens: an assertion fails or the default comes back, and cards go on.
namespace misuse {
namespace {

TEST(Nulls, AreTakenEverywhere) {
    WholeHost host;
    const auto manager = host.manager();
    manager->addRequest(nullptr, [](const auto&) { FAIL() << "refused"; });
    manager->addRequest(scans::request("no completion"), nullptr);
    manager->cancelRequestWithIDString(std::nullopt);
    EXPECT_FALSE(manager->canWeAddRequestToQueue(nullptr));
    EXPECT_FALSE(manager->canStartLinkedInSearchForCardProcessingResponse(nullptr));
    manager->addSocialSearchRequestFromCardProcessingResponse(nullptr);
    manager->addSocialSearchRequestFromCardProcessingResponse(std::make_shared<QVCardProcessingResponse>());
    manager->startLinkedInSearchFromCardProcessingResponse(nullptr);
    EXPECT_EQ(manager->searchRequestFromCardProcessingResponse(nullptr), nullptr);
    EXPECT_EQ(manager->socialSearchRequestInfoWithID(std::nullopt), nullptr);
    manager->setContactNoteDataSource(nullptr);
    QVSocialSearchManager::sharedManager()->addSearchByRequest(nullptr, nullptr);
    QVSocialSearchManager::sharedManager()->addSearchByRequest(nullptr, [](const auto&) {});
    QVSocialSearchManager::sharedManager()->addProvider(nullptr);
    QVAddressBookController::sharedController()->saveSocialProfileInAddressBook(nullptr, nullptr);
    qv::MainQueue::executor()->dispatchAsync(nullptr);
    qv::MainQueue::executor()->dispatchAfter(std::chrono::seconds(1), nullptr);
    const auto token = qv::NotificationCenter::defaultCenter().addObserverForName("anything", nullptr);
    qv::NotificationCenter::defaultCenter().postNotification({.name = "anything", .object = {}, .userInfo = {}});
    EXPECT_EQ(host.runCard("next", /*answersComeByThemselves=*/true), (Told{1, 1, 1}));
    EXPECT_TRUE(host.desk->wasTold("The request doesn't have a note UUID! Ignored."));
}

/// The map of searches is the host's to replace, and even to take away: a search that has no record is not announced.
TEST(Nulls, MayStandForTheSearchesThatWait) {
    WholeHost host;
    host.manager()->setSocialSearchRequestMap(nullptr);
    const auto card = host.startCard("a");
    ASSERT_TRUE(card->released.waitFor());
    host.startSearch(card);
    host.executor()->clock.advance(std::chrono::seconds(10));
    host.executor()->pumped.pump();
    EXPECT_EQ(host.heard("a"), 0);
    host.manager()->setSocialSearchRequestMap(std::make_shared<std::map<std::string, std::any>>());
    EXPECT_EQ(host.runCard("next", /*answersComeByThemselves=*/true), (Told{1, 1, 1}));
}

TEST(Nulls, BringEveryDefaultBack) {
    { WholeHost host; }
    qv::Log::setSink({});
    EXPECT_EQ(qv::Bundle::localizedString("View Profile"), "View Profile");
    EXPECT_NE(std::dynamic_pointer_cast<qv::PumpedExecutor>(qv::MainQueue::executor()), nullptr);
    EXPECT_EQ(QVAddressBookController::sharedController()->addressBook(), nullptr);
    EXPECT_TRUE(QVSocialSearchManager::sharedManager()->providers().empty());
    qv::Log::useSystemLog();
}

}  // namespace
}  // namespace misuse
