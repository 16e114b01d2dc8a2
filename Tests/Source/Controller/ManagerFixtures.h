#pragma once

#include "../Operation/ScanFixtures.h"
#include "QVCardScan/QVBizCardManager.h"
#include "QVPlatform/AssertionHandler.h"
#include "Support/CapturedLog.h"
#include "Support/Gate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>

/// A manager whose server answers when it is told to, and what became of its requests.
namespace managers {

inline std::string performing(const std::string& note) {
    return "Performing operation with ID: " + note;
}
inline std::string completed(const std::string& note) {
    return "<INFO> Operation with ID: " + note + " completed!";
}
inline std::string cancelled(const std::string& note) {
    return "<INFO> Operation with ID: " + note + " is cancelled!";
}

/// What became of one request. Its completion block is released when the manager is through with it, called or not.
struct Outcome {
    testsupport::Gate called;
    testsupport::Gate released;
    std::atomic<int> calls{0};
    std::shared_ptr<QVCardProcessingResponse> response;
    std::thread::id thread;
};
using OutcomePtr = std::shared_ptr<Outcome>;

inline QVBizCardManager::Completion completionInto(const OutcomePtr& outcome, std::function<void()> after = {}) {
    const std::shared_ptr<void> whileHeld(nullptr, [outcome](void*) { outcome->released.open(); });
    return [outcome, whileHeld, after = std::move(after)](std::shared_ptr<QVCardProcessingResponse> response) {
        outcome->response = std::move(response);
        outcome->thread = std::this_thread::get_id();
        ++outcome->calls;
        outcome->called.open();
        if (after) after();
    };
}

/// A server that holds each request until its token is let go, and counts how many it holds at once.
class HoldingServer {
  public:
    HoldingServer() {
        mServer.handle(
            [this](testsupport::ScriptedConnection& connection, const testsupport::ScriptedRequest& request) {
                arrive();
                gate(request.header("auth").value_or("")).wait();
                leave();
                connection.write(scans::answer({scans::kName, scans::kTitle, scans::kEmail}));
            });
    }
    ~HoldingServer() { letAllGo(); }
    HoldingServer(const HoldingServer&) = delete;
    HoldingServer& operator=(const HoldingServer&) = delete;

    std::string url() const { return mServer.url(); }
    void letGo(const std::string& token) { gate(token).open(); }
    void letAllGo() {
        const std::lock_guard lock(mMutex);
        mAllGo = true;
        for (auto& [token, held] : mGates)
            held.open();
    }
    /// Waits until so many requests were held at some time; says whether they were (a broken test ends after a minute).
    bool waitForRequests(std::size_t count) {
        std::unique_lock lock(mMutex);
        return mArrival.wait_for(lock, std::chrono::seconds(60), [&] { return mArrived >= count; });
    }
    int mostAtOnce() {
        const std::lock_guard lock(mMutex);
        return mMost;
    }

    std::vector<std::string> tokens() const {
        std::vector<std::string> tokens;
        for (const auto& request : mServer.requests())
            tokens.push_back(request.header("auth").value_or("(none)"));
        return tokens;
    }

  private:
    void arrive() {
        const std::lock_guard lock(mMutex);
        ++mArrived;
        mMost = std::max(mMost, ++mHeld);
        mArrival.notify_all();
    }
    void leave() {
        const std::lock_guard lock(mMutex);
        --mHeld;
    }
    testsupport::Gate& gate(const std::string& token) {
        const std::lock_guard lock(mMutex);
        testsupport::Gate& gate = mGates[token];
        if (mAllGo) gate.open();
        return gate;
    }

    std::mutex mMutex;
    std::condition_variable mArrival;
    std::map<std::string, testsupport::Gate> mGates;
    bool mAllGo = false;
    std::size_t mArrived = 0;
    int mHeld = 0;
    int mMost = 0;
    testsupport::ScriptedServer mServer;
};

/// A manager of its own with a queue, and a server that answers when it is told to.
class Manager : public testing::Test {
  protected:
    Manager() {
        mManager->setupOperationQueue();
        mManager->setServerURL(mServer.url());
    }
    ~Manager() override {
        mServer.letAllGo();
        if (mManager) mManager->cleanUpOperationQueue();
        for (const OutcomePtr& outcome : mOutcomes)
            EXPECT_TRUE(outcome->released.waitFor());
        qv::AssertionHandler::setHandler({});
    }

    /// The note's identifier is its token too.
    OutcomePtr add(const std::string& note, std::function<void()> after = {}) {
        return addRequest(scans::request(note, note), std::move(after));
    }
    OutcomePtr addRequest(const std::shared_ptr<QVCardProcessingRequest>& request, std::function<void()> after = {}) {
        mOutcomes.push_back(std::make_shared<Outcome>());
        mManager->addRequest(request, completionInto(mOutcomes.back(), std::move(after)));
        return mOutcomes.back();
    }

    /// Refused: released at once without a call.
    static void expectRefused(const OutcomePtr& outcome) {
        EXPECT_TRUE(outcome->released.isOpen());
        EXPECT_EQ(outcome->calls, 0);
    }
    static void expectCompleted(const OutcomePtr& outcome) {
        ASSERT_TRUE(outcome->released.waitFor());
        EXPECT_EQ(outcome->calls, 1);
    }
    static void expectNeverCalled(const OutcomePtr& outcome) {
        ASSERT_TRUE(outcome->released.waitFor());
        EXPECT_EQ(outcome->calls, 0);
    }

    std::size_t positionInLog(const std::string& line) const {
        const auto lines = mLog.messages();
        return static_cast<std::size_t>(std::find(lines.begin(), lines.end(), line) - lines.begin());
    }

    testsupport::CapturedLog mLog;
    HoldingServer mServer;
    std::shared_ptr<QVBizCardManager> mManager = std::make_shared<QVBizCardManager>();
    std::vector<OutcomePtr> mOutcomes;
};

}  // namespace managers
