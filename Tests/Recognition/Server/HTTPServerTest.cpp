#include "Recognition/Server/HTTPServerFixture.h"
#include "Server/Token.h"

#include <chrono>
#include <map>
#include <string>
#include <thread>

namespace qv::recognition {
namespace {

class HTTPServerTest : public HTTPServerFixture {};

TEST_F(HTTPServerTest, AnswersAPost) {
    start();
    const auto answer = ask(post("card", "content-language: de\r\nContent-Type: image/jpeg\r\n"));
    EXPECT_EQ(statusOf(answer), "200");
    EXPECT_EQ(bodyOf(answer), "<cardde/>");
    EXPECT_NE(answer.find("application/xml"), std::string::npos);
}

TEST_F(HTTPServerTest, KeepsTheConnectionForTheNextCard) {
    start();
    EXPECT_EQ(bodyOf(ask("POST / HTTP/1.1\r\nHost: x\r\nContent-Length: 3\r\n\r\none" + post("two"))).substr(0, 6),
              "<one/>");
    const auto both = ask("POST / HTTP/1.1\r\nHost: x\r\nContent-Length: 3\r\n\r\none" + post("two"));
    EXPECT_NE(both.find("<two/>"), std::string::npos);
}

TEST_F(HTTPServerTest, TakesAChunkedBody) {
    start();
    EXPECT_EQ(bodyOf(ask("POST / HTTP/1.1\r\nHost: x\r\nConnection: close\r\nTransfer-Encoding: "
                         "chunked\r\n\r\n2\r\nca\r\n2\r\nrd\r\n0\r\n\r\n")),
              "<card/>");
}

TEST_F(HTTPServerTest, SaysGoOnToWhoAsks) {
    start();
    const auto answer = ask(post("card", "Expect: 100-continue\r\n"));
    EXPECT_EQ(answer.rfind("HTTP/1.1 100 Continue\r\n\r\n", 0), 0U);
    EXPECT_NE(answer.find("<card/>"), std::string::npos);
}

TEST_F(HTTPServerTest, AsksForTheToken) {
    ServerOptions options;
    options.token = "sesame";
    start(options);
    expectEmpty(ask(post("card")), "401");
    expectEmpty(ask(post("card", "auth: \r\n")), "401");
    expectEmpty(ask(post("card", "auth: sesam\r\n")), "401");
    expectEmpty(ask(post("card", "auth: sesamee\r\n")), "401");
    EXPECT_EQ(bodyOf(ask(post("card", "auth: sesame\r\n"))), "<card/>");
    EXPECT_EQ(statusOf(ask("GET /health HTTP/1.1\r\nHost: x\r\nConnection: close\r\n\r\n")), "200");
    stop();
    EXPECT_EQ(mLog.find("sesam"), std::string::npos);
}

TEST_F(HTTPServerTest, RefusesOtherMethodsAndPaths) {
    start();
    expectEmpty(ask("GET / HTTP/1.1\r\nHost: x\r\nConnection: close\r\n\r\n"), "405");
    expectEmpty(ask("PUT / HTTP/1.1\r\nHost: x\r\nConnection: close\r\nContent-Length: 0\r\n\r\n"), "405");
    expectEmpty(ask("POST /health HTTP/1.1\r\nHost: x\r\nConnection: close\r\nContent-Length: 0\r\n\r\n"), "405");
    expectEmpty(ask("POST /other HTTP/1.1\r\nHost: x\r\nConnection: close\r\nContent-Length: 0\r\n\r\n"), "404");
    EXPECT_EQ(bodyOf(ask("POST /?a=b HTTP/1.1\r\nHost: x\r\nConnection: close\r\nContent-Length: 1\r\n\r\nx")), "<x/>");
}

TEST_F(HTTPServerTest, RefusesTooMuch) {
    ServerOptions options;
    options.bodyLimit = 1000;
    start(options);
    EXPECT_EQ(statusOf(ask(post(std::string(1000, 'x')))), "200");
    expectEmpty(ask(post(std::string(1001, 'x'))), "413");
    expectEmpty(ask(post(std::string(3000000, 'x'))), "413");
    expectEmpty(ask("POST / HTTP/1.1\r\nHost: x\r\nTransfer-Encoding: chunked\r\n\r\n600\r\n" +
                    std::string(0x600, 'x') + "\r\n0\r\n\r\n"),
                "413");
    expectEmpty(ask("POST / HTTP/1.1\r\nHost: x\r\nContent-Length: 99999999999\r\n\r\n"), "413");
    expectEmpty(ask("POST / HTTP/1.1\r\nlong: " + std::string(40000, 'x') + "\r\n\r\n"), "431");
}

TEST_F(HTTPServerTest, AnswersNonsenseWithoutABody) {
    start();
    for (const char* request :
         {"nonsense\r\n\r\n", "POST / HTTP/7.3\r\n\r\n", "POST  /\r\n\r\n",
          "POST / HTTP/1.1\r\nContent-Length: no\r\n\r\n", "POST / HTTP/1.1\r\nbad header\r\n\r\n"}) {
        expectEmpty(ask(request), "400");
    }
}

TEST_F(HTTPServerTest, SaysThatAPictureIsNone) {
    start();
    expectEmpty(ask(post("no")), "422");
}

TEST_F(HTTPServerTest, GoesOnAfterARecogniserFailed) {
    start();
    expectEmpty(ask(post("fail")), "500");
    EXPECT_EQ(bodyOf(ask(post("card"))), "<card/>");
}

TEST_F(HTTPServerTest, PutsThingsInOrderWhenTheAnswerIsOnItsWay) {
    start();
    EXPECT_EQ(bodyOf(ask(post("restless"))), "<restless/>");
    mGate.awaitWaiting(1);
    Client next(mServer->port());
    next.send(post("card"));
    mGate.open();
    EXPECT_EQ(bodyOf(next.readAll()), "<card/>") << "though the rest failed";
}

TEST_F(HTTPServerTest, AnswersHealthWhileAllWorkersAreBusy) {
    start();
    Client busy(mServer->port());
    busy.send(post("wait"));
    mGate.awaitWaiting(1);
    EXPECT_EQ(statusOf(ask("GET /health HTTP/1.1\r\nHost: x\r\nConnection: close\r\n\r\n")), "200");
    const auto head = ask("HEAD /health HTTP/1.1\r\nHost: x\r\nConnection: close\r\n\r\n");
    expectEmpty(head, "200");
    mGate.open();
    EXPECT_EQ(bodyOf(busy.readAll()), "<wait/>");
}

TEST_F(HTTPServerTest, AnswersMetricsWhileAllWorkersAreBusy) {
    ServerOptions options;
    options.places = 3;
    options.token = "sesame";
    start(options);
    Client busy(mServer->port());
    busy.send(post("wait", "auth: sesame\r\n"));
    mGate.awaitWaiting(1);
    Client waiting(mServer->port());
    waiting.send(post("card", "auth: sesame\r\n"));
    // The server's thread takes requests in turn, but the waiting one may come in two pieces.
    while (metrics()["qvcardrecod_waiting_requests"] < 1)
        std::this_thread::yield();
    const auto now = metrics();
    EXPECT_EQ(now["qvcardrecod_workers"], 1);
    EXPECT_EQ(now["qvcardrecod_busy_workers"], 1);
    EXPECT_EQ(now["qvcardrecod_waiting_requests"], 1);
    EXPECT_EQ(now["qvcardrecod_waiting_places"], 3);
    EXPECT_EQ(now["qvcardrecod_connections"], 3);
    EXPECT_EQ(now[outcome("read")], 0);
    mGate.open();
    EXPECT_EQ(bodyOf(busy.readAll()), "<wait/>");
    EXPECT_EQ(bodyOf(waiting.readAll()), "<card/>");
    EXPECT_EQ(metrics()["qvcardrecod_busy_workers"], 0);
}

TEST_F(HTTPServerTest, CountsRequestsByHowTheyEnd) {
    ServerOptions options;
    options.token = "sesame";
    options.bodyLimit = 100;
    options.bodyTime = std::chrono::milliseconds(50);
    start(options);
    const std::string token = "auth: sesame\r\n";
    for (const char* body : {"card", "card", "empty", "no", "fail"})
        ask(post(body, token));
    ask(post("card"));
    ask(post(std::string(101, 'x'), token));
    ask("nonsense\r\n\r\n");
    ask("GET / HTTP/1.1\r\nHost: x\r\nConnection: close\r\n\r\n");
    ask("POST /other HTTP/1.1\r\nHost: x\r\nConnection: close\r\nContent-Length: 0\r\n\r\n");
    ask("POST / HTTP/1.1\r\nHost: x\r\n" + token + "Content-Length: 100\r\n\r\nhalf");
    ask("GET /health HTTP/1.1\r\nHost: x\r\nConnection: close\r\n\r\n");
    const auto now = metrics();
    const std::map<std::string, int> expected = {
        {"read", 2},         {"nothing_found", 1}, {"no_picture", 1},  {"failed", 1},    {"overloaded", 0},
        {"stopping", 0},     {"hung_up", 0},       {"incomplete", 1},  {"too_large", 1}, {"malformed", 1},
        {"unauthorized", 1}, {"not_found", 1},     {"wrong_method", 1}};
    for (const auto& [name, count] : expected)
        EXPECT_EQ(now[outcome(name)], count) << name;
    EXPECT_EQ(now["qvcardrecod_stage_duration_seconds_count{stage=\"look\"}"], 4);
    EXPECT_DOUBLE_EQ(now["qvcardrecod_stage_duration_seconds_sum{stage=\"look\"}"], 0.012);
    EXPECT_EQ(now["qvcardrecod_request_duration_seconds_count"], 4);
    EXPECT_EQ(now["qvcardrecod_waiting_duration_seconds_count"], 4);
}

TEST_F(HTTPServerTest, MetricsTellNothingOfCardsOrRequests) {
    start();
    ask(post("confidential", "content-language: secretive\r\nauth: hidden\r\n"));
    const auto answer = ask("GET /metrics?whatever HTTP/1.1\r\nHost: x\r\nConnection: close\r\n\r\n");
    EXPECT_EQ(statusOf(answer), "200");
    for (const char* word : {"confidential", "secretive", "hidden", "whatever"})
        EXPECT_EQ(answer.find(word), std::string::npos) << word;
    expectEmpty(ask("POST /metrics HTTP/1.1\r\nHost: x\r\nConnection: close\r\nContent-Length: 0\r\n\r\n"), "405");
    expectEmpty(ask("HEAD /metrics HTTP/1.1\r\nHost: x\r\nConnection: close\r\n\r\n"), "200");
}

TEST_F(HTTPServerTest, LogsTheTimesOfTheStages) {
    start();
    ask(post("card"));
    ask(post("no"));
    ask("GET / HTTP/1.1\r\nHost: x\r\nConnection: close\r\n\r\n");
    stop();
    EXPECT_EQ(mLog, "200 2 fields look=3 total=3ms\n422 2 fields look=3 total=3ms\n405 0 fields total=0ms\n");
}

TEST_F(HTTPServerTest, RefusesWhatDoesNotFitTheWaitingLine) {
    ServerOptions options;
    options.places = 0;
    start(options);
    Client busy(mServer->port());
    busy.send(post("wait"));
    mGate.awaitWaiting(1);
    const auto refused = ask(post("card"));
    expectEmpty(refused, "503");
    EXPECT_NE(refused.find("Retry-After"), std::string::npos);
    EXPECT_EQ(metrics()[outcome("overloaded")], 1);
    mGate.open();
    EXPECT_EQ(bodyOf(busy.readAll()), "<wait/>");
}

TEST_F(HTTPServerTest, WorksOnAsManyAsItHasWorkers) {
    ServerOptions options;
    options.workers = 3;
    start(options);
    Client first(mServer->port());
    Client second(mServer->port());
    first.send(post("wait"));
    second.send(post("wait"));
    mGate.awaitWaiting(2);
    EXPECT_EQ(bodyOf(ask(post("card"))), "<card/>");
    mGate.open();
    EXPECT_EQ(bodyOf(first.readAll()), "<wait/>");
    EXPECT_EQ(bodyOf(second.readAll()), "<wait/>");
}

TEST_F(HTTPServerTest, CutsOffWhoIsSlow) {
    ServerOptions options;
    options.headerTime = std::chrono::milliseconds(50);
    options.bodyTime = std::chrono::milliseconds(50);
    start(options);
    Client silent(mServer->port());
    EXPECT_EQ(silent.readAll(), "");
    Client halfHeader(mServer->port());
    halfHeader.send("POST / HT");
    EXPECT_EQ(halfHeader.readAll(), "");
    Client halfBody(mServer->port());
    halfBody.send("POST / HTTP/1.1\r\nHost: x\r\nContent-Length: 100\r\n\r\nhalf");
    EXPECT_EQ(halfBody.readAll(), "");
}

TEST_F(HTTPServerTest, SaysWhyItCannotListen) {
    start();
    std::string error;
    ServerOptions options;
    options.port = mServer->port();
    const auto make = [this] { return std::make_unique<StubRecogniser>(mGate); };
    EXPECT_FALSE(HTTPServer::listen(
        options, make, [](auto) {}, error));
    EXPECT_FALSE(error.empty());
    options.address = "not an address";
    EXPECT_FALSE(HTTPServer::listen(
        options, make, [](auto) {}, error));
}

TEST(TokenTest, ComparesWhole) {
    EXPECT_TRUE(isSameToken("abc", "abc"));
    for (const char* other : {"", "ab", "abcd", "abcabc", "abd", "ABC"})
        EXPECT_FALSE(isSameToken(other, "abc")) << other;
    EXPECT_FALSE(isSameToken("abc", ""));
}

}  // namespace
}  // namespace qv::recognition
