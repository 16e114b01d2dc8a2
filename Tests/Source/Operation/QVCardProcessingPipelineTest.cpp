#include "PipelineFixtures.h"
#include "QVCardScan/QVBusinessCardField.h"
#include "QVCardScan/QVCardProcessingOperation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using scans::kEmail;
using scans::kName;
using scans::kNoCard;
using scans::kPhone;
using scans::kTitle;
using scans::kUnreadable;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;
using testing::Pointee;
using testsupport::ScriptedServer;

/// From the pictures to the card that wins.
using QVCardProcessingPipelineTest = scans::Pipeline;

// Which images are scanned.

TEST_F(QVCardProcessingPipelineTest, AsksOnceForOneImage) {
    mRequest->setCardImages(scans::pictures({mFront}));
    const auto response = run({scans::answer({kName, kTitle, kEmail, kPhone})});
    EXPECT_THAT(sides(), ElementsAre("front"));
    EXPECT_EQ(response->originalNoteUUID(), "note-1");
    EXPECT_EQ(response->contactName(), "Jordan Example");
    EXPECT_THAT(response->contactEmails(), Pointee(ElementsAre("jordan@example.com")));
    EXPECT_THAT(response->contactPhones(), Pointee(ElementsAre("+1 202 555 0142")));
    EXPECT_THAT(response->errors(), Pointee(IsEmpty()));
    EXPECT_EQ(response->imageRotationMap(), nullptr);
    EXPECT_EQ(response->cardImages(), mRequest->cardImages());
    EXPECT_EQ(response->rawResultForFirstCard(), scans::result({kName, kTitle, kEmail, kPhone}));
    EXPECT_EQ(response->rawResultForSecondCard(), std::nullopt);
    EXPECT_FALSE(response->willStartLinkedInSearch());
}

TEST_F(QVCardProcessingPipelineTest, AsksOnceWhenTheOnlyImageIsPoor) {
    mRequest->setCardImages(scans::pictures({mFront}));
    const auto response = run({scans::answer({})});
    EXPECT_EQ(response->rawResultForSecondCard(), std::nullopt);
    EXPECT_THAT(response->errors(), Pointee(IsEmpty()));
}

TEST_F(QVCardProcessingPipelineTest, LeavesTheBackWhenTheFrontIsGoodEnough) {
    // Neither a name nor a phone number is asked of it.
    const auto response = run({scans::answer({kTitle, kEmail})});
    EXPECT_THAT(sides(), ElementsAre("front"));
    EXPECT_EQ(response->rawResultForSecondCard(), std::nullopt);
    EXPECT_EQ(response->cardImages()->size(), 2U);
}

struct PoorFront {
    const char* name;
    std::string answer;
};

class APoorFront : public QVCardProcessingPipelineTest, public testing::WithParamInterface<PoorFront> {};

TEST_P(APoorFront, HasItsBackScanned) {
    const auto response = run({GetParam().answer, scans::answer({kPhone})});
    EXPECT_THAT(sides(), ElementsAre("front", "back"));
    EXPECT_EQ(response->rawResultForSecondCard(), scans::result({kPhone}));
    EXPECT_THAT(response->contactPhones(), Pointee(ElementsAre("+1 202 555 0142")));
}

