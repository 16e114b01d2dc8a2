#include "QVCardScan/QVCardProcessingOperation.h"
#include "QVPlatform/HTTPClient.h"
#include "QVPlatform/OperationQueue.h"
#include "ServerExchangeFixtures.h"
#include "Support/Gate.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pointee;
using testsupport::ScriptedConnection;
using testsupport::ScriptedRequest;
using testsupport::ScriptedServer;

/// What the server answers.
using QVCardServerExchangeTest = scans::ServerExchange;

// A failure below HTTP.

TEST_F(QVCardServerExchangeTest, FailsWhereNobodyListens) {
    std::string address;
    {
        const ScriptedServer gone;
        address = gone.url();
    }
    expectConnectionFailed(scanAt(address));
}

TEST_F(QVCardServerExchangeTest, FailsWhereNoHostIsFound) {
    // A label of 64 letters is no name at all, so that nobody outside is asked for it.
    expectConnectionFailed(scanAt("http://" + std::string(64, 'a') + ".invalid/"));
}

TEST_F(QVCardServerExchangeTest, FailsWithoutAnAddress) {
    std::optional<qv::Error> error;
    const auto operation = QVCardProcessingOperation::initWithRequest(mRequest, std::nullopt);
    EXPECT_EQ(operation->sendCardSynchronouslyWithData(std::nullopt, scans::kSecretToken, &error), std::nullopt);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, 2);
    EXPECT_TRUE(mLog.contains("<INFO> Sending card to (null)"));
}

struct TransferCase {
    const char* name;
    ScriptedServer::Handler handler;
};

class ABrokenTransfer : public QVCardServerExchangeTest, public testing::WithParamInterface<TransferCase> {};

TEST_P(ABrokenTransfer, IsOneErrorWithoutText) {
    mServer.handle(GetParam().handler);
    expectConnectionFailed(scan());
    EXPECT_EQ(mServer.requests().size(), 1U) << "Nothing is sent again.";
}

/// Whole and well-formed as far as it goes, so that only the broken transfer can keep it from being read.
const std::string kStart = "HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n" + scans::result({scans::kName});

void writeWithoutEnd(ScriptedConnection& connection) {
    const std::string chunk = "100000\r\n" + std::string(0x100000, ' ') + "\r\n";
    connection.write("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n");
    for (int i = 0; i < 17; ++i)
        connection.write(chunk);
    connection.close();
}

