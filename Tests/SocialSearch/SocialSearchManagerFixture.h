#pragma once

#include "QVSocialSearch/QVSocialSearchManager.h"
#include "Support/CapturedLog.h"
#include "Support/DrivenMainQueue.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <utility>
#include <vector>

namespace social {

inline std::shared_ptr<QVSocialSearchRequest> request(QVString address = "jo@example.com",
                                                      QVString requestID = "note-1") {
    auto made = QVSocialSearchRequest::initWithEmailAddress(std::move(address));
    made->setRequestID(std::move(requestID));
    return made;
}

/// A manager of the test's own on the test's clock, with what it answered.
class SocialSearchManagerFixture : public testing::Test {
  protected:
    void search(std::shared_ptr<QVSocialSearchRequest> asked = request()) {
        mManager->addSearchByRequest(std::move(asked), [this](std::shared_ptr<QVSocialSearchResponse> response) {
            EXPECT_EQ(std::this_thread::get_id(), mMainThread);
            mResponses.push_back(std::move(response));
        });
    }
    bool waitForAnswer() {
        return mMain.pumpUntil([this] { return !mResponses.empty(); });
    }
    std::shared_ptr<QVSocialProfile> found() const {
        return mResponses.empty() ? nullptr : mResponses.back()->mergedSocialProfile();
    }

    const std::thread::id mMainThread = std::this_thread::get_id();
    testsupport::DrivenMainQueue mMain;
    testsupport::CapturedLog mLog;
    std::shared_ptr<QVSocialSearchManager> mManager = std::make_shared<QVSocialSearchManager>();
    std::vector<std::shared_ptr<QVSocialSearchResponse>> mResponses;
};

}  // namespace social