INSTANTIATE_TEST_SUITE_P(Fronts, APoorFront,
                         testing::Values(PoorFront{"WithoutFields", scans::answer({})},
                                         PoorFront{"WithoutEmail", scans::answer({kName, kTitle})},
                                         PoorFront{"WithoutTitle", scans::answer({kName, kEmail})},
                                         PoorFront{"WithoutEnd", ScriptedServer::answer(200, "<recoIndex>")},
                                         PoorFront{"WithoutCard", kNoCard}, PoorFront{"Unreadable", kUnreadable}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(QVCardProcessingPipelineTest, NeverReadsAThirdImage) {
    mRequest->setCardImages(scans::pictures({mFront, mBack, scans::picture(30, 30)}));
    const auto response = run({scans::answer({}), scans::answer({})});
    EXPECT_THAT(sides(), ElementsAre("front", "back"));
    EXPECT_EQ(response->cardImages()->size(), 3U);
}

TEST_F(QVCardProcessingPipelineTest, PassesImagesThroughTheHook) {
    mRequest->setProcessImageForOCR(true);
    mRequest->setSkipNoteGeneration(true);
    const auto response = run({scans::answer({}), scans::answer({})});
    EXPECT_THAT(sides(), ElementsAre("front", "back"));
    EXPECT_EQ(response->card()->frontImage(), mFront);
    EXPECT_EQ(response->card()->backImage(), mBack);
}

TEST_F(QVCardProcessingPipelineTest, PassesAnAbsentBackThroughTheHook) {
    mRequest->setProcessImageForOCR(true);
    mRequest->setCardImages(scans::pictures({mFront}));
    EXPECT_EQ(run({scans::answer({})})->rawResultForSecondCard(), std::nullopt);
}

TEST_F(QVCardProcessingPipelineTest, SendsNothingOfAnImageThatCannotBeRead) {
    mRequest->setCardImages(scans::pictures({qv::Image::initWithData({'n', 'o'}), mBack}));
    const auto response = run({kUnreadable, scans::answer({kName})});
    EXPECT_EQ(mServer.requests()[0].body, "");
    EXPECT_THAT(scans::codesOf(response->errors()), ElementsAre(3));
    EXPECT_EQ(response->contactName(), "Jordan Example");
}

TEST_F(QVCardProcessingPipelineTest, ScansARequestWithoutImages) {
    // The manager refuses such a request; the operation must live with one whose images went meanwhile.
    for (const QVImageArray& images : {QVImageArray(), scans::pictures({}), scans::pictures({nullptr, nullptr})}) {
        ScriptedServer server;
        server.respond(kNoCard);
        mRequest->setCardImages(images);
        const auto operation = scans::operationFor(mRequest, server.url());
        operation->main();
        EXPECT_EQ(server.requests().size(), 1U);
        EXPECT_TRUE(operation->response()->contact());
    }
}

// Which card wins.

TEST_F(QVCardProcessingPipelineTest, PutsTheBackFirstWhenItScoresHigher) {
    const auto response = run({scans::answer({kPhone}), scans::answer({kName, {"TITLE", "Head", 180}})});
    EXPECT_THAT(mRequest->imageHashes(), Pointee(ElementsAre("back-hash", "front-hash")));
    EXPECT_THAT(response->contact()->resourceHashes(), Pointee(ElementsAre("back-hash", "front-hash")));
    EXPECT_THAT(response->cardImages(), Pointee(ElementsAre(mFront, mBack)));
    EXPECT_THAT(response->imageRotationMap(), Pointee(ElementsAre(Pair("back-hash", 180))));
    EXPECT_EQ(response->contactName(), "Jordan Example");
    EXPECT_THAT(response->contactPhones(), Pointee(ElementsAre("+1 202 555 0142")));
    EXPECT_EQ(response->rawResultForFirstCard(), scans::result({kPhone}));
    EXPECT_EQ(response->rawResultForSecondCard(), scans::result({kName, {"TITLE", "Head", 180}}));
}

TEST_F(QVCardProcessingPipelineTest, LeavesTheHostsListOfHashesAlone) {
    run({scans::answer({}), scans::answer({kName})});
    EXPECT_THAT(mHashes, Pointee(ElementsAre("front-hash", "back-hash")));
    EXPECT_NE(mRequest->imageHashes(), mHashes);
}

TEST_F(QVCardProcessingPipelineTest, MovesOnlyTheFirstTwoHashes) {
    mRequest->setImageHashes(scans::strings({"a", "b", "c", "d"}));
    run({scans::answer({}), scans::answer({kName})});
    EXPECT_THAT(mRequest->imageHashes(), Pointee(ElementsAre("b", "a", "c", "d")));
}

TEST_F(QVCardProcessingPipelineTest, KeepsTheImagesInOrderOnTheCardWhenTheBackWins) {
    mRequest->setSkipNoteGeneration(true);
    const auto response = run({scans::answer({kPhone}), scans::answer({kName})});
    const auto card = response->card();
    ASSERT_TRUE(card);
    EXPECT_EQ(card->frontImage(), mFront);
    EXPECT_EQ(card->backImage(), mBack);
    ASSERT_EQ(card->fields()->size(), 2U);
    EXPECT_EQ((*card->fields())[0]->text(), "Jordan Example");
    EXPECT_EQ((*card->fields())[1]->text(), "+1 202 555 0142");
}

TEST_F(QVCardProcessingPipelineTest, KeepsTheFrontOnATie) {
    mRequest->setSkipNoteGeneration(true);
    const auto response = run({scans::answer({{"NAME", "Jordan Example", 90}}),
                               scans::answer({{"NAME", "Somebody Else", 180}, {"NAME", "Jordan Example", 180}})});
    EXPECT_EQ(mRequest->imageHashes(), mHashes);
    EXPECT_EQ(response->contactName(), "Jordan Example");
    EXPECT_THAT(response->imageRotationMap(), Pointee(ElementsAre(Pair("front-hash", 90))));
    ASSERT_EQ(response->card()->fields()->size(), 2U);
    EXPECT_EQ((*response->card()->fields())[0]->text(), "Jordan Example");
    EXPECT_EQ((*response->card()->fields())[1]->text(), "Somebody Else");
}

TEST_F(QVCardProcessingPipelineTest, KeepsTheFrontWhenItScoresHigher) {
    const auto response = run({scans::answer({kName, kTitle}), scans::answer({{"NAME", "Other"}, kEmail})});
    EXPECT_EQ(mRequest->imageHashes(), mHashes);
    EXPECT_EQ(response->contactName(), "Jordan Example");
    EXPECT_THAT(response->contactEmails(), Pointee(ElementsAre("jordan@example.com")));
}

TEST_F(QVCardProcessingPipelineTest, KeepsTheFrontWhenTheBackHasNoCard) {
    const auto response = run({scans::answer({kName}), kNoCard});
    EXPECT_EQ(response->contactName(), "Jordan Example");
    EXPECT_EQ(mRequest->imageHashes(), mHashes);
    EXPECT_EQ(response->rawResultForSecondCard(), "no card");
}

// A front without any card.

TEST_F(QVCardProcessingPipelineTest, GivesTheBacksFieldsForAFrontWithoutACard) {
    const auto response = run({kNoCard, scans::answer({{"NAME", "Jordan Example", 90}, kTitle, {"FAX", "5", 90}})});
    EXPECT_THAT(mRequest->imageHashes(), Pointee(ElementsAre("back-hash", "front-hash")));
    EXPECT_EQ(response->contactName(), "Jordan Example");
    EXPECT_THAT(response->imageRotationMap(), Pointee(ElementsAre(Pair("back-hash", 90))));
    EXPECT_TRUE(response->contact());
}

TEST_F(QVCardProcessingPipelineTest, GivesTheBacksFieldsForAFrontWithoutACardOnATie) {
    mRequest->setSkipNoteGeneration(true);
    const auto response = run({kNoCard, scans::answer({kEmail, {"PHONE", "+1 202 555 0142", 90}})});
    EXPECT_EQ(mRequest->imageHashes(), mHashes);
    EXPECT_EQ(response->contactName(), std::nullopt);
    EXPECT_THAT(response->contactEmails(), Pointee(ElementsAre("jordan@example.com")));
    EXPECT_THAT(response->contactPhones(), Pointee(ElementsAre("+1 202 555 0142")));
    // A tie keeps the front, whose rotation is that of no card.
    EXPECT_EQ(response->imageRotationMap(), nullptr);
    ASSERT_TRUE(response->card());
    EXPECT_EQ(response->card()->frontImage(), mFront);
    EXPECT_EQ(response->card()->backImage(), mBack);
    EXPECT_EQ(response->card()->language(), std::nullopt);
}

TEST_F(QVCardProcessingPipelineTest, MakesANoteWithoutAnyCard) {
    const auto response = run({kNoCard, kUnreadable});
    EXPECT_EQ(response->originalNoteUUID(), "note-1");
    EXPECT_EQ(response->contactName(), std::nullopt);
    EXPECT_EQ(response->contactEmails(), nullptr);
    EXPECT_EQ(response->contactPhones(), nullptr);
    EXPECT_EQ(response->imageRotationMap(), nullptr);
    EXPECT_EQ(response->rawResultForFirstCard(), "no card");
    EXPECT_EQ(response->rawResultForSecondCard(), std::nullopt);
    EXPECT_THAT(scans::codesOf(response->errors()), ElementsAre(3));
    ASSERT_TRUE(response->contact());
    EXPECT_EQ(response->contact()->fullName(), std::nullopt);
    EXPECT_TRUE(response->contact()->emailFields()->empty());
    EXPECT_THAT(response->contact()->resourceHashes(), Pointee(ElementsAre("front-hash", "back-hash")));
    ASSERT_TRUE(response->qvmlContent());
    EXPECT_THAT(*response->qvmlContent(), HasSubstr("front-hash"));
    EXPECT_THAT(log(), testing::Contains("<Debug> Card reco result: (null)"));
}

TEST_F(QVCardProcessingPipelineTest, HasNoCardToGiveWithoutAnyCard) {
    mRequest->setSkipNoteGeneration(true);
    const auto response = run({kNoCard, kNoCard});
    EXPECT_EQ(response->card(), nullptr);
    EXPECT_EQ(response->contact(), nullptr);
    EXPECT_THAT(response->errors(), Pointee(IsEmpty()));
}

// Rotation.

struct RotationCase {
    const char* name;
    int orient;
    QVStringArray hashes;
    std::map<std::string, std::int64_t> expected;  ///< empty: no map
};

class TheRotationOfAFront : public QVCardProcessingPipelineTest, public testing::WithParamInterface<RotationCase> {};

TEST_P(TheRotationOfAFront, IsKeyedByTheFirstHash) {
    mRequest->setCardImages(scans::pictures({mFront}));
    mRequest->setImageHashes(GetParam().hashes);
    const auto response = run({scans::answer({{"NAME", "Jordan", GetParam().orient}})});
    if (GetParam().expected.empty()) {
        EXPECT_EQ(response->imageRotationMap(), nullptr);
    } else {
        ASSERT_TRUE(response->imageRotationMap());
        EXPECT_EQ(*response->imageRotationMap(), GetParam().expected);
    }
    EXPECT_EQ(mRequest->imageHashes(), GetParam().hashes);
}

INSTANTIATE_TEST_SUITE_P(Rotations, TheRotationOfAFront,
                         testing::Values(RotationCase{"Quarter", 90, scans::strings({"a", "b"}), {{"a", 90}}},
                                         RotationCase{"Half", 180, scans::strings({"a"}), {{"a", 180}}},
                                         RotationCase{"Negative", -90, scans::strings({"a"}), {{"a", -90}}},
                                         RotationCase{"None", 0, scans::strings({"a", "b"}), {}},
                                         RotationCase{"WithoutHashes", 90, nullptr, {}},
                                         RotationCase{
                                             "WithEmptyHashes", 90, std::make_shared<std::vector<std::string>>(), {}}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(QVCardProcessingPipelineTest, TakesTheRotationOfTheFrontBeforeTheMerge) {
    const auto response = run({scans::answer({{"NAME", "Jordan", 90}}), scans::answer({{"PHONE", "5", 270}})});
    EXPECT_THAT(response->imageRotationMap(), Pointee(ElementsAre(Pair("front-hash", 90))));
}

TEST_F(QVCardProcessingPipelineTest, TakesTheRotationOfTheBackBeforeTheMerge) {
    const auto response = run({scans::answer({{"PHONE", "5", 90}}), scans::answer({kName})});
    EXPECT_THAT(mRequest->imageHashes(), Pointee(ElementsAre("back-hash", "front-hash")));
    EXPECT_EQ(response->imageRotationMap(), nullptr);
}

TEST_F(QVCardProcessingPipelineTest, KeysTheBacksRotationByTheOnlyHash) {
    mRequest->setImageHashes(scans::strings({"only"}));
    const auto response = run({scans::answer({}), scans::answer({{"NAME", "Jordan", 90}})});
    EXPECT_THAT(mRequest->imageHashes(), Pointee(ElementsAre("only")));
    EXPECT_THAT(response->imageRotationMap(), Pointee(ElementsAre(Pair("only", 90))));
    EXPECT_THAT(response->contact()->resourceHashes(), Pointee(ElementsAre("only")));
}

TEST_F(QVCardProcessingPipelineTest, ManagesWithoutHashesWhenTheBackWins) {
    for (const QVStringArray& hashes : {QVStringArray(), scans::strings({})}) {
        ScriptedServer server;
        server.respond(scans::answer({}));
        server.respond(scans::answer({{"NAME", "Jordan", 90}}));
        mRequest->setImageHashes(hashes);
        const auto operation = scans::operationFor(mRequest, server.url());
        operation->main();
        EXPECT_EQ(mRequest->imageHashes() == nullptr, hashes == nullptr);
        EXPECT_EQ(operation->response()->imageRotationMap(), nullptr);
        EXPECT_EQ(operation->response()->contact()->resourceHashes(), nullptr);
    }
}

}  // namespace
