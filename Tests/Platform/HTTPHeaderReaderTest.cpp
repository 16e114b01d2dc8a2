#include "QVPlatform/HTTPClient.h"
#include "Support/HTTPRequests.h"
#include "Support/ScriptedServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using testing::ElementsAre;
using testing::Pair;
using namespace testsupport;

namespace {

TEST(HTTPAnswerHeaders, AreInLowerCaseInTheOrderReceived) {
    ScriptedServer server;
    server.respond("HTTP/1.1 200 OK\r\nX-B: 1\r\nCONTENT-LENGTH: 1\r\nx-a:2  \r\nX-B:\t3\r\nEmpty:\r\n\r\nx");
    EXPECT_THAT(send(requestTo(server.url())).headers,
                ElementsAre(Pair("x-b", "1"), Pair("content-length", "1"), Pair("x-a", "2"), Pair("x-b", "3"),
                            Pair("empty", "")));
}

TEST(HTTPAnswerHeaders, JoinFoldedLines) {
    ScriptedServer server;
    server.respond("HTTP/1.1 200 OK\r\nX-Long: one\r\n  two\r\n\tthree\r\nContent-Length: 1\r\n\r\nx");
    EXPECT_THAT(send(requestTo(server.url())).headers,
                ElementsAre(Pair("x-long", "one two three"), Pair("content-length", "1")));
}

TEST(HTTPAnswerHeaders, OfTheAnswerBeforeAreNotGoneOnWith) {
    ScriptedServer server;
    server.respond("HTTP/1.1 200 OK\r\nX-First: one\r\nContent-Length: 1\r\n\r\nx");
    server.respondAndClose("HTTP/1.1 200 OK\r\n folded: two\r\n\tand three\r\nX-Second: 2\r\n\r\nx");
    server.respond("HTTP/1.1 200 OK\r\nContent-Length: 1\r\n\r\nx");
    EXPECT_EQ(send(requestTo(server.url())).headers.size(), 2u);
    for (const auto& [name, value] : send(requestTo(server.url())).headers)
        EXPECT_NE(name, "x-first") << value;
    EXPECT_THAT(send(requestTo(server.url())).headers, ElementsAre(Pair("content-length", "1")));
}

TEST(HTTPAnswerHeaders, HaveNoLineEndsInThem) {
    ScriptedServer server;
    server.respond("HTTP/1.1 200 OK\r\nETag: \"a\rX-B: 1\"\r\nContent-Length: 1\r\n\r\nx");
    EXPECT_THAT(send(requestTo(server.url())).headers,
                ElementsAre(Pair("etag", "\"a X-B: 1\""), Pair("content-length", "1")));
}

TEST(HTTPAnswerHeaders, AreTheLastAnswersOnly) {
    ScriptedServer server;
    server.respond("HTTP/1.1 103 Early\r\nLink: a\r\n\r\nHTTP/1.1 200 OK\r\nContent-Length: 1\r\n\r\nx");
    const auto response = send(requestTo(server.url()));
    EXPECT_EQ(response.status, 200);
    EXPECT_THAT(response.headers, ElementsAre(Pair("content-length", "1")));
}

std::string answerWithHeaders(std::size_t lines) {
    std::string headers;
    for (std::size_t i = 0; i < lines; ++i)
        headers += "X-Filler: " + std::string(1000, 'x') + "\r\n";
    return ScriptedServer::answer(200, "body", headers);
}

TEST(HTTPAnswerHeaders, MayTake256Kibibytes) {
    ScriptedServer server;
    server.respond(answerWithHeaders(250));
    server.respond(answerWithHeaders(260));
    EXPECT_EQ(bodyOf(send(requestTo(server.url()))), "body");
    const auto response = send(requestTo(server.url()));
    EXPECT_EQ(errorCodeOf(response), codeOf(qv::HTTPErrorCode::AnswerTooLarge));
    EXPECT_EQ(response.body, std::nullopt);
}

TEST(HTTPAnswerHeaders, EndTheCallWhenInterimAnswersNeverStop) {
    ScriptedServer server;
    server.handle([](ScriptedConnection& connection, const ScriptedRequest&) {
        while (connection.isOpen())
            connection.write("HTTP/1.1 103 Early\r\nLink: <a>\r\n\r\n");
    });
    EXPECT_EQ(errorCodeOf(send(requestTo(server.url()))), codeOf(qv::HTTPErrorCode::AnswerTooLarge));
}

}  // namespace
