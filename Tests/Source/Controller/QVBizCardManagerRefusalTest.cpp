#include "ManagerFixtures.h"
#include "QVCardScan/QVBizCardManager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using managers::completed;
using managers::completionInto;
using managers::Outcome;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kNoNote = "<WARNING> The request doesn't have a note UUID! Ignored.";
constexpr const char* kNoImages = "<WARNING> The request doesn't contain any images! Ignored.";
constexpr const char* kSameNote = "<WARNING> We already added the same request! Ignored.";

/// What it takes into its queue.
using QVBizCardManagerRefusalTest = managers::Manager;

// Refused requests.

struct RefusalCase {
    const char* name;
    QVString note;
    QVImageArray images;
    const char* warning;  ///< null: accepted
};

class ARequest : public QVBizCardManagerRefusalTest, public testing::WithParamInterface<RefusalCase> {};

TEST_P(ARequest, IsCheckedInThisOrder) {
    const auto request = QVCardProcessingRequest::initWithNoteUUID(GetParam().note, GetParam().images, nullptr, "token",
                                                                   /*processImageForOCR=*/false);
    if (!GetParam().warning) {
        EXPECT_TRUE(mManager->canWeAddRequestToQueue(request));
        EXPECT_THAT(mLog.messages(), IsEmpty());
        return;
    }
    EXPECT_FALSE(mManager->canWeAddRequestToQueue(request));
    EXPECT_THAT(mLog.messages(), ElementsAre(GetParam().warning));
    expectRefused(addRequest(request));
    EXPECT_THAT(mLog.messages(), ElementsAre(GetParam().warning, GetParam().warning));
}

INSTANTIATE_TEST_SUITE_P(
    Requests, ARequest,
    testing::Values(RefusalCase{"WithoutNote", std::nullopt, scans::pictures({scans::picture()}), kNoNote},
                    RefusalCase{"WithoutAnything", std::nullopt, nullptr, kNoNote},
                    RefusalCase{"WithoutImages", "note", nullptr, kNoImages},
                    RefusalCase{"WithAnEmptyListOfImages", "note", scans::pictures({}), kNoImages},
                    RefusalCase{"WithAnEmptyNoteAndNoImages", "", scans::pictures({}), kNoImages},
                    RefusalCase{"WithAnEmptyNote", "", scans::pictures({scans::picture()}), nullptr},
                    RefusalCase{"Whole", "note", scans::pictures({scans::picture()}), nullptr}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(QVBizCardManagerRefusalTest, RefusesNoRequestAtAll) {
    expectRefused(addRequest(nullptr));
    EXPECT_THAT(mLog.messages(), ElementsAre(kNoNote));
}

TEST_F(QVBizCardManagerRefusalTest, RunsARequestWithAnEmptyNote) {
    const auto outcome = add("");
    mServer.letGo("");
    expectCompleted(outcome);
    EXPECT_EQ(outcome->response->originalNoteUUID(), "");
    EXPECT_TRUE(mLog.contains(completed("")));
}

TEST_F(QVBizCardManagerRefusalTest, RefusesANoteThatRuns) {
    const auto first = add("a");
    ASSERT_TRUE(mServer.waitForRequests(1));
    expectRefused(add("a"));
    EXPECT_EQ(mLog.count(kSameNote), 1U);
    mServer.letGo("a");
    expectCompleted(first);
    EXPECT_EQ(mServer.tokens().size(), 1U);
}

TEST_F(QVBizCardManagerRefusalTest, ChecksImagesBeforeDuplicates) {
    add("a");
    const auto request = scans::request("a");
    request->setCardImages(nullptr);
    expectRefused(addRequest(request));
    EXPECT_EQ(mLog.count(kNoImages), 1U);
    EXPECT_EQ(mLog.count(kSameNote), 0U);
}

TEST_F(QVBizCardManagerRefusalTest, RefusesANoteThatWaits) {
    for (const char* note : {"a", "b", "c"})
        add(note);
    ASSERT_TRUE(mServer.waitForRequests(3));
    const auto waiting = add("d");
    expectRefused(add("d"));
    EXPECT_EQ(mLog.count(kSameNote), 1U);
    mServer.letAllGo();
    expectCompleted(waiting);
}

TEST_F(QVBizCardManagerRefusalTest, RefusesANoteThatIsCancelledButNotGone) {
    const auto first = add("a");
    ASSERT_TRUE(mServer.waitForRequests(1));
    mManager->cancelRequestWithIDString("a");
    expectRefused(add("a"));
    EXPECT_EQ(mLog.count(kSameNote), 1U);
    mServer.letGo("a");
    expectNeverCalled(first);
    expectCompleted(add("a"));
}

TEST_F(QVBizCardManagerRefusalTest, AcceptsANoteAgainWhenItHasFinished) {
    mServer.letGo("a");
    const auto first = add("a");
    ASSERT_TRUE(first->called.waitFor());
    expectCompleted(add("a"));
    EXPECT_EQ(mLog.count(kSameNote), 0U);
    EXPECT_EQ(mLog.count(completed("a")), 2U);
}

TEST_F(QVBizCardManagerRefusalTest, AcceptsANoteAgainInsideItsCompletionBlock) {
    const auto second = std::make_shared<Outcome>();
    const auto first = add("a", [&] { mManager->addRequest(scans::request("a", "a"), completionInto(second)); });
    mServer.letGo("a");
    expectCompleted(first);
    expectCompleted(second);
    EXPECT_EQ(mLog.count(kSameNote), 0U);
}

TEST_F(QVBizCardManagerRefusalTest, TellsNotesApartByTheirLetters) {
    const auto upper = add("Note");
    const auto lower = add("note");
    ASSERT_TRUE(mServer.waitForRequests(2));
    EXPECT_EQ(mLog.count(kSameNote), 0U);
    mManager->cancelRequestWithIDString("NOTE");
    mManager->cancelRequestWithIDString("note");
    mServer.letAllGo();
    expectCompleted(upper);
    expectNeverCalled(lower);
}

}  // namespace
