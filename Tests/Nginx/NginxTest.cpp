#include "Nginx/Nginx.h"
#include "Support/ScriptedServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace {

using namespace balanced;
using qv::recognition::bodyOf;
using qv::recognition::Client;
using qv::recognition::post;
using qv::recognition::statusOf;
using testing::HasSubstr;
using testing::Not;
using testsupport::ScriptedServer;

/// Nobody listens there: only the system itself may, for a service that is no more.
constexpr int kDeadPort = 1;

void expectNothing(const std::string& answer, const std::string& status) {
    EXPECT_EQ(statusOf(answer), status) << answer;
    EXPECT_EQ(bodyOf(answer), "") << status;
    EXPECT_THAT(answer, HasSubstr("Content-Length: 0\r\n")) << status;
}

TEST(NginxTest, PassesACardOn) {
    const Recod server;
    const Nginx nginx({server.port()});
    const auto answer = ask(nginx.port(), postOf("plain.jpg"));
    EXPECT_EQ(statusOf(answer), "200");
    EXPECT_THAT(answer, HasSubstr("Clara Whitcombe"));
    EXPECT_EQ(statusOf(ask(nginx.port(), get("/health"))), "200");
}

TEST(NginxTest, ErrorsOfItsOwnHaveNoBody) {
    const Recod server;
    const Nginx nginx({server.port()});
    expectNothing(ask(nginx.port(), get("/elsewhere")), "404");
    expectNothing(ask(nginx.port(), get("/metrics")), "404");
    expectNothing(ask(nginx.port(), get("/nothing")), "404");
    expectNothing(ask(nginx.port(), post(std::string((8U << 20U) + 1, 'x'))), "413");
    expectNothing(ask(nginx.port(), "nonsense\r\n\r\n"), "400");
    expectNothing(ask(nginx.port(), "POST / HTTP/1.1\r\nHost: x\r\nContent-Length: no\r\n\r\n"), "400");
    expectNothing(ask(nginx.port(), "POST / HTTP/1.1\r\nHost: x\r\nlong: " + std::string(40000, 'x') + "\r\n\r\n"),
                  "400");
    expectNothing(ask(nginx.port(), "GET /" + std::string(40000, 'x') + " HTTP/1.1\r\nHost: x\r\n\r\n"), "414");
    expectNothing(ask(nginx.portWithTLS(), get("/")), "400");
}

TEST(NginxTest, ErrorsOfTheServersComeAsTheyAre) {
    const Recod server;
    const Nginx nginx({server.port()});
    EXPECT_EQ(statusOf(ask(nginx.port(), post("card", "auth: wrong\r\n"))), "401");
    EXPECT_EQ(statusOf(ask(nginx.port(), post("card", "auth: sesame\r\n"))), "422");
    EXPECT_EQ(statusOf(ask(nginx.port(), get("/"))), "405");
    EXPECT_EQ(bodyOf(ask(nginx.port(), get("/"))), "");
}

TEST(NginxTest, WithoutAnyServerTheBodyIsEmpty) {
    const Nginx nginx({kDeadPort});
    expectNothing(ask(nginx.port(), post("card")), "502");
    expectNothing(ask(nginx.port(), get("/health")), "502");
}

TEST(NginxTest, AServerThatNeverAnswersGivesAnEmptyBody) {
    ScriptedServer silent;
    const auto gate = std::make_shared<testsupport::Gate>();
    silent.respondAfter(gate, ScriptedServer::answer(200, ""));
    const Nginx nginx({silent.port()}, {{"proxy_read_timeout 75s", "proxy_read_timeout 1s"}});
    expectNothing(ask(nginx.port(), post("card")), "504");
    EXPECT_EQ(silent.requests().size(), 1U);
}

TEST(NginxTest, AServerThatBreaksOffGivesAnEmptyBody) {
    ScriptedServer broken;
    broken.handle([](auto& connection, const auto&) { connection.close(); });
    const Nginx nginx({broken.port()});
    expectNothing(ask(nginx.port(), post("card")), "502");
}

TEST(NginxTest, AFullServersCardGoesToAnother) {
    ScriptedServer full;
    full.respond(ScriptedServer::answer(503, ""));
    const Recod server;
    const Nginx nginx({full.port(), full.port(), full.port(), server.port()});
    for (int i = 0; i < 2; ++i)
        EXPECT_THAT(ask(nginx.port(), postOf("plain.jpg")), HasSubstr("Clara Whitcombe"));
    EXPECT_GE(full.requests().size(), 1U);
    const Nginx alone({full.port()});
    EXPECT_EQ(statusOf(ask(alone.port(), post("card"))), "503");
}

TEST(NginxTest, ADeadServerIsPassedOver) {
    const Recod server;
    const Nginx nginx({kDeadPort, server.port(), kDeadPort});
    for (int i = 0; i < 4; ++i)
        EXPECT_THAT(ask(nginx.port(), postOf("plain.jpg")), HasSubstr("Clara Whitcombe"));
    EXPECT_EQ(server.finished(), 4);
}

TEST(NginxTest, ASlowClientHoldsNoWorker) {
    const Recod server("0");
    const Nginx nginx({server.port()});
    const std::string request = postOf("plain.jpg");
    Client slow(static_cast<std::uint16_t>(nginx.port()));
    slow.send(request.substr(0, request.size() / 2));
    for (int i = 0; i < 2; ++i)
        EXPECT_THAT(ask(nginx.port(), postOf("plain.jpg")), HasSubstr("Clara Whitcombe"));
    EXPECT_EQ(server.figure("qvcardrecod_busy_workers"), 0);
    EXPECT_EQ(server.figure("qvcardrecod_request_duration_seconds_count"), 2);
    slow.send(request.substr(request.size() / 2));
    EXPECT_THAT(slow.readAll(), HasSubstr("Clara Whitcombe"));
}

TEST(NginxTest, KeepsPicturesOutOfFilesAndTokensOutOfLogs) {
    const Recod server;
    const Nginx nginx({server.port()});
    EXPECT_EQ(statusOf(ask(nginx.port(), post(std::string(7U << 20U, 'x'), "auth: sesame\r\n"))), "422");
    EXPECT_THAT(nginx.errorLog(), Not(HasSubstr("temporary file")));
    // It is written after the answer.
    while (nginx.accessLog().empty())
        std::this_thread::yield();
    EXPECT_THAT(nginx.errorLog() + nginx.accessLog(), Not(HasSubstr("sesame")));
    EXPECT_THAT(nginx.accessLog(), HasSubstr("POST / HTTP/1.1"));
}

TEST(NginxTest, SpeaksTLS) {
    const Recod server;
    const Nginx nginx({server.port()});
    testsupport::ProcessCall call;
    call.program = "/usr/bin/curl";
    const std::string name = "cards.example.com:" + std::to_string(nginx.portWithTLS());
    call.arguments = {"--silent",
                      "--show-error",
                      "--noproxy",
                      "*",
                      "--cacert",
                      nginx.certificate(),
                      "--resolve",
                      name + ":127.0.0.1",
                      "-H",
                      std::string("auth: ") + kToken,
                      "--data-binary",
                      "@" QV_SOURCE_DIR "/Samples/plain.jpg",
                      "https://" + name + "/"};
    const auto answer = testsupport::runProcess(call);
    EXPECT_EQ(answer.status, 0) << answer.error;
    EXPECT_THAT(answer.output, HasSubstr("Clara Whitcombe"));
    call.arguments[5] = "/etc/ssl/certs/ca-certificates.crt";
    EXPECT_EQ(testsupport::runProcess(call).status, 60) << "curl's word for a certificate that it does not trust";
}

}  // namespace
