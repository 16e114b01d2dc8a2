#include "QVPlatform/HTTPClient.h"
#include "Support/HTTPRequests.h"
#include "Support/ScriptedServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

using testing::ElementsAre;
using testing::Pair;
using testing::SizeIs;
using namespace testsupport;

namespace {

class HTTPClientTest : public testing::Test {
  protected:
    ScriptedServer mServer;
};

TEST_F(HTTPClientTest, PostsTheBodyByteForByte) {
    mServer.respond(ScriptedServer::answer(200, "<recoIndex/>"));
    std::string bytes;
    for (int i = 0; i < 200'000; ++i)
        bytes += static_cast<char>(i * 7);
    auto request = requestTo(mServer.url("/recognise?x=1"), "POST");
    request.headers = {{"content-language", "de"}, {"Content-Type", "image/jpeg"}, {"auth", "tok en"}};
    request.body = dataOf(bytes);
    const auto response = send(request);
    EXPECT_EQ(errorCodeOf(response), 0) << errorTextOf(response);
    EXPECT_EQ(response.status, 200);
    EXPECT_EQ(bodyOf(response), "<recoIndex/>");

    ASSERT_THAT(mServer.requests(), SizeIs(1));
    const auto received = mServer.requests()[0];
    EXPECT_EQ(received.method, "POST");
    EXPECT_EQ(received.target, "/recognise?x=1");
    EXPECT_EQ(received.body, bytes);
    EXPECT_EQ(received.header("content-type"), "image/jpeg");
    EXPECT_EQ(received.header("Expect"), std::nullopt);
    EXPECT_EQ(received.header("Accept-Encoding"), std::nullopt);
    EXPECT_EQ(received.header("Transfer-Encoding"), std::nullopt);
}

TEST_F(HTTPClientTest, SendsItsHeadersInTheirOrderAfterItsOwn) {
    mServer.respond(ScriptedServer::answer(200, "x"));
    auto request = requestTo(mServer.url(), "POST");
    request.headers = {
        {"Z-Last", "1"}, {"a-first", " two words "}, {"Empty", ""}, {"Blank", "  "}, {"Z-Last", "again"}};
    request.body = dataOf("b");
    send(request);
    ASSERT_THAT(mServer.requests(), SizeIs(1));
    EXPECT_THAT(mServer.requests()[0].headers,
                ElementsAre(Pair("Host", "127.0.0.1:" + std::to_string(mServer.port())), Pair("Accept", "*/*"),
                            Pair("Z-Last", "1"), Pair("a-first", "two words "), Pair("Empty", ""), Pair("Blank", ""),
                            Pair("Z-Last", "again"), Pair("Content-Length", "1")));
}

TEST_F(HTTPClientTest, PostsAnAbsentBodyAsOneOfNoBytes) {
    mServer.respond(ScriptedServer::answer(200, "x"));
    for (const char* method : {"POST", "PUT", "PATCH"}) {
        send(requestTo(mServer.url(), method));
        const auto received = mServer.requests().back();
        EXPECT_EQ(received.method, method);
        EXPECT_EQ(received.header("Content-Length"), "0");
        EXPECT_EQ(received.header("Content-Type"), std::nullopt);
    }
}

TEST_F(HTTPClientTest, GetsWithoutABody) {
    mServer.respond(ScriptedServer::answer(200, "x"));
    send(requestTo(mServer.url("/a")));
    const auto received = mServer.requests().at(0);
    EXPECT_EQ(received.method, "GET");
    EXPECT_EQ(received.header("Content-Length"), std::nullopt);
    EXPECT_EQ(received.header("Content-Type"), std::nullopt);
}

TEST_F(HTTPClientTest, SendsABodyWithAnyMethodThatHasOne) {
    mServer.respond(ScriptedServer::answer(200, "x"));
    auto request = requestTo(mServer.url(), "DELETE");
    request.body = dataOf("body");
    send(request);
    request.method = "SEARCH";
    request.body = qv::Data{};
    send(request);
    ASSERT_THAT(mServer.requests(), SizeIs(2));
    EXPECT_EQ(mServer.requests()[0].method, "DELETE");
    EXPECT_EQ(mServer.requests()[0].body, "body");
    EXPECT_EQ(mServer.requests()[1].method, "SEARCH");
    EXPECT_EQ(mServer.requests()[1].header("Content-Length"), "0");
}

TEST_F(HTTPClientTest, TakesTheHeadOfAnswers) {
    mServer.respond("HTTP/1.1 200 OK\r\nContent-Length: 999999999\r\nX-A: b\r\n\r\n");
    auto request = requestTo(mServer.url(), "HEAD");
    request.maximumBodySize = 10;
    const auto response = send(request);
    EXPECT_EQ(errorCodeOf(response), 0) << errorTextOf(response);
    EXPECT_EQ(response.status, 200);
    EXPECT_EQ(bodyOf(response), "(absent)");
    EXPECT_EQ(mServer.requests().at(0).method, "HEAD");
}

TEST_F(HTTPClientTest, SendsThePathAsItWasGiven) {
    mServer.respond(ScriptedServer::answer(200, "x"));
    send(requestTo(mServer.url("/a/../b/./%7e//c?q=%20#fragment")));
    send(requestTo(mServer.url("")));
    EXPECT_EQ(mServer.requests().at(0).target, "/a/../b/./%7e//c?q=%20");
    EXPECT_EQ(mServer.requests().at(1).target, "/");
}

TEST_F(HTTPClientTest, TakesAnyStatusForASuccess) {
    for (const int status : {201, 204, 301, 400, 401, 404, 500, 503}) {
        mServer.respond(status == 204 ? "HTTP/1.1 204 None\r\n\r\n" : ScriptedServer::answer(status, "body"));
    }
    for (const int status : {201, 204, 301, 400, 401, 404, 500, 503}) {
        const auto response = send(requestTo(mServer.url(), "POST"));
        EXPECT_EQ(errorCodeOf(response), 0) << status;
        EXPECT_EQ(response.status, status);
        EXPECT_EQ(bodyOf(response), status == 204 ? "(absent)" : "body");
    }
}

TEST_F(HTTPClientTest, TakesNoAnswerWithoutAStatusForASuccess) {
    mServer.respondAndClose("HTTP/200 .10\r\n\r\nbody");
    const auto response = send(requestTo(mServer.url()));
    EXPECT_NE(errorCodeOf(response), 0);
    EXPECT_EQ(response.status, 0);
    EXPECT_EQ(bodyOf(response), "(absent)");
}

TEST_F(HTTPClientTest, HasNoBodyWhenNoByteArrived) {
    mServer.respond(ScriptedServer::answer(200, ""));
    const auto response = send(requestTo(mServer.url()));
    EXPECT_EQ(response.body, std::nullopt);
    EXPECT_FALSE(response.error.has_value());
}

TEST_F(HTTPClientTest, ReadsChunksAndWhatEndsWithTheConnection) {
    mServer.respond("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n2\r\nde\r\n0\r\n\r\n");
    mServer.respondAndClose("HTTP/1.1 200 OK\r\n\r\nto the end");
    EXPECT_EQ(bodyOf(send(requestTo(mServer.url()))), "abcde");
    EXPECT_EQ(bodyOf(send(requestTo(mServer.url()))), "to the end");
}

TEST_F(HTTPClientTest, KeepsTheBytesOfAnEncodedAnswer) {
    const std::string bytes("\x1f\x8b\x08\x00 not unpacked", 17);
    mServer.respond(ScriptedServer::answer(200, bytes, "Content-Encoding: gzip\r\n"));
    EXPECT_EQ(bodyOf(send(requestTo(mServer.url()))), bytes);
}

TEST_F(HTTPClientTest, KeepsItsConnectionBetweenCalls) {
    mServer.respond(ScriptedServer::answer(200, "x"));
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(bodyOf(send(requestTo(mServer.url(), "POST"))), "x");
    EXPECT_EQ(mServer.requests().size(), 5U);
    EXPECT_EQ(mServer.connectionCount(), 1U);
}

TEST_F(HTTPClientTest, ReplacesAConnectionThatTheServerClosed) {
    mServer.respondAndClose(ScriptedServer::answer(200, "first"));
    mServer.respond(ScriptedServer::answer(200, "second"));
    EXPECT_EQ(bodyOf(send(requestTo(mServer.url(), "POST"))), "first");
    EXPECT_EQ(bodyOf(send(requestTo(mServer.url(), "POST"))), "second");
    EXPECT_EQ(mServer.connectionCount(), 2U);
}

TEST_F(HTTPClientTest, LeavesNothingOfOneCallInTheNext) {
    mServer.respond(ScriptedServer::answer(200, "x"));
    auto post = requestTo(mServer.url(), "POST");
    post.headers = {{"auth", "secret"}};
    post.body = dataOf("body");
    post.maximumBodySize = 1;
    send(post);
    send(requestTo(mServer.url()));
    const auto second = mServer.requests().at(1);
    EXPECT_EQ(second.method, "GET");
    EXPECT_EQ(second.header("auth"), std::nullopt);
    EXPECT_EQ(second.body, "");
}

/// Sets a variable of the environment for the length of a test.
class Variable {
  public:
    Variable(const char* name, const std::string& value) : mName(name) { ::setenv(name, value.c_str(), 1); }
    ~Variable() { ::unsetenv(mName); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

  private:
    const char* mName;
};

TEST_F(HTTPClientTest, AsksNoProxyOfTheEnvironment) {
    ScriptedServer proxy;
    const Variable lower("http_proxy", proxy.url());
    const Variable upper("HTTP_PROXY", proxy.url());
    const Variable all("ALL_PROXY", proxy.url());
    const Variable none("no_proxy", "");
    mServer.respond(ScriptedServer::answer(200, "direct"));
    EXPECT_EQ(bodyOf(send(requestTo(mServer.url()))), "direct");
    EXPECT_EQ(proxy.connectionCount(), 0U);
}

TEST_F(HTTPClientTest, ServesSeveralThreads) {
    constexpr int kThreads = 10;
    constexpr int kCalls = 10;
    mServer.handle([](ScriptedConnection& connection, const ScriptedRequest& request) {
        connection.write(ScriptedServer::answer(200, request.body));
    });
    std::atomic<int> right{0};
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < kThreads; ++i) {
            threads.emplace_back([&, i] {
                for (int j = 0; j < kCalls; ++j) {
                    auto request = requestTo(mServer.url(), "POST");
                    const std::string text = std::to_string(i) + "/" + std::to_string(j) + std::string(5000, 'x');
                    request.body = dataOf(text);
                    if (bodyOf(send(request)) == text) ++right;
                }
            });
        }
    }
    EXPECT_EQ(right, kThreads * kCalls);
    EXPECT_EQ(mServer.requests().size(), std::size_t{kThreads} * kCalls);
    EXPECT_EQ(mServer.connectionCount(), std::size_t{kThreads}) << "one connection for each thread";
}

}  // namespace
