#include "QVCardScan/QVBusinessCardField.h"
#include "QVCardScan/QVCardProcessingOperation.h"
#include "QVCardScan/QVVeltoContactField.h"
#include "QVPlatform/Bundle.h"
#include "ScanFixtures.h"
#include "Support/CapturedLog.h"
#include "Support/ResourceFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

namespace {

using scans::Item;
using scans::kEmail;
using scans::kName;
using scans::kPhone;
using scans::kTitle;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;
using testing::Pointee;
using testsupport::CapturedLog;
using testsupport::ScriptedServer;

/// The answers that are no card: nothing readable, and nothing at all.
const std::string kNoCard = ScriptedServer::answer(200, "no card");
const std::string kUnreadable = ScriptedServer::answer(200, "");

/// What the host knows.
class DataSource : public QVContactNoteDataSource {
  public:
    using Match = std::function<std::shared_ptr<QVVeltoContact>()>;
    explicit DataSource(Match match, bool isImplemented = true)
        : mMatch(std::move(match)), mIsImplemented(isImplemented) {}

    bool implementsContactMatchingFullName() const override { return mIsImplemented; }
    std::shared_ptr<QVVeltoContact> contactMatchingFullName(const QVString& fullName, const QVString& firstName,
                                                            const QVString& lastName, const QVString& email,
                                                            const QVString& phone) override {
        calls.push_back({fullName, firstName, lastName, email, phone});
        return mMatch();
    }

    std::vector<std::vector<QVString>> calls;

  private:
    Match mMatch;
    bool mIsImplemented;
};

std::shared_ptr<DataSource> dataSourceWith(DataSource::Match match) {
    return std::make_shared<DataSource>(std::move(match));
}

/// A request with a front and a back, whose pictures differ in shape, run from end to end.
class QVCardProcessingPipelineTest : public testing::Test {
  protected:
    QVCardProcessingPipelineTest() {
        qv::Bundle::setLocalizer([](std::string_view) { return std::nullopt; });
        mRequest->setCardImages(scans::pictures({mFront, mBack}));
        mRequest->setImageHashes(mHashes);
    }
    ~QVCardProcessingPipelineTest() override { qv::Bundle::setLocalizer({}); }

    std::shared_ptr<QVCardProcessingResponse> process() {
        const auto operation = scans::operationFor(mRequest, mServer.url());
        operation->setContactNoteDataSource(mDataSource);
        operation->main();
        return operation->response();
    }

    /// With the server's answers, in the order it is asked; it must be asked for all of them and for no more.
    std::shared_ptr<QVCardProcessingResponse> run(const std::vector<std::string>& answers) {
        for (const std::string& answer : answers)
            mServer.respond(answer);
        const auto response = process();
        EXPECT_EQ(mServer.requests().size(), answers.size());
        return response;
    }

    /// "front", "back" or "other", for each picture that the server got.
    std::vector<std::string> sides() const {
        std::vector<std::string> sides;
        for (const auto& request : mServer.requests()) {
            const auto facts = testsupport::factsOfJPEG({request.body.begin(), request.body.end()});
            sides.push_back(facts.width == 1024 && facts.height == 32   ? "front"
                            : facts.width == 32 && facts.height == 1024 ? "back"
                                                                        : "other");
        }
        return sides;
    }

    /// What was logged, without the parser's own trace.
    std::vector<std::string> log() const {
        std::vector<std::string> lines;
        for (const std::string& line : mLog.messages()) {
            if (line.find("Parser ") == std::string::npos) lines.push_back(line);
        }
        return lines;
    }

