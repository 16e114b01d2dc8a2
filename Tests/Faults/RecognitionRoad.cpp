#include "Faults/RecognitionRoad.h"

#include "Faults/FaultShims.h"
#include "QVPlatform/Log.h"
#include "Source/Controller/ManagerFixtures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <mutex>

namespace faults {

namespace {

/// Lets everything that is logged go, but for whether the token was in it.
class TokenWatch {
  public:
    TokenWatch() {
        qv::Log::setSink([seen = mSeen](std::string_view message) {
            if (message.find(kToken) != std::string_view::npos) *seen = true;
        });
    }
    ~TokenWatch() {
        qv::Log::useSystemLog();
        EXPECT_FALSE(*mSeen) << "the token was logged";
    }
    TokenWatch(const TokenWatch&) = delete;
    TokenWatch& operator=(const TokenWatch&) = delete;

  private:
    std::shared_ptr<std::atomic<bool>> mSeen = std::make_shared<std::atomic<bool>>(false);
};

/// Slow from when the first bad card makes way for the good one until that has ended.
class Pace {
  public:
    explicit Pace(long speed) : mSpeed(speed) {}

    void badEnded() {
        const std::lock_guard lock(mMutex);
        if (!mGoodHasEnded) qvFaultsSetClockSpeed(1);
    }
    void goodEnded() {
        const std::lock_guard lock(mMutex);
        mGoodHasEnded = true;
        qvFaultsSetClockSpeed(mSpeed);
    }

  private:
    const long mSpeed;
    std::mutex mMutex;
    bool mGoodHasEnded = false;
};

class Sender {
  public:
    Sender() { mManager.setupOperationQueue(); }

    managers::OutcomePtr send(const std::string& note, const std::string& url,
                              const std::function<void()>& after = {}) {
        mManager.setServerURL(url);
        mOutcomes.push_back(std::make_shared<managers::Outcome>());
        mManager.addRequest(scans::request(note, kToken), managers::completionInto(mOutcomes.back(), after));
        return mOutcomes.back();
    }
    std::vector<managers::OutcomePtr> sendBad(const std::string& url, const std::function<void()>& after = {}) {
        std::vector<managers::OutcomePtr> bad;
        for (std::size_t place = 0; place < RecognitionRoad::kPlaces; ++place)
            bad.push_back(send("bad card " + std::to_string(place), url, after));
        return bad;
    }
    void waitForAll() const {
        // Without a limit: a card that never ends is ended by the limit of the whole test.
        for (const auto& outcome : mOutcomes)
            outcome->released.wait();
    }
    void expectEachOnce() const {
        for (const auto& outcome : mOutcomes)
            EXPECT_EQ(outcome->calls, 1);
    }

  private:
    QVBizCardManager mManager;
    std::vector<managers::OutcomePtr> mOutcomes;
};

void expectGood(const std::shared_ptr<QVCardProcessingResponse>& response) {
    ASSERT_TRUE(response);
    EXPECT_THAT(response->errors(), testing::Pointee(testing::IsEmpty()));
    EXPECT_EQ(response->contactName(), "Jordan Example");
    EXPECT_THAT(response->qvmlContent().value_or(""), testing::HasSubstr("Jordan Example"));
}

std::vector<std::shared_ptr<QVCardProcessingResponse>> responsesOf(const std::vector<managers::OutcomePtr>& outcomes) {
    std::vector<std::shared_ptr<QVCardProcessingResponse>> responses;
    responses.reserve(outcomes.size());
    for (const auto& outcome : outcomes)
        responses.push_back(outcome->response);
    return responses;
}

}  // namespace

std::vector<std::shared_ptr<QVCardProcessingResponse>> RecognitionRoad::send(const std::string& url, long speed) {
    testsupport::ScriptedServer good;
    good.respond(scans::answer({scans::kName, scans::kTitle, scans::kEmail}));
    const TokenWatch watch;
    Sender sender;
    const auto pace = std::make_shared<Pace>(speed);
    const auto bad = sender.sendBad(url, [pace] { pace->badEnded(); });
    const auto next = sender.send("good card", good.url(), [pace] { pace->goodEnded(); });
    sender.waitForAll();
    sender.expectEachOnce();
    expectGood(next->response);
    return responsesOf(bad);
}

std::vector<std::shared_ptr<QVCardProcessingResponse>> RecognitionRoad::sendWhile(const std::function<void()>& begin,
                                                                                  const std::function<void()>& end) {
    testsupport::ScriptedServer good;
    good.respond(scans::answer({scans::kName, scans::kTitle, scans::kEmail}));
    const TokenWatch watch;
    Sender sender;
    begin();
    const auto bad = sender.sendBad(good.url());
    sender.waitForAll();
    end();
    const auto next = sender.send("good card", good.url());
    sender.waitForAll();
    sender.expectEachOnce();
    expectGood(next->response);
    return responsesOf(bad);
}

void RecognitionRoad::warmUp() {
    testsupport::ScriptedServer good;
    good.respond(scans::answer({scans::kName, scans::kTitle, scans::kEmail}));
    send(good.url());
}

}  // namespace faults
