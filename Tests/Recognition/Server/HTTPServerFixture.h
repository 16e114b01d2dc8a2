#pragma once

#include "Recognition/Client.h"
#include "Recognition/Server/PrometheusText.h"
#include "Server/HTTPServer.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>

namespace qv::recognition {

/// Lets a test hold a worker where it is.
class WorkerGate {
  public:
    void pass() {
        std::unique_lock lock(mMutex);
        ++mWaiting;
        mChanged.notify_all();
        mChanged.wait(lock, [this] { return mIsOpen; });
    }
    void open() {
        const std::lock_guard lock(mMutex);
        mIsOpen = true;
        mChanged.notify_all();
    }
    void awaitWaiting(int count) {
        std::unique_lock lock(mMutex);
        mChanged.wait(lock, [&] { return mWaiting >= count; });
    }

  private:
    std::mutex mMutex;
    std::condition_variable mChanged;
    int mWaiting = 0;
    bool mIsOpen = false;
};

/// Answers with the body it was given; "wait" stops at the gate, "fail" throws, "no" is no picture, "large" is answered
/// with more than a connection holds. After "restless" its rest stops at the gate, and fails.
class StubRecogniser final : public Recogniser {
  public:
    explicit StubRecogniser(WorkerGate& gate) : mGate(gate) {}

    Recognition recognise(std::span<const std::uint8_t> jpeg, const std::string& contentLanguage) override {
        const std::string body(jpeg.begin(), jpeg.end());
        mIsRestless = body == "restless";
        if (body == "wait") mGate.pass();
        if (body == "fail") throw std::runtime_error("broken");
        Recognition recognition;
        recognition.isPicture = body != "no";
        recognition.xml = "<" + body + contentLanguage + "/>";
        if (body == "large") recognition.xml.resize(std::size_t{64} << 20U);
        recognition.fields = body == "empty" ? 0 : 2;
        recognition.stages = {{"look", std::chrono::milliseconds(3)}};
        return recognition;
    }

    void rest() override {
        if (!mIsRestless) return;
        mGate.pass();
        throw std::runtime_error("restless");
    }

  private:
    WorkerGate& mGate;
    bool mIsRestless = false;
};

/// A server with such a recogniser, which is stopped at the end when the test has not done so.
class HTTPServerFixture : public testing::Test {
  protected:
    void start(ServerOptions options = {}) {
        std::string error;
        mServer = HTTPServer::listen(
            options, [this] { return std::make_unique<StubRecogniser>(mGate); },
            [this](std::string_view line) {
                const std::lock_guard lock(mLogMutex);
                mLog += std::string(line) + '\n';
            },
            error);
        ASSERT_TRUE(mServer) << error;
        mThread = std::thread([this] { mEndedInTime = mServer->run(); });
    }
    void stop() {
        mGate.open();
        if (mServer) mServer->stop();
        if (mThread.joinable()) mThread.join();
    }
    void TearDown() override { stop(); }

    std::string ask(const std::string& request) {
        Client client(mServer->port());
        client.send(request);
        return client.readAll();
    }

    PrometheusText metrics() {
        const auto answer = ask("GET /metrics HTTP/1.1\r\nHost: x\r\nConnection: close\r\n\r\n");
        EXPECT_EQ(statusOf(answer), "200");
        EXPECT_NE(answer.find("Content-Type: text/plain; version=0.0.4; charset=utf-8\r\n"), std::string::npos);
        return PrometheusText(bodyOf(answer));
    }
    static std::string outcome(const std::string& name) {
        return "qvcardrecod_requests_total{outcome=\"" + name + "\"}";
    }

    void expectEmpty(const std::string& answer, const std::string& status) {
        EXPECT_EQ(statusOf(answer), status) << answer;
        EXPECT_EQ(bodyOf(answer), "") << answer;
    }

    WorkerGate mGate;
    std::unique_ptr<HTTPServer> mServer;
    std::thread mThread;
    std::atomic<bool> mEndedInTime = true;
    std::mutex mLogMutex;
    std::string mLog;
};

}  // namespace qv::recognition
