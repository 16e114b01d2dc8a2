#include "QVSocialSearch/QVSocialSearchManager.h"
#include "SocialSearch/FakeAddressBook.h"
#include "SocialSearch/Services/GravatarFixture.h"
#include "SocialSearch/Services/WebFingerFixture.h"
#include "Support/DrivenMainQueue.h"

#include <gmock/gmock.h>

#include <set>
#include <thread>

using namespace std::chrono_literals;

namespace {

using social::Entry;
using testing::ElementsAre;
using testing::IsEmpty;
using testsupport::Gate;
using testsupport::ScriptedServer;

/// The services behind the search manager, as a host has them.
class ServicesSearchTest : public social::GravatarFixture {
  protected:
    void search(const std::string& address = "jordan@example.com", const std::string& requestID = "note-1") {
        mManager->addSearchByRequest(social::requestFor(address, requestID),
                                     [this](std::shared_ptr<QVSocialSearchResponse> response) {
                                         EXPECT_EQ(std::this_thread::get_id(), mMainThread);
                                         mResponses.push_back(std::move(response));
                                     });
    }
    bool waitForAnswers(std::size_t count = 1) {
        return mMain.pumpUntil([this, count] { return mResponses.size() >= count; });
    }
    std::shared_ptr<QVSocialProfile> answer() const { return mResponses.back()->mergedSocialProfile(); }
    std::shared_ptr<QVWebFingerProvider> webFinger() const {
        return std::make_shared<QVWebFingerProvider>(
            QVWebFingerOptions{.originOfDomain = [this](const std::string&) { return mElsewhere.url(""); }});
    }

