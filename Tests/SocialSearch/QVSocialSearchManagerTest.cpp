#include "FakeAddressBook.h"
#include "FakeProvider.h"
#include "QVSocialSearch/QVSocialSearchManager.h"
#include "SocialFixtures.h"
#include "Support/CapturedLog.h"
#include "Support/DrivenMainQueue.h"
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
using testing::ElementsAre;
using testing::IsEmpty;
using testsupport::CapturedLog;
using testsupport::Gate;

std::shared_ptr<QVSocialSearchRequest> request(QVString address = "jo@example.com", QVString requestID = "note-1") {
    auto made = QVSocialSearchRequest::initWithEmailAddress(std::move(address));
    made->setRequestID(std::move(requestID));
    return made;
}

class QVSocialSearchManagerTest : public testing::Test {
  protected:
    void search(std::shared_ptr<QVSocialSearchRequest> asked = request()) {
        mManager->addSearchByRequest(std::move(asked), [this](std::shared_ptr<QVSocialSearchResponse> response) {
            EXPECT_EQ(std::this_thread::get_id(), mMainThread);
            mResponses.push_back(std::move(response));
        });
    }
    bool waitForAnswer() {
        return mMain.pumpUntil([this] { return !mResponses.empty(); });
    }
    std::shared_ptr<QVSocialProfile> found() const {
        return mResponses.empty() ? nullptr : mResponses.back()->mergedSocialProfile();
    }

    const std::thread::id mMainThread = std::this_thread::get_id();
    testsupport::DrivenMainQueue mMain;
    CapturedLog mLog;
    std::shared_ptr<QVSocialSearchManager> mManager = std::make_shared<QVSocialSearchManager>();
    std::vector<std::shared_ptr<QVSocialSearchResponse>> mResponses;
};

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