    CapturedLog mLog;
    ScriptedServer mServer;
    const std::shared_ptr<qv::Image> mFront = scans::picture(64, 2);
    const std::shared_ptr<qv::Image> mBack = scans::picture(2, 64);
    const QVStringArray mHashes = scans::strings({"front-hash", "back-hash"});
    std::shared_ptr<QVCardProcessingRequest> mRequest = scans::request();
    std::shared_ptr<DataSource> mDataSource;
};

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

// What the response holds.

TEST_F(QVCardProcessingPipelineTest, HoldsTheCardAloneWhenTheNoteIsSkipped) {
    mRequest->setSkipNoteGeneration(true);
    mDataSource = dataSourceWith([] { return std::make_shared<QVVeltoContact>(); });
    const auto response = run({scans::answer({kName, kTitle, kEmail})});
    ASSERT_TRUE(response->card());
    EXPECT_EQ(response->card()->fullName(), "Jordan Example");
    EXPECT_EQ(response->contact(), nullptr);
    EXPECT_EQ(response->qvmlContent(), std::nullopt);
    EXPECT_EQ(response->avatars(), nullptr);
    EXPECT_EQ(response->contactName(), "Jordan Example");
    EXPECT_THAT(mDataSource->calls, IsEmpty());
}

TEST_F(QVCardProcessingPipelineTest, HoldsContactAndNoteOtherwise) {
    const auto response = run({scans::answer({kName, kTitle, kEmail})});
    EXPECT_EQ(response->card(), nullptr);
    ASSERT_TRUE(response->contact());
    EXPECT_EQ(response->contact()->fullName(), "Jordan Example");
    EXPECT_EQ(response->contact()->jobTitle(), "Head");
    EXPECT_THAT(response->contact()->resourceHashes(), Pointee(ElementsAre("front-hash", "back-hash")));
    EXPECT_EQ(response->avatars(), nullptr);
    ASSERT_TRUE(response->qvmlContent());
    for (const char* text : {"Jordan Example", "Head", "jordan@example.com", "front-hash", "back-hash"})
        EXPECT_THAT(*response->qvmlContent(), HasSubstr(text));
}

TEST_F(QVCardProcessingPipelineTest, HoldsAContactWithoutANoteWhenTheTemplateIsMissing) {
    const testsupport::ResourceFolder empty;
    const auto response = run({scans::answer({kName, kTitle, kEmail})});
    EXPECT_TRUE(response->contact());
    EXPECT_EQ(response->qvmlContent(), std::nullopt);
    EXPECT_THAT(response->errors(), Pointee(IsEmpty()));
}

TEST_F(QVCardProcessingPipelineTest, CollectsErrorsInTheirOrder) {
    mServer.respondAndClose("");
    mServer.respond(kUnreadable);
    const auto response = process();
    EXPECT_THAT(scans::codesOf(response->errors()), ElementsAre(2, 3));
    EXPECT_EQ(scans::underlyingErrorOf(response->errors()->at(0)).domain, "QVURLErrorDomain");
    EXPECT_EQ(response->rawResultForFirstCard(), std::nullopt);
    EXPECT_EQ(response->rawResultForSecondCard(), std::nullopt);
    EXPECT_TRUE(response->qvmlContent());
}

TEST_F(QVCardProcessingPipelineTest, GoesOnWithTheBackAfterAnError) {
    mServer.respondAndClose("");
    mServer.respond(scans::answer({kName, kTitle, kEmail}));
    const auto response = process();
    EXPECT_THAT(scans::codesOf(response->errors()), ElementsAre(2));
    EXPECT_EQ(response->contactName(), "Jordan Example");
    EXPECT_EQ(response->rawResultForFirstCard(), std::nullopt);
    EXPECT_EQ(response->rawResultForSecondCard(), scans::result({kName, kTitle, kEmail}));
}

TEST_F(QVCardProcessingPipelineTest, KeepsTheFrontAfterAnErrorOfTheBack) {
    const auto response = run({scans::answer({kName}), kUnreadable});
    EXPECT_THAT(scans::codesOf(response->errors()), ElementsAre(3));
    EXPECT_EQ(response->contactName(), "Jordan Example");
    EXPECT_EQ(response->rawResultForFirstCard(), scans::result({kName}));
    EXPECT_EQ(response->rawResultForSecondCard(), std::nullopt);
}

TEST_F(QVCardProcessingPipelineTest, ReportsNoErrorForMalformedAnswers) {
    const auto response = run(
        {ScriptedServer::answer(200, "<recoIndex><item"), ScriptedServer::answer(500, scans::result({kName}) + "<")});
    EXPECT_THAT(response->errors(), Pointee(IsEmpty()));
    EXPECT_EQ(response->contactName(), "Jordan Example");
    EXPECT_EQ(response->rawResultForFirstCard(), "<recoIndex><item");
}

// What the host knows already.

TEST_F(QVCardProcessingPipelineTest, AsksTheDataSourceByNameAndFirstEmail) {
    mDataSource = dataSourceWith([] { return nullptr; });
    run({scans::answer({kName, kTitle, kEmail, {"EMAIL", "second@example.com"}, kPhone})});
    ASSERT_EQ(mDataSource->calls.size(), 1U);
    EXPECT_THAT(mDataSource->calls[0], ElementsAre(QVString("Jordan Example"), std::nullopt, std::nullopt,
                                                   QVString("jordan@example.com"), std::nullopt));
}

TEST_F(QVCardProcessingPipelineTest, AsksTheDataSourceWithWhatThereIs) {
    mDataSource = dataSourceWith([] { return nullptr; });
    run({kNoCard, scans::answer({kPhone})});
    ASSERT_EQ(mDataSource->calls.size(), 1U);
    EXPECT_THAT(mDataSource->calls[0],
                ElementsAre(std::nullopt, std::nullopt, std::nullopt, std::nullopt, std::nullopt));
}

TEST_F(QVCardProcessingPipelineTest, AsksTheDataSourceWithoutAnyCard) {
    mDataSource = dataSourceWith([] { return nullptr; });
    run({kNoCard, kNoCard});
    EXPECT_EQ(mDataSource->calls.size(), 1U);
}

TEST_F(QVCardProcessingPipelineTest, AsksNoDataSourceThatCannotMatch) {
    mDataSource = std::make_shared<DataSource>([] { return std::make_shared<QVVeltoContact>(); },
                                               /*isImplemented=*/false);
    const auto response = run({scans::answer({kName, kTitle, kEmail})});
    EXPECT_THAT(mDataSource->calls, IsEmpty());
    EXPECT_EQ(response->contact()->company(), std::nullopt);
    EXPECT_FALSE(mLog.mentions("Merged Contact"));
}

TEST_F(QVCardProcessingPipelineTest, MergesNothingWhenThereIsNoMatch) {
    mDataSource = dataSourceWith([] { return nullptr; });
    const auto response = run({scans::answer({kName, kTitle, kEmail})});
    EXPECT_EQ(response->contact()->fullName(), "Jordan Example");
    EXPECT_FALSE(mLog.mentions("Merged Contact"));
}

TEST_F(QVCardProcessingPipelineTest, MergesTheHostsContact) {
    const auto match = std::make_shared<QVVeltoContact>();
    match->setFullName("J. Example");
    match->setCompany("Example Ltd.");
    match->setJobTitle("Old Title");
    match->setResourceHashes(scans::strings({"old-hash"}));
    mDataSource = dataSourceWith([&] { return match; });
    const auto response = run({scans::answer({kName, kTitle, kEmail})});
    const auto contact = response->contact();
    EXPECT_NE(contact, match);
    EXPECT_EQ(contact->fullName(), "Jordan Example");
    EXPECT_EQ(contact->jobTitle(), "Head");
    EXPECT_EQ(contact->company(), "Example Ltd.");
    EXPECT_THAT(contact->resourceHashes(), Pointee(ElementsAre("front-hash", "back-hash")));
    EXPECT_EQ(mLog.count("<INFO> Merged Contact:\n" + contact->description()), 1U);
    EXPECT_THAT(*response->qvmlContent(), HasSubstr("Example Ltd."));
    EXPECT_EQ(match->fullName(), "J. Example");
}

TEST_F(QVCardProcessingPipelineTest, HandsOutTheAvatarOfTheHostsContact) {
    const auto match = std::make_shared<QVVeltoContact>();
    const auto avatar = scans::picture(8, 8);
    match->setAvatar(avatar);
    mDataSource = dataSourceWith([&] { return match; });
    const auto response = run({scans::answer({kName, kTitle, kEmail})});
    ASSERT_TRUE(response->avatars());
    EXPECT_THAT(response->avatars(), Pointee(ElementsAre(avatar)));
    EXPECT_EQ(response->contact()->avatar(), avatar);
}

TEST_F(QVCardProcessingPipelineTest, MakesTheNoteAlsoWhenTheDataSourceFails) {
    mDataSource = dataSourceWith([]() -> std::shared_ptr<QVVeltoContact> { throw std::runtime_error("no database"); });
    const auto response = run({scans::answer({kName, kTitle, kEmail})});
    EXPECT_TRUE(mLog.contains("<ERROR> The contact data source failed: no database"));
    EXPECT_EQ(response->contact()->fullName(), "Jordan Example");
    EXPECT_TRUE(response->qvmlContent());
    EXPECT_THAT(response->errors(), Pointee(IsEmpty()));
}

TEST_F(QVCardProcessingPipelineTest, MakesTheNoteWhateverTheDataSourceThrows) {
    mDataSource = dataSourceWith([]() -> std::shared_ptr<QVVeltoContact> { throw 7; });
    const auto response = run({scans::answer({kName, kTitle, kEmail})});
    EXPECT_TRUE(mLog.contains("<ERROR> The contact data source failed"));
    EXPECT_TRUE(response->qvmlContent());
}

/// Fails before it can even be asked.
class BrokenDataSource : public QVContactNoteDataSource {
  public:
    bool implementsContactMatchingFullName() const override { throw std::runtime_error("closed"); }
};

TEST_F(QVCardProcessingPipelineTest, MakesTheNoteWhenTheDataSourceCannotBeAsked) {
    mServer.respond(scans::answer({kName, kTitle, kEmail}));
    const auto broken = std::make_shared<BrokenDataSource>();
    const auto operation = scans::operationFor(mRequest, mServer.url());
    operation->setContactNoteDataSource(broken);
    operation->main();
    EXPECT_TRUE(mLog.contains("<ERROR> The contact data source failed: closed"));
    ASSERT_TRUE(operation->response());
    EXPECT_TRUE(operation->response()->qvmlContent());
}

TEST_F(QVCardProcessingPipelineTest, ManagesWithoutADataSourceThatIsGone) {
    mServer.respond(scans::answer({kName, kTitle, kEmail}));
    const auto operation = scans::operationFor(mRequest, mServer.url());
    operation->setContactNoteDataSource(dataSourceWith([] { return std::make_shared<QVVeltoContact>(); }));
    operation->main();
    EXPECT_TRUE(operation->response()->qvmlContent());
    EXPECT_FALSE(mLog.mentions("Merged Contact"));
}

// What is logged, apart from the parser's trace.

TEST_F(QVCardProcessingPipelineTest, LogsItsStepsInOrder) {
    mDataSource = dataSourceWith([] { return std::make_shared<QVVeltoContact>(); });
    const std::string sending = "<INFO> Sending card to " + mServer.url();
    const auto response = run({scans::answer({kName}), scans::answer({})});
    EXPECT_THAT(log(), ElementsAre("Performing operation with ID: note-1", "<INFO> Compressing card image", sending,
                                   "<INFO> Compressing card image", sending,
                                   testing::StartsWith("<Debug> Card reco result: Business Card\n"),
                                   "<INFO> Merged Contact:\n" + response->contact()->description()));
}

TEST_F(QVCardProcessingPipelineTest, LogsTheMergedCard) {
    mRequest->setSkipNoteGeneration(true);
    const auto response = run({scans::answer({kName}), scans::answer({kEmail})});
    EXPECT_EQ(mLog.count("<Debug> Card reco result: " + response->card()->description()), 1U);
    EXPECT_THAT(response->card()->description(), HasSubstr("jordan@example.com"));
    EXPECT_FALSE(mLog.mentions("token-1"));
}

}  // namespace