    const std::thread::id mMainThread = std::this_thread::get_id();
    testsupport::DrivenMainQueue mMain;
    std::shared_ptr<QVSocialSearchManager> mManager = std::make_shared<QVSocialSearchManager>();
    std::vector<std::shared_ptr<QVSocialSearchResponse>> mResponses;
};

TEST_F(ServicesSearchTest, AreNotAskedUnlessTheHostChoosesThem) {
    EXPECT_THAT(mManager->providers(), IsEmpty());
    EXPECT_THAT(QVSocialSearchManager::sharedManager()->providers(), IsEmpty());
}

TEST_F(ServicesSearchTest, AreMergedInTheirOrderOfTrust) {
    const auto record = social::profile("Known Name", QVSocialProfileSourceAddressBook);
    record->setAddressBookUID("uid-1");
    const auto addressBook = std::make_shared<social::FakeAddressBook>();
    addressBook->find = [&](const auto&, auto*) { return QVAddressBook::Profiles{record}; };
    const social::ChosenAddressBook chosen(addressBook);
    mService.respond(
        ScriptedServer::answer(200, R"({"first_name": "Other", "last_name": "Name", "job_title": "Engineer",
                 "contact_info": {"work_phone": "+1 202 555 0100"}})"));
    mElsewhere.respond(ScriptedServer::answer(
        200, R"({"links": [{"rel": "http://webfinger.net/rel/profile-page", "href": "https://fb.com/jo"}]})"));
    mManager->setProviders({webFinger(), provider()});
    search();
    ASSERT_TRUE(waitForAnswers());
    EXPECT_EQ(answer()->profileType(), 4 | 8 | 16);
    EXPECT_EQ(answer()->addressBookUID(), "uid-1");
    EXPECT_EQ(answer()->formattedName(), "Known Name");
    EXPECT_EQ(answer()->jobTitle(), "Engineer");
    EXPECT_NE(answer()->jobTitleSource(), QVSocialProfileSourceProfessionalNetwork);
    EXPECT_EQ(answer()->profileURLFacebook(), "https://fb.com/jo");
    EXPECT_THAT(social::phonesOf(*answer()), ElementsAre(Entry("Work", "+1 202 555 0100")));
}

TEST_F(ServicesSearchTest, CostOnlyTheirOwnPartWhenTheyAreHostile) {
    mService.respond(ScriptedServer::answer(200, std::string(500'000, '[')));
    mElsewhere.respond(ScriptedServer::answer(
        200, R"({"links": [{"rel": "http://webfinger.net/rel/profile-page", "href": "https://fb.com/jo"}]})"));
    mManager->setProviders({provider(), webFinger()});
    search();
    ASSERT_TRUE(waitForAnswers());
    EXPECT_EQ(answer()->profileType(), 16);
}

TEST_F(ServicesSearchTest, LoseTheMarkupOfTheirLabels) {
    mElsewhere.respond(
        ScriptedServer::answer(200, R"({"links": [{"rel": "vcard", "href": ")" + mElsewhere.url("/jo.vcf") + "\"}]}"));
    mElsewhere.respond(ScriptedServer::answer(
        200,
        "BEGIN:VCARD\r\nVERSION:3.0\r\nitem1.EMAIL:jo@example.com\r\nitem1.X-ABLabel:<b>W&o\"r'k\r\nEND:VCARD\r\n"));
    mManager->setProviders({webFinger()});
    search();
    ASSERT_TRUE(waitForAnswers());
    EXPECT_THAT(social::emailsOf(*answer()), ElementsAre(Entry("bWork", "jo@example.com")));
}

TEST_F(ServicesSearchTest, AreDroppedWhenTheyAnswerAfterTheirTime) {
    const auto gate = std::make_shared<Gate>();
    mService.respondAfter(gate, ScriptedServer::answer(200, R"({"company": "Late Ltd."})"));
    mElsewhere.respond(ScriptedServer::answer(
        200, R"({"links": [{"rel": "http://webfinger.net/rel/profile-page", "href": "https://fb.com/jo"}]})"));
    mManager->setProviders({provider(), webFinger()});
    search();
    ASSERT_TRUE(mService.waitForRequests(1));
    ASSERT_TRUE(mMain.pumpUntilRan(1)) << "the quick one's report";
    EXPECT_THAT(mResponses, IsEmpty());
    mMain.pass(3s);
    ASSERT_EQ(mResponses.size(), 1U);
    EXPECT_EQ(answer()->profileType(), 16);
    gate->open();
    ASSERT_TRUE(mMain.pumpUntilRan(3)) << "the late answer arrives";
    EXPECT_EQ(mResponses.size(), 1U) << "and is dropped";
}

TEST_F(ServicesSearchTest, AnswerManySearchesAtOnce) {
    const auto answerOne = [](testsupport::ScriptedConnection& connection,
                              const testsupport::ScriptedRequest& request) {
        connection.write(ScriptedServer::answer(200, R"({"company": ")" + request.target.substr(13, 8) + "\"}"));
    };
    mService.handle(answerOne);
    mManager->setProviders({provider()});
    constexpr std::size_t kSearches = 12;
    for (std::size_t number = 0; number < kSearches; ++number)
        search(std::to_string(number) + "@example.com", std::to_string(number));
    ASSERT_TRUE(waitForAnswers(kSearches));
    std::set<std::string> companies;
    for (const auto& response : mResponses)
        companies.insert(response->mergedSocialProfile()->company().value());
    EXPECT_EQ(companies.size(), kSearches) << "each its own";
    EXPECT_EQ(asked(), kSearches);
    mResponses.clear();
    for (std::size_t number = 0; number < kSearches; ++number)
        search(std::to_string(number) + "@example.com");
    ASSERT_TRUE(waitForAnswers(kSearches));
    EXPECT_EQ(asked(), kSearches) << "everybody is known now";
}

TEST_F(ServicesSearchTest, StopAskingTogetherWhenOneIsRefused) {
    mService.respond(ScriptedServer::answer(429, "", "Retry-After: 100\r\n"));
    const auto service = provider();
    find(service);
    std::vector<std::thread> threads;
    for (int number = 0; number < 8; ++number) {
        threads.emplace_back(
            [&, number] { EXPECT_EQ(find(service, std::to_string(number) + "@example.com"), nullptr); });
    }
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(asked(), 1U);
}

}  // namespace
