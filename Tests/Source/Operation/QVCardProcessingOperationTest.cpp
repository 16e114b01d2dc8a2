#include "QVCardScan/QVCardProcessingOperation.h"
#include "QVPlatform/AssertionHandler.h"
#include "ScanFixtures.h"
#include "Support/CapturedLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testsupport::CapturedLog;
using testsupport::ScriptedServer;

class QVCardProcessingOperationTest : public testing::Test {
  protected:
    std::shared_ptr<QVCardProcessingOperation> operation() {
        return scans::operationFor(mRequest, mServer.url("/recognise"));
    }

    CapturedLog mLog;
    ScriptedServer mServer;
    std::shared_ptr<QVCardProcessingRequest> mRequest = scans::request();
};

TEST_F(QVCardProcessingOperationTest, HoldsWhatItIsMadeWith) {
    const auto made = operation();
    EXPECT_EQ(made->request(), mRequest);
    ASSERT_TRUE(made->serverURL());
    EXPECT_EQ(made->serverURL()->absoluteString(), mServer.url("/recognise"));
    EXPECT_EQ(made->response(), nullptr);
    EXPECT_EQ(made->contactNoteDataSource(), nullptr);
    EXPECT_FALSE(made->isCancelled());
    EXPECT_FALSE(made->isFinished());
    EXPECT_FALSE(QVCardProcessingOperation::initWithRequest(mRequest, std::nullopt)->serverURL());
}

TEST_F(QVCardProcessingOperationTest, ReplacesItsRequest) {
    const auto made = operation();
    const auto other = scans::request("other");
    made->setRequest(other);
    EXPECT_EQ(made->request(), other);
    EXPECT_EQ(made->operationID(), "other");
}

TEST_F(QVCardProcessingOperationTest, DoesNotOwnItsDataSource) {
    const auto made = operation();
    auto dataSource = std::make_shared<QVContactNoteDataSource>();
    made->setContactNoteDataSource(dataSource);
    EXPECT_EQ(made->contactNoteDataSource(), dataSource);
    dataSource.reset();
    EXPECT_EQ(made->contactNoteDataSource(), nullptr);
}

TEST_F(QVCardProcessingOperationTest, IsKnownByItsRequestsNote) {
    for (const QVString& note : {QVString("note"), QVString(""), QVString("ÄÖ 漢字"), QVString()}) {
        EXPECT_EQ(scans::operationFor(scans::request(note), "http://127.0.0.1/")->operationID(), note);
    }
    EXPECT_EQ(scans::operationFor(nullptr, "http://127.0.0.1/")->operationID(), std::nullopt);
}

TEST_F(QVCardProcessingOperationTest, FollowsItsRequestsNote) {
    const auto made = operation();
    mRequest->setNoteUUID("renamed");
    EXPECT_EQ(made->operationID(), "renamed");
}

TEST_F(QVCardProcessingOperationTest, DoesNothingWhenCancelledBefore) {
    const auto made = operation();
    made->cancel();
    made->main();
    EXPECT_EQ(made->response(), nullptr);
    EXPECT_THAT(mLog.messages(), IsEmpty());
    EXPECT_EQ(mServer.connectionCount(), 0U);
}

TEST_F(QVCardProcessingOperationTest, DoesNothingWhenCancelledBeforeWithoutAServer) {
    const auto made = QVCardProcessingOperation::initWithRequest(scans::request("note", std::nullopt), std::nullopt);
    made->cancel();
    made->main();
    EXPECT_EQ(made->response(), nullptr);
    EXPECT_THAT(mLog.messages(), IsEmpty());
}

TEST_F(QVCardProcessingOperationTest, RunsToItsEndWhenCancelledMeanwhile) {
    const auto made = operation();
    mRequest->setCardImages(scans::pictures({scans::picture(), scans::picture(2, 64)}));
    mServer.handle([&made](testsupport::ScriptedConnection& connection, const testsupport::ScriptedRequest&) {
        made->cancel();
        connection.write(scans::answer({scans::kName}));
    });
    mServer.respond(scans::answer({scans::kTitle}));
    made->main();
    EXPECT_TRUE(made->isCancelled());
    EXPECT_EQ(mServer.requests().size(), 2U);
    ASSERT_TRUE(made->response());
    EXPECT_TRUE(made->response()->contact());
}

TEST_F(QVCardProcessingOperationTest, AnswersWithErrorOneWithoutAServer) {
    const auto made = QVCardProcessingOperation::initWithRequest(mRequest, std::nullopt);
    made->main();
    EXPECT_THAT(mLog.messages(),
                ElementsAre("Performing operation with ID: note-1", "<ERROR> CardScan server url is not set!"));
    const auto response = made->response();
    ASSERT_TRUE(response);
    EXPECT_THAT(scans::codesOf(response->errors()), ElementsAre(1));
    EXPECT_TRUE(response->errors()->front().userInfo.empty());
    EXPECT_EQ(response->originalNoteUUID(), std::nullopt);
    EXPECT_EQ(response->cardImages(), nullptr);
    EXPECT_EQ(response->contact(), nullptr);
    EXPECT_EQ(response->card(), nullptr);
    EXPECT_EQ(response->qvmlContent(), std::nullopt);
    EXPECT_EQ(response->rawResultForFirstCard(), std::nullopt);
}

