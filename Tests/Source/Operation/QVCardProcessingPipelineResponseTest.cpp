#include "PipelineFixtures.h"
#include "QVCardScan/QVCardProcessingOperation.h"
#include "Support/ResourceFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

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
using testing::Pointee;
using testsupport::ScriptedServer;

/// From the card to contact and note.
using QVCardProcessingPipelineResponseTest = scans::Pipeline;

// What the response holds.

TEST_F(QVCardProcessingPipelineResponseTest, HoldsTheCardAloneWhenTheNoteIsSkipped) {
    mRequest->setSkipNoteGeneration(true);
    mDataSource = scans::dataSourceWith([] { return std::make_shared<QVVeltoContact>(); });
    const auto response = run({scans::answer({kName, kTitle, kEmail})});
    ASSERT_TRUE(response->card());
    EXPECT_EQ(response->card()->fullName(), "Jordan Example");
    EXPECT_EQ(response->contact(), nullptr);
    EXPECT_EQ(response->qvmlContent(), std::nullopt);
    EXPECT_EQ(response->avatars(), nullptr);
    EXPECT_EQ(response->contactName(), "Jordan Example");
    EXPECT_THAT(mDataSource->calls, IsEmpty());
}

TEST_F(QVCardProcessingPipelineResponseTest, HoldsContactAndNoteOtherwise) {
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

TEST_F(QVCardProcessingPipelineResponseTest, HoldsAContactWithoutANoteWhenTheTemplateIsMissing) {
    const testsupport::ResourceFolder empty;
    const auto response = run({scans::answer({kName, kTitle, kEmail})});
    EXPECT_TRUE(response->contact());
    EXPECT_EQ(response->qvmlContent(), std::nullopt);
    EXPECT_THAT(response->errors(), Pointee(IsEmpty()));
}

TEST_F(QVCardProcessingPipelineResponseTest, CollectsErrorsInTheirOrder) {
    mServer.respondAndClose("");
    mServer.respond(kUnreadable);
    const auto response = process();
    EXPECT_THAT(scans::codesOf(response->errors()), ElementsAre(2, 3));
    EXPECT_EQ(scans::underlyingErrorOf(response->errors()->at(0)).domain, "QVURLErrorDomain");
    EXPECT_EQ(response->rawResultForFirstCard(), std::nullopt);
    EXPECT_EQ(response->rawResultForSecondCard(), std::nullopt);
    EXPECT_TRUE(response->qvmlContent());
}

TEST_F(QVCardProcessingPipelineResponseTest, GoesOnWithTheBackAfterAnError) {
    mServer.respondAndClose("");
    mServer.respond(scans::answer({kName, kTitle, kEmail}));
    const auto response = process();
    EXPECT_THAT(scans::codesOf(response->errors()), ElementsAre(2));
    EXPECT_EQ(response->contactName(), "Jordan Example");
    EXPECT_EQ(response->rawResultForFirstCard(), std::nullopt);
    EXPECT_EQ(response->rawResultForSecondCard(), scans::result({kName, kTitle, kEmail}));
}

TEST_F(QVCardProcessingPipelineResponseTest, KeepsTheFrontAfterAnErrorOfTheBack) {
    const auto response = run({scans::answer({kName}), kUnreadable});
    EXPECT_THAT(scans::codesOf(response->errors()), ElementsAre(3));
    EXPECT_EQ(response->contactName(), "Jordan Example");
    EXPECT_EQ(response->rawResultForFirstCard(), scans::result({kName}));
    EXPECT_EQ(response->rawResultForSecondCard(), std::nullopt);
}

TEST_F(QVCardProcessingPipelineResponseTest, ReportsNoErrorForMalformedAnswers) {
    const auto response = run(
        {ScriptedServer::answer(200, "<recoIndex><item"), ScriptedServer::answer(500, scans::result({kName}) + "<")});
    EXPECT_THAT(response->errors(), Pointee(IsEmpty()));
    EXPECT_EQ(response->contactName(), "Jordan Example");
    EXPECT_EQ(response->rawResultForFirstCard(), "<recoIndex><item");
}

// What the host knows already.

TEST_F(QVCardProcessingPipelineResponseTest, AsksTheDataSourceByNameAndFirstEmail) {
    mDataSource = scans::dataSourceWith([] { return nullptr; });
    run({scans::answer({kName, kTitle, kEmail, {"EMAIL", "second@example.com"}, kPhone})});
    ASSERT_EQ(mDataSource->calls.size(), 1U);
    EXPECT_THAT(mDataSource->calls[0], ElementsAre(QVString("Jordan Example"), std::nullopt, std::nullopt,
                                                   QVString("jordan@example.com"), std::nullopt));
}

TEST_F(QVCardProcessingPipelineResponseTest, AsksTheDataSourceWithWhatThereIs) {
    mDataSource = scans::dataSourceWith([] { return nullptr; });
    run({kNoCard, scans::answer({kPhone})});
    ASSERT_EQ(mDataSource->calls.size(), 1U);
    EXPECT_THAT(mDataSource->calls[0],
                ElementsAre(std::nullopt, std::nullopt, std::nullopt, std::nullopt, std::nullopt));
}

TEST_F(QVCardProcessingPipelineResponseTest, AsksTheDataSourceWithoutAnyCard) {
    mDataSource = scans::dataSourceWith([] { return nullptr; });
    run({kNoCard, kNoCard});
    EXPECT_EQ(mDataSource->calls.size(), 1U);
}

TEST_F(QVCardProcessingPipelineResponseTest, AsksNoDataSourceThatCannotMatch) {
    mDataSource = std::make_shared<scans::DataSource>([] { return std::make_shared<QVVeltoContact>(); },
                                                      /*isImplemented=*/false);
    const auto response = run({scans::answer({kName, kTitle, kEmail})});
    EXPECT_THAT(mDataSource->calls, IsEmpty());
    EXPECT_EQ(response->contact()->company(), std::nullopt);
    EXPECT_FALSE(mLog.mentions("Merged Contact"));
}

TEST_F(QVCardProcessingPipelineResponseTest, MergesNothingWhenThereIsNoMatch) {
    mDataSource = scans::dataSourceWith([] { return nullptr; });
    const auto response = run({scans::answer({kName, kTitle, kEmail})});
    EXPECT_EQ(response->contact()->fullName(), "Jordan Example");
    EXPECT_FALSE(mLog.mentions("Merged Contact"));
}

TEST_F(QVCardProcessingPipelineResponseTest, MergesTheHostsContact) {
    const auto match = std::make_shared<QVVeltoContact>();
    match->setFullName("J. Example");
    match->setCompany("Example Ltd.");
    match->setJobTitle("Old Title");
    match->setResourceHashes(scans::strings({"old-hash"}));
    mDataSource = scans::dataSourceWith([&] { return match; });
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

TEST_F(QVCardProcessingPipelineResponseTest, HandsOutTheAvatarOfTheHostsContact) {
    const auto match = std::make_shared<QVVeltoContact>();
    const auto avatar = scans::picture(8, 8);
    match->setAvatar(avatar);
    mDataSource = scans::dataSourceWith([&] { return match; });
    const auto response = run({scans::answer({kName, kTitle, kEmail})});
    ASSERT_TRUE(response->avatars());
    EXPECT_THAT(response->avatars(), Pointee(ElementsAre(avatar)));
    EXPECT_EQ(response->contact()->avatar(), avatar);
}

TEST_F(QVCardProcessingPipelineResponseTest, MakesTheNoteAlsoWhenTheDataSourceFails) {
    mDataSource =
        scans::dataSourceWith([]() -> std::shared_ptr<QVVeltoContact> { throw std::runtime_error("no database"); });
    const auto response = run({scans::answer({kName, kTitle, kEmail})});
    EXPECT_TRUE(mLog.contains("<ERROR> The contact data source failed: no database"));
    EXPECT_EQ(response->contact()->fullName(), "Jordan Example");
    EXPECT_TRUE(response->qvmlContent());
    EXPECT_THAT(response->errors(), Pointee(IsEmpty()));
}

TEST_F(QVCardProcessingPipelineResponseTest, MakesTheNoteWhateverTheDataSourceThrows) {
    mDataSource = scans::dataSourceWith([]() -> std::shared_ptr<QVVeltoContact> { throw 7; });
    const auto response = run({scans::answer({kName, kTitle, kEmail})});
    EXPECT_TRUE(mLog.contains("<ERROR> The contact data source failed"));
    EXPECT_TRUE(response->qvmlContent());
}

/// Fails before it can even be asked.
class BrokenDataSource : public QVContactNoteDataSource {
  public:
    bool implementsContactMatchingFullName() const override { throw std::runtime_error("closed"); }
};

TEST_F(QVCardProcessingPipelineResponseTest, MakesTheNoteWhenTheDataSourceCannotBeAsked) {
    mServer.respond(scans::answer({kName, kTitle, kEmail}));
    const auto broken = std::make_shared<BrokenDataSource>();
    const auto operation = scans::operationFor(mRequest, mServer.url());
    operation->setContactNoteDataSource(broken);
    operation->main();
    EXPECT_TRUE(mLog.contains("<ERROR> The contact data source failed: closed"));
    ASSERT_TRUE(operation->response());
    EXPECT_TRUE(operation->response()->qvmlContent());
}

TEST_F(QVCardProcessingPipelineResponseTest, ManagesWithoutADataSourceThatIsGone) {
    mServer.respond(scans::answer({kName, kTitle, kEmail}));
    const auto operation = scans::operationFor(mRequest, mServer.url());
    operation->setContactNoteDataSource(scans::dataSourceWith([] { return std::make_shared<QVVeltoContact>(); }));
    operation->main();
    EXPECT_TRUE(operation->response()->qvmlContent());
    EXPECT_FALSE(mLog.mentions("Merged Contact"));
}

// What is logged, apart from the parser's trace.

TEST_F(QVCardProcessingPipelineResponseTest, LogsItsStepsInOrder) {
    mDataSource = scans::dataSourceWith([] { return std::make_shared<QVVeltoContact>(); });
    const std::string sending = "<INFO> Sending card to " + mServer.url();
    const auto response = run({scans::answer({kName}), scans::answer({})});
    EXPECT_THAT(log(), ElementsAre("Performing operation with ID: note-1", "<INFO> Compressing card image", sending,
                                   "<INFO> Compressing card image", sending,
                                   testing::StartsWith("<Debug> Card reco result: Business Card\n"),
                                   "<INFO> Merged Contact:\n" + response->contact()->description()));
}

TEST_F(QVCardProcessingPipelineResponseTest, LogsTheMergedCard) {
    mRequest->setSkipNoteGeneration(true);
    const auto response = run({scans::answer({kName}), scans::answer({kEmail})});
    EXPECT_EQ(mLog.count("<Debug> Card reco result: " + response->card()->description()), 1U);
    EXPECT_THAT(response->card()->description(), HasSubstr("jordan@example.com"));
    EXPECT_FALSE(mLog.mentions("token-1"));
}

}  // namespace