INSTANTIATE_TEST_SUITE_P(
    Transfers, ABrokenTransfer,
    testing::Values(
        TransferCase{"EndsBeforeTheAnswer", [](ScriptedConnection& c, const ScriptedRequest&) { c.close(); }},
        TransferCase{"ResetBeforeTheAnswer", [](ScriptedConnection& c, const ScriptedRequest&) { c.reset(); }},
        TransferCase{"EndsInMidBody",
                     [](ScriptedConnection& c, const ScriptedRequest&) {
                         c.write(kStart);
                         c.close();
                     }},
        TransferCase{"ResetInMidBody",
                     [](ScriptedConnection& c, const ScriptedRequest&) {
                         c.write(kStart);
                         c.reset();
                     }},
        TransferCase{"NotHTTP",
                     [](ScriptedConnection& c, const ScriptedRequest&) {
                         c.write(scans::result({scans::kName}));
                         c.close();
                     }},
        TransferCase{"AnnouncesTooMuch",
                     [](ScriptedConnection& c, const ScriptedRequest&) {
                         c.write("HTTP/1.1 200 OK\r\nContent-Length: 16777217\r\n\r\n" + scans::result({scans::kName}));
                         c.waitUntilClosed();
                     }},
        TransferCase{"SendsTooMuch", [](ScriptedConnection& c, const ScriptedRequest&) { writeWithoutEnd(c); }}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(QVCardServerExchangeTest, SaysWhenAnAnswerIsTooLarge) {
    mServer.respond("HTTP/1.1 200 OK\r\nContent-Length: 16777217\r\n\r\n");
    const scans::Scan made = scan();
    ASSERT_THAT(scans::codesOf(made.errors), ElementsAre(2));
    EXPECT_EQ(scans::underlyingErrorOf(made.errors->at(0)).code, static_cast<long>(qv::HTTPErrorCode::AnswerTooLarge));
}

// The operation's thread stays with a server that says nothing until that server ends the connection.
TEST_F(QVCardServerExchangeTest, WaitsForASilentServerUntilItGivesUp) {
    const auto gate = std::make_shared<testsupport::Gate>();
    mServer.handle([gate](ScriptedConnection& connection, const ScriptedRequest&) {
        connection.write(kStart);
        gate->wait();
        connection.close();
    });
    const auto operation = operationAt(mServer.url());
    qv::OperationQueue queue(1);
    queue.addOperation(operation);
    ASSERT_TRUE(mServer.waitForRequests(1));
    EXPECT_EQ(operation->response(), nullptr);
    EXPECT_FALSE(operation->isFinished());
    gate->open();
    queue.waitUntilAllOperationsAreFinished();
    ASSERT_TRUE(operation->response());
    EXPECT_THAT(scans::codesOf(operation->response()->errors()), ElementsAre(2));
    EXPECT_EQ(operation->response()->rawResultForFirstCard(), std::nullopt);
}

// Any answer, whatever its status.

class AnyStatus : public QVCardServerExchangeTest, public testing::WithParamInterface<int> {};

TEST_P(AnyStatus, WithAResultIsASuccess) {
    mServer.respond(ScriptedServer::answer(GetParam(), scans::result({scans::kName, scans::kTitle})));
    const scans::Scan made = scan();
    EXPECT_THAT(made.errors, Pointee(IsEmpty()));
    ASSERT_TRUE(made.card);
    EXPECT_EQ(made.card->fullName(), "Jordan Example");
    EXPECT_EQ(made.rawResult, scans::result({scans::kName, scans::kTitle}));
}

TEST_P(AnyStatus, WithoutABodyIsUnreadable) {
    mServer.respond(ScriptedServer::answer(GetParam(), ""));
    expectUnreadable(scan());
}

INSTANTIATE_TEST_SUITE_P(Statuses, AnyStatus,
                         testing::Values(200, 201, 301, 302, 400, 401, 403, 404, 413, 500, 502, 503),
                         [](const auto& row) { return "Status" + std::to_string(row.param); });

TEST_F(QVCardServerExchangeTest, TakesNoContentForUnreadable) {
    mServer.respond("HTTP/1.1 204 No Content\r\n\r\n");
    expectUnreadable(scan());
}

TEST_F(QVCardServerExchangeTest, IgnoresTheAnswersHeaders) {
    mServer.respond(ScriptedServer::answer(200, scans::result({{"NAME", "Jörg Müller"}}),
                                           "Content-Type: text/html; charset=iso-8859-1\r\nContent-Language: fr\r\n"));
    const scans::Scan made = scan();
    ASSERT_TRUE(made.card);
    EXPECT_EQ(made.card->fullName(), "Jörg Müller");
}

class ARedirect : public QVCardServerExchangeTest, public testing::WithParamInterface<int> {};

TEST_P(ARedirect, IsNotFollowed) {
    ScriptedServer other;
    other.respond(scans::answer({scans::kName}));
    mServer.respond(ScriptedServer::answer(GetParam(), "", "Location: " + other.url() + "\r\n"));
    expectUnreadable(scan());
    EXPECT_EQ(other.connectionCount(), 0U);
    EXPECT_EQ(mServer.requests().size(), 1U);
}

TEST_P(ARedirect, WithAResultIsReadWhereItIs) {
    ScriptedServer other;
    other.respond(scans::answer({{"NAME", "Somebody Else"}}));
    mServer.respond(
        ScriptedServer::answer(GetParam(), scans::result({scans::kName}), "Location: " + other.url() + "\r\n"));
    const scans::Scan made = scan();
    ASSERT_TRUE(made.card);
    EXPECT_EQ(made.card->fullName(), "Jordan Example");
    EXPECT_EQ(other.connectionCount(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Statuses, ARedirect, testing::Values(301, 302, 303, 307, 308),
                         [](const auto& row) { return "Status" + std::to_string(row.param); });

struct BodyCase {
    const char* name;
    std::string body;
};

std::string nameOf(const testing::TestParamInfo<BodyCase>& row) {
    return row.param.name;
}

class ABodyThatIsNotUTF8 : public QVCardServerExchangeTest, public testing::WithParamInterface<BodyCase> {};

TEST_P(ABodyThatIsNotUTF8, IsUnreadable) {
    mServer.respond(ScriptedServer::answer(200, GetParam().body));
    expectUnreadable(scan());
}

INSTANTIATE_TEST_SUITE_P(
    Bodies, ABodyThatIsNotUTF8,
    testing::Values(BodyCase{"LatinOne", scans::result({{"NAME", "J\xF6rg"}})},
                    BodyCase{"OverlongOfTwo", scans::result({{"NAME", "a\xC0\xAF"}})},
                    BodyCase{"OverlongOfThree", scans::result({{"NAME", "a\xE0\x80\xAF"}})},
                    BodyCase{"OverlongOfFour", scans::result({{"NAME", "a\xF0\x80\x80\xAF"}})},
                    BodyCase{"OverlongNull", scans::result({{"NAME", "a\xC0\x80"}})},
                    BodyCase{"HighSurrogate", scans::result({{"NAME", "a\xED\xA0\x80"}})},
                    BodyCase{"LowSurrogate", scans::result({{"NAME", "a\xED\xBF\xBF"}})},
                    BodyCase{"SurrogatePair", scans::result({{"NAME", "\xED\xA0\xBD\xED\xB8\x80"}})},
                    BodyCase{"BeyondUnicode", scans::result({{"NAME", "a\xF4\x90\x80\x80"}})},
                    BodyCase{"LoneContinuation", scans::result({{"NAME", "a\x80"}})},
                    BodyCase{"CutOfTwo", scans::result({scans::kName}) + "\xC3"},
                    BodyCase{"CutOfThree", scans::result({scans::kName}) + "\xE6\xBC"},
                    BodyCase{"CutOfFour", scans::result({scans::kName}) + "\xF0\x9F\x98"},
                    BodyCase{"UTF16", std::string("\xFF\xFE<\0r\0", 6)}, BodyCase{"Gzip", "\x1F\x8B\x08"}),
    nameOf);

TEST_F(QVCardServerExchangeTest, KeepsAByteOrderMarkInTheRawResult) {
    const std::string body = "\xEF\xBB\xBF" + scans::result({scans::kName});
    mServer.respond(ScriptedServer::answer(200, body));
    const scans::Scan made = scan();
    EXPECT_THAT(made.errors, Pointee(IsEmpty()));
    EXPECT_EQ(made.rawResult, body);
    ASSERT_TRUE(made.card);
    EXPECT_EQ(made.card->fullName(), "Jordan Example");
}

class AnAnswerWithoutACard : public QVCardServerExchangeTest, public testing::WithParamInterface<BodyCase> {};

TEST_P(AnAnswerWithoutACard, IsNoError) {
    mServer.respond(ScriptedServer::answer(200, GetParam().body));
    const scans::Scan made = scan();
    ASSERT_TRUE(made.errors);
    EXPECT_THAT(made.errors, Pointee(IsEmpty()));
    EXPECT_EQ(made.card, nullptr);
    EXPECT_EQ(made.rawResult, GetParam().body);
}

INSTANTIATE_TEST_SUITE_P(Bodies, AnAnswerWithoutACard,
                         testing::Values(BodyCase{"Words", "Internal error"}, BodyCase{"Space", " "},
                                         BodyCase{"MarkAlone", "\xEF\xBB\xBF"}, BodyCase{"OtherRoot", "<html/>"},
                                         BodyCase{"Null", std::string("\0", 1)},
                                         BodyCase{"CutTag", "<recoIndex lang=\"en"}),
                         nameOf);

TEST_F(QVCardServerExchangeTest, ReturnsWhatWasBuiltOfAMalformedAnswer) {
    const std::string whole = scans::result({scans::kName, scans::kTitle});
    const std::string body = whole + "<";
    mServer.respond(ScriptedServer::answer(200, body));
    const scans::Scan made = scan();
    EXPECT_THAT(made.errors, Pointee(IsEmpty()));
    EXPECT_EQ(made.rawResult, body);
    ASSERT_TRUE(made.card);
    EXPECT_EQ(made.card->fullName(), "Jordan Example");
    EXPECT_TRUE(made.card->hasTitleField());
}

TEST_F(QVCardServerExchangeTest, ReturnsACardWithoutFieldsWhenItsEndIsMissing) {
    const std::string body = R"(<recoIndex lang="de" objWidth="7"><item fldType="NAME"><t w="9">Jordan)";
    mServer.respond(ScriptedServer::answer(200, body));
    const scans::Scan made = scan();
    EXPECT_THAT(made.errors, Pointee(IsEmpty()));
    EXPECT_EQ(made.rawResult, body);
    ASSERT_TRUE(made.card);
    EXPECT_EQ(made.card->language(), "de");
    EXPECT_EQ(made.card->cardWidth(), 7);
    EXPECT_EQ(made.card->fields(), nullptr);
}

// What becomes of the caller's slots.

TEST_F(QVCardServerExchangeTest, HandsBackAnEmptyListAfterACleanScan) {
    mServer.respond(scans::answer({scans::kName, scans::kEmail}));
    const scans::Scan made = scan();
    ASSERT_TRUE(made.errors);
    EXPECT_THAT(made.errors, Pointee(IsEmpty()));
    ASSERT_TRUE(made.card);
    EXPECT_THAT(made.card->emails(), Pointee(ElementsAre("jordan@example.com")));
}

TEST_F(QVCardServerExchangeTest, ReplacesTheListAndTheRawResult) {
    mServer.respond(scans::answer({scans::kName}));
    QVString rawResult = "old";
    const auto old = std::make_shared<std::vector<qv::Error>>(2);
    QVErrorArray errors = old;
    operationAt(mServer.url())->performCardScanSynchronouslyFromImage(mImage, scans::kSecretToken, errors, rawResult);
    EXPECT_THAT(errors, Pointee(IsEmpty()));
    EXPECT_EQ(old->size(), 2U);
    EXPECT_EQ(rawResult, scans::result({scans::kName}));
}

TEST_F(QVCardServerExchangeTest, LeavesTheRawResultWhereThereIsNoText) {
    mServer.respond(ScriptedServer::answer(200, "\xFF"));
    EXPECT_EQ(scanAt(mServer.url(), "as it was").rawResult, "as it was");
    EXPECT_EQ(scanAt("ftp://127.0.0.1/", "as it was").rawResult, "as it was");
}

TEST_F(QVCardServerExchangeTest, LeavesTheErrorSlotAfterASuccess) {
    mServer.respond(ScriptedServer::answer(500, "text"));
    std::optional<qv::Error> error = qv::Error{"before", 7, {}};
    EXPECT_EQ(operationAt(mServer.url())->sendCardSynchronouslyWithData(std::nullopt, scans::kSecretToken, &error),
              "text");
    ASSERT_TRUE(error);
    EXPECT_EQ(error->domain, "before");
}

TEST_F(QVCardServerExchangeTest, NeedsNoErrorSlot) {
    mServer.respond(ScriptedServer::answer(200, "\xFF"));
    EXPECT_EQ(operationAt(mServer.url())->sendCardSynchronouslyWithData(std::nullopt, scans::kSecretToken, nullptr),
              std::nullopt);
    EXPECT_EQ(operationAt("ftp://x/")->sendCardSynchronouslyWithData(std::nullopt, scans::kSecretToken, nullptr),
              std::nullopt);
}

TEST_F(QVCardServerExchangeTest, ReplacesTheErrorSlotAfterAFailure) {
    mServer.respond(ScriptedServer::answer(200, ""));
    std::optional<qv::Error> error = qv::Error{"before", 7, {}};
    operationAt(mServer.url())->sendCardSynchronouslyWithData(std::nullopt, scans::kSecretToken, &error);
    EXPECT_EQ(error->domain, "kQVCardProcessingErrorDomain");
    EXPECT_EQ(error->code, 3);
}

// What is logged.

TEST_F(QVCardServerExchangeTest, LogsCompressingAndSending) {
    mServer.respond(ScriptedServer::answer(200, "no card"));
    scanAt(mServer.url("/recognise?x=1"));
    EXPECT_THAT(mLog.messages(), ElementsAre("<INFO> Compressing card image",
                                             "<INFO> Sending card to " + mServer.url("/recognise?x=1")));
}

TEST_F(QVCardServerExchangeTest, NeverLogsTheToken) {
    mServer.respond(scans::answer({scans::kName}));
    scan();
    mRequest->setAuthToken(std::string(scans::kSecretToken) + "\r\n");
    scan();
    scanAt("ftp://127.0.0.1/");
    EXPECT_FALSE(mLog.mentions(scans::kSecretToken));
}

}  // namespace
