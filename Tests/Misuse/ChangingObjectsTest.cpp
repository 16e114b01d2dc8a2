#include "WholeHost.h"

#include <thread>

/// What the host lends to the library and does not leave in peace.
namespace misuse {
namespace {

using testsupport::Gate;

/// Lets the test act while it is asked.
class WatchedDataSource : public QVContactNoteDataSource {
  public:
    ~WatchedDataSource() override { gone->open(); }
    bool implementsContactMatchingFullName() const override {
        asked->open();
        mayAnswer->wait();
        return true;
    }
    std::shared_ptr<QVVeltoContact> contactMatchingFullName(const QVString&, const QVString&, const QVString&,
                                                            const QVString&, const QVString&) override {
        EXPECT_FALSE(gone->isOpen());
        auto contact = std::make_shared<QVVeltoContact>();
        contact->setCompany("Example Works");
        return contact;
    }

    const std::shared_ptr<Gate> asked = std::make_shared<Gate>();
    const std::shared_ptr<Gate> mayAnswer = std::make_shared<Gate>();
    const std::shared_ptr<Gate> gone = std::make_shared<Gate>();
};

class ChangingObjects : public managers::Manager {};

/// It lives as long as it is asked, and answers; it goes with the question, and the next card does without.
TEST_F(ChangingObjects, MayBeADataSourceThatGoesWhileItIsAsked) {
    auto dataSource = std::make_shared<WatchedDataSource>();
    const auto asked = dataSource->asked;
    const auto mayAnswer = dataSource->mayAnswer;
    const auto gone = dataSource->gone;
    mManager->setContactNoteDataSource(dataSource);
    mServer.letAllGo();
    const auto first = add("a");
    ASSERT_TRUE(asked->waitFor());
    dataSource.reset();
    EXPECT_EQ(mManager->contactNoteDataSource() == nullptr, gone->isOpen());
    mayAnswer->open();
    expectCompleted(first);
    EXPECT_EQ(first->response->contact()->company(), "Example Works");
    EXPECT_TRUE(gone->waitFor());
    const auto second = add("b");
    expectCompleted(second);
    EXPECT_EQ(second->response->contact()->company(), std::nullopt);
}

TEST_F(ChangingObjects, MayBeADataSourceThatIsGoneBeforeItIsAsked) {
    auto dataSource = std::make_shared<WatchedDataSource>();
    mManager->setContactNoteDataSource(dataSource);
    const auto outcome = add("a");
    ASSERT_TRUE(mServer.waitForRequests(1));
    dataSource.reset();
    mServer.letGo("a");
    expectCompleted(outcome);
    EXPECT_TRUE(outcome->response->contact());
}

/// Every property, from another thread, all the time: each is old or new, never half, and the card ends once.
TEST_F(ChangingObjects, MayBeARequestThatIsChangedWhileItRuns) {
    mServer.letAllGo();
    const std::vector<QVString> notes = {"note", "another", std::nullopt};
    for (int round = 0; round < 30; ++round) {
        const auto request = scans::request("note", "token");
        const auto outcome = addRequest(request);
        std::jthread changing([&] {
            for (std::size_t i = 0; !outcome->released.isOpen(); ++i) {
                request->setNoteUUID(notes[i % notes.size()]);
                request->setCardImages(i % 2 ? nullptr : scans::pictures({nullptr, scans::picture()}));
                request->setImageHashes(i % 2 ? nullptr : scans::strings({"hash-2", "hash-3"}));
                request->setAuthToken(i % 2 ? QVString() : QVString("another token"));
                request->setRecoLanguage(i % 2 ? QVString() : QVString("de"));
                request->setSkipNoteGeneration(i % 2 == 0);
                request->setProcessImageForOCR(i % 2 == 0);
            }
        });
        ASSERT_TRUE(outcome->released.waitFor());
        changing.join();
        EXPECT_EQ(outcome->calls, 1);
        if (outcome->response && outcome->response->originalNoteUUID()) {
            EXPECT_TRUE(outcome->response->originalNoteUUID() == "note" ||
                        outcome->response->originalNoteUUID() == "another");
        }
    }
}

/// It is the request's name that is asked for, as it is now: cancelling and refusing go by it.
TEST_F(ChangingObjects, MayBeARequestThatChangesItsName) {
    const auto request = scans::request("before", "token");
    const auto outcome = addRequest(request);
    ASSERT_TRUE(mServer.waitForRequests(1));
    request->setNoteUUID("after");
    expectRefused(addRequest(scans::request("after", "other")));
    mManager->cancelRequestWithIDString("before");
    const auto sameName = addRequest(scans::request("before", "other"));
    mServer.letAllGo();
    expectCompleted(outcome);
    EXPECT_EQ(outcome->response->originalNoteUUID(), "after");
    expectCompleted(sameName);
}

/// Two cards with one request: each has its own response.
TEST_F(ChangingObjects, MayBeOneRequestForTwoCards) {
    const auto request = scans::request("a", "token");
    const auto first = addRequest(request);
    ASSERT_TRUE(mServer.waitForRequests(1));
    request->setNoteUUID("b");
    expectRefused(addRequest(request));
    request->setNoteUUID("c");
    EXPECT_FALSE(mManager->canWeAddRequestToQueue(request)) << "it is the one that runs";
    mServer.letAllGo();
    expectCompleted(first);
    const auto second = addRequest(request);
    expectCompleted(second);
    EXPECT_NE(first->response, second->response);
}

}  // namespace
}  // namespace misuse
