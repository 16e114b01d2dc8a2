#include "Recognition/Server/HTTPServerFixture.h"

#include <chrono>
#include <string>

namespace qv::recognition {
namespace {

class HTTPServerStopTest : public HTTPServerFixture {};

TEST_F(HTTPServerStopTest, EndsRunningRequestsWhenItStops) {
    start();
    Client running(mServer->port());
    running.send(post("wait"));
    mGate.awaitWaiting(1);
    mServer->stop();
    mServer->stop();
    mGate.open();
    EXPECT_EQ(bodyOf(running.readAll()), "<wait/>");
    mThread.join();
    EXPECT_TRUE(mEndedInTime);
    EXPECT_FALSE(Client(mServer->port()).isConnected());
}

TEST_F(HTTPServerStopTest, DoesNotWaitForeverWhenItStops) {
    ServerOptions options;
    options.stopTime = std::chrono::milliseconds(20);
    start(options);
    Client running(mServer->port());
    running.send(post("wait"));
    mGate.awaitWaiting(1);
    mServer->stop();
    mThread.join();
    EXPECT_FALSE(mEndedInTime);
    mGate.open();
}

TEST_F(HTTPServerStopTest, ClosesIdleConnectionsWhenItStops) {
    start();
    Client idle(mServer->port());
    idle.send("POST / HTTP/1.1\r\nHost: x\r\nContent-Length: 3\r\n\r\none");
    mServer->stop();
    idle.readAll();
    mThread.join();
    EXPECT_TRUE(mEndedInTime);
}

TEST_F(HTTPServerStopTest, RefusesWhoStillSendsWhenItStops) {
    start();
    Client slow(mServer->port());
    slow.send("POST / HTTP/1.1\r\nHost: x\r\nExpect: 100-continue\r\nContent-Length: 9\r\n\r\n");
    const std::string goOn = "HTTP/1.1 100 Continue\r\n\r\n";
    EXPECT_EQ(slow.read(goOn.size()), goOn);
    slow.send("half");
    mServer->stop();
    const auto answer = slow.readAll();
    expectEmpty(answer, "503");
    EXPECT_NE(answer.find("Retry-After: 1\r\n"), std::string::npos) << answer;
    slow.hangUp();
    mThread.join();
    EXPECT_TRUE(mEndedInTime);
}

TEST_F(HTTPServerStopTest, EndsWellWithoutThoseWhoDoNotTakeTheirAnswers) {
    ServerOptions options;
    options.stopTime = std::chrono::milliseconds(200);
    start(options);
    Client deaf(mServer->port());
    deaf.send(post("large"));
    while (metrics()[outcome("read")] == 0) {
    }
    mServer->stop();
    mThread.join();
    EXPECT_TRUE(mEndedInTime);
}

}  // namespace
}  // namespace qv::recognition