TEST_F(QVSocialSearchManagerTest, AsksSideBySide) {
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

TEST_F(QVSocialSearchManagerTest, DoesWithoutASlowProviderAfterThreeSeconds) {
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

TEST_F(QVSocialSearchManagerTest, LosesOnlyThePartOfAProviderThatThrows) {
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

TEST_F(QVSocialSearchManagerTest, DoesNotAskAProviderThatHangs) {
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

TEST_F(QVSocialSearchManagerTest, TrustsInTheOrderOfTheProviders) {
    // The less trusted one is sure to answer first.
    const auto gate = std::make_shared<Gate>();
    const auto trusted = social::profile("Trusted Name", 8);
    trusted->setCompany("Trusted Ltd.");
    trusted->setCompanySource(8);
    trusted->mergeWithEmailSet(social::emails({{"T", "jo@example.com"}}));
    const auto other = social::profile("Other Name", 2);
    other->setCompany("Other Ltd.");
    other->setCompanySource(2);
    other->setJobTitle("Head");
    other->setJobTitleSource(2);
    other->setProfileURLFacebook("https://example.com/fb");
    other->mergeWithEmailSet(social::emails({{"O", "JO@example.com"}, {"O", "second@example.com"}}));
    other->setAddressBookAvatarData(social::bytes("picture"));
    mManager->setProviders({provider([=](const auto&) {
                                gate->wait();
                                return trusted;
                            }),
                            finding(other)});
    search();
    ASSERT_TRUE(mMain.pumpUntilRan(1));
    gate->open();
    ASSERT_TRUE(waitForAnswer());
    EXPECT_EQ(found()->profileType(), 10);
    EXPECT_EQ(found()->formattedName(), "Trusted Name");
    EXPECT_EQ(found()->company(), "Trusted Ltd.");
    EXPECT_EQ(found()->companySource(), 8);
    EXPECT_EQ(found()->jobTitle(), "Head");
    EXPECT_EQ(found()->jobTitleSource(), 2);
    EXPECT_EQ(found()->profileURLFacebook(), "https://example.com/fb");
    EXPECT_EQ(found()->addressBookAvatarData(), social::bytes("picture"));
    EXPECT_THAT(social::emailsOf(*found()),
                ElementsAre(social::Entry("T", "jo@example.com"), social::Entry("O", "second@example.com")));
}

TEST_F(QVSocialSearchManagerTest, PutsAProfessionalNetworksWorkFirst) {
    const auto first = social::profile("First");
    first->setJobTitle("Old Title");
    first->setJobTitleSource(4);
    first->setCompany("Old Ltd.");
    first->setCompanySource(4);
    const auto network = social::profile("Second", 1);
    network->setJobTitle("New Title");
    network->setJobTitleSource(1);
    network->setCompany("");
    network->setCompanySource(1);
    mManager->setProviders({finding(first), finding(network)});
    search();
    ASSERT_TRUE(waitForAnswer());
    EXPECT_EQ(found()->formattedName(), "First");
    EXPECT_EQ(found()->jobTitle(), "New Title");
    EXPECT_EQ(found()->jobTitleSource(), 1);
    EXPECT_EQ(found()->company(), "Old Ltd.") << "an empty text is no word";
    EXPECT_EQ(found()->companySource(), 4);
}

TEST_F(QVSocialSearchManagerTest, CleansLinksAndLabels) {
    const auto hostile = social::profile("A <b>");
    hostile->setProfileURLLinkedInPublic("javascript:alert(1)");
    hostile->setProfileURLFacebook("HTTPS://example.com/fb");
    hostile->setAvatarURLLinkedIn("file:///etc/passwd");
    hostile->setAvatarURLFacebookBig("/relative");
    hostile->mergeWithEmailSet(social::emails({{"<b>W&\"o'rk</b>", "a@example.com"}}));
    hostile->mergeWithPhoneNumberSet(social::phones({{"<script>", "555-0100"}, {std::nullopt, "555-0199"}}));
    hostile->setAddressList({QVPostalAddress::addressWithLabel("\"Home\"", "1 <Main> St")});
    mManager->setProviders({finding(hostile)});
    search();
    ASSERT_TRUE(waitForAnswer());
    EXPECT_EQ(found()->formattedName(), "A <b>") << "texts are escaped where they are written";
    EXPECT_EQ(found()->profileURLLinkedInPublic(), std::nullopt);
    EXPECT_EQ(found()->profileURLFacebook(), "HTTPS://example.com/fb");
    EXPECT_EQ(found()->avatarURLLinkedIn(), std::nullopt);
    EXPECT_EQ(found()->avatarURLFacebookBig(), std::nullopt);
    EXPECT_THAT(social::emailsOf(*found()), ElementsAre(social::Entry("bWork/b", "a@example.com")));
    EXPECT_THAT(social::phonesOf(*found()),
                ElementsAre(social::Entry("script", "555-0100"), social::Entry(std::nullopt, "555-0199")));
    EXPECT_EQ(found()->addressList().front()->label(), "Home");
    EXPECT_EQ(hostile->profileURLLinkedInPublic(), "javascript:alert(1)") << "the provider's own profile stays";
}

TEST_F(QVSocialSearchManagerTest, HandsOutAProfileOfItsOwn) {
    const auto kept = social::profile("Jordan Example");
    mManager->setProviders({finding(kept)});
    search();
    ASSERT_TRUE(waitForAnswer());
    found()->setFormattedName("Changed");
    EXPECT_EQ(kept->formattedName(), "Jordan Example");
}

TEST_F(QVSocialSearchManagerTest, SurvivesACompletionThatThrowsAndOneThatIsEmpty) {
    mManager->addSearchByRequest(request(), {});
    EXPECT_EQ(mMain.pump(), 0U);
    mManager->addSearchByRequest(request(), [](auto) { throw std::runtime_error("host"); });
    mMain.pump();
    EXPECT_THAT(mLog.messages(), ElementsAre("<ERROR> Exception from work on the main thread: host"));
}

TEST_F(QVSocialSearchManagerTest, AnswersWhenTheManagerIsGone) {
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

TEST_F(QVSocialSearchManagerTest, MayBeAskedFromManyThreads) {
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

class AddressBookSearchTest : public QVSocialSearchManagerTest {
  protected:
    AddressBookSearchTest() {
        mAddressBook->find = [this](const std::string& address, std::optional<qv::Error>* error) {
            mAsked = address;
            *error = mError;
            return mRecords;
        };
    }

    std::shared_ptr<social::FakeAddressBook> mAddressBook = std::make_shared<social::FakeAddressBook>();
    social::ChosenAddressBook mChosen{mAddressBook};
    std::string mAsked;
    std::optional<qv::Error> mError;
    QVAddressBook::Profiles mRecords;
};

TEST_F(AddressBookSearchTest, AsksTheAddressBookFirst) {
    const auto record = social::profile("Known Name", QVSocialProfileSourceAddressBook);
    record->setAddressBookUID("uid-1");
    mRecords = {record};
    mManager->addProvider(finding(social::profile("Other Name", 8)));
    search(request(" jo@example.com "));
    ASSERT_TRUE(waitForAnswer());
    EXPECT_EQ(mAsked, "jo@example.com");
    EXPECT_EQ(found()->formattedName(), "Known Name");
    EXPECT_EQ(found()->profileType(), 12);
    EXPECT_EQ(found()->addressBookUID(), "uid-1");
}

TEST_F(AddressBookSearchTest, TakesNoneOfSeveralContacts) {
    mRecords = {social::profile("One"), nullptr, social::profile("Two")};
    search();
    ASSERT_TRUE(waitForAnswer());
    EXPECT_EQ(found(), nullptr);
    EXPECT_THAT(mLog.messages(), ElementsAre("<WARNING> 2 contacts share the e-mail address; none of them is merged"));
}

TEST_F(AddressBookSearchTest, TakesWhatCouldBeReadAndLogsTheRest) {
    mRecords = {social::profile("One")};
    mError = qv::Error{"D", 5, {{std::string(qv::kErrorDescriptionKey), std::string("broken card")}}};
    search();
    ASSERT_TRUE(waitForAnswer());
    EXPECT_EQ(found()->formattedName(), "One");
    EXPECT_THAT(mLog.messages(), ElementsAre("<WARNING> The address book could not be read whole: D 5 broken card"));
}

TEST_F(AddressBookSearchTest, GoesOnWithoutAnAddressBookThatThrows) {
    mAddressBook->find = [](const auto&, auto*) -> QVAddressBook::Profiles { throw std::runtime_error("no disk"); };
    mManager->addProvider(finding(social::profile("Other Name")));
    search();
    ASSERT_TRUE(waitForAnswer());
    EXPECT_EQ(found()->formattedName(), "Other Name");
    EXPECT_THAT(mLog.messages(),
                ElementsAre("<ERROR> Exception from the social search provider address book: no disk"));
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