TEST_F(QVCardProcessingOperationTest, LooksAtTheServerBeforeTheToken) {
    const auto made = QVCardProcessingOperation::initWithRequest(scans::request("note", std::nullopt), std::nullopt);
    made->main();
    ASSERT_TRUE(made->response());
    EXPECT_THAT(scans::codesOf(made->response()->errors()), ElementsAre(1));
    EXPECT_FALSE(mLog.mentions("Assertion"));
}

TEST_F(QVCardProcessingOperationTest, LogsAnEmptyAndAnAbsentNote) {
    QVCardProcessingOperation::initWithRequest(scans::request(""), std::nullopt)->main();
    EXPECT_EQ(mLog.messages().at(0), "Performing operation with ID: ");
    mLog.clear();
    QVCardProcessingOperation::initWithRequest(scans::request(std::nullopt), std::nullopt)->main();
    EXPECT_EQ(mLog.messages().at(0), "Performing operation with ID: (null)");
}

class AMissingToken : public QVCardProcessingOperationTest {
  protected:
    AMissingToken() { mRequest->setAuthToken(std::nullopt); }
    ~AMissingToken() override { qv::AssertionHandler::setHandler({}); }
};

TEST_F(AMissingToken, IsAnAssertionAndTheEnd) {
    std::vector<std::string> failures;
    qv::AssertionHandler::setHandler([&](const qv::AssertionFailure& failure) {
        failures.push_back(std::string(failure.description) + "|" + std::string(failure.file) + "|" +
                           std::to_string(failure.line));
    });
    const auto made = operation();
    made->main();
    EXPECT_THAT(failures, ElementsAre("Authentication token cannot be nil!|QVCardProcessingOperation|155"));
    EXPECT_EQ(made->response(), nullptr);
    EXPECT_EQ(mServer.connectionCount(), 0U);
    EXPECT_THAT(mLog.messages(), ElementsAre("Performing operation with ID: note-1"));
}

TEST_F(AMissingToken, IsLoggedWithoutAHandler) {
    const auto made = operation();
    made->main();
    EXPECT_THAT(mLog.messages(), ElementsAre("Performing operation with ID: note-1",
                                             "<ERROR> Assertion failed: Authentication token cannot be nil! in main "
                                             "(QVCardProcessingOperation:155)"));
    EXPECT_EQ(made->response(), nullptr);
    EXPECT_EQ(mServer.connectionCount(), 0U);
}

TEST_F(AMissingToken, EndsTheWorkAlsoWhenTheHandlerThrows) {
    qv::AssertionHandler::setHandler([](const qv::AssertionFailure&) { throw std::logic_error("stop"); });
    const auto made = operation();
    EXPECT_NO_THROW(made->main());
    EXPECT_EQ(made->response(), nullptr);
    EXPECT_EQ(mServer.connectionCount(), 0U);
}

TEST_F(AMissingToken, IsNotAnEmptyOne) {
    mRequest->setAuthToken("");
    mServer.respond(scans::answer({scans::kName}));
    const auto made = operation();
    made->main();
    EXPECT_TRUE(made->response());
    ASSERT_EQ(mServer.requests().size(), 1U);
    EXPECT_EQ(mServer.requests()[0].header("auth"), "");
}

TEST_F(QVCardProcessingOperationTest, GivesTheVeryImageBackForOCR) {
    const auto image = scans::picture();
    EXPECT_EQ(operation()->processNSImageForOCR(image), image);
    EXPECT_EQ(operation()->processNSImageForOCR(nullptr), nullptr);
    EXPECT_THAT(mLog.messages(), IsEmpty());
}

struct CompressionCase {
    const char* name;
    int width;
    int height;
    int expectedWidth;
    int expectedHeight;
};

class CompressedCardImage : public testing::TestWithParam<CompressionCase> {};

TEST_P(CompressedCardImage, FitsTheServersBox) {
    const CompressionCase& row = GetParam();
    const CapturedLog log;
    const auto operation = scans::operationFor(scans::request(), "http://127.0.0.1/");
    const auto data = operation->compressedCardImageDataFromNSImage(scans::picture(row.width, row.height));
    ASSERT_TRUE(data);
    const auto facts = testsupport::factsOfJPEG(*data);
    EXPECT_EQ(facts.width, row.expectedWidth);
    EXPECT_EQ(facts.height, row.expectedHeight);
    EXPECT_EQ(facts.sampling, "4:2:0");
    EXPECT_THAT(log.messages(), ElementsAre("<INFO> Compressing card image"));
}

INSTANTIATE_TEST_SUITE_P(Sizes, CompressedCardImage,
                         testing::Values(CompressionCase{"Wide", 2048, 1024, 1024, 512},
                                         CompressionCase{"Enlarged", 500, 300, 1024, 614},
                                         CompressionCase{"Exact", 1024, 1024, 1024, 1024}),
                         [](const auto& row) { return row.param.name; });

TEST_F(QVCardProcessingOperationTest, CompressesNothingToNothing) {
    for (const auto& image : {std::shared_ptr<qv::Image>(), qv::Image::initWithData({'n', 'o'})}) {
        mLog.clear();
        EXPECT_FALSE(operation()->compressedCardImageDataFromNSImage(image));
        EXPECT_THAT(mLog.messages(), ElementsAre("<INFO> Compressing card image"));
    }
}

TEST_F(QVCardProcessingOperationTest, CompressesTheSameEachTime) {
    const auto image = scans::picture(80, 20);
    EXPECT_EQ(operation()->compressedCardImageDataFromNSImage(image),
              operation()->compressedCardImageDataFromNSImage(image));
}

}  // namespace
