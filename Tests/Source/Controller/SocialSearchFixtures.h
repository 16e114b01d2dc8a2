#pragma once

#include "../Operation/ScanFixtures.h"
#include "QVCardScan/QVBizCardManager.h"
#include "QVCardScan/QVCardScanDefines.h"
#include "QVPlatform/NotificationCenter.h"
#include "QVSocialSearch/QVSocialSearchManager.h"
#include "Support/CapturedLog.h"
#include "Support/DrivenMainQueue.h"

#include <gtest/gtest.h>

#include <any>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace socialsearch {

/// Remembers what was asked, and answers when the test says so.
class ScriptedSearch : public QVSocialSearchManager {
  public:
    void addSearchByRequest(std::shared_ptr<QVSocialSearchRequest> request, Completion completion) override {
        requests.push_back(std::move(request));
        mCompletions.push_back(std::move(completion));
    }

    /// Answers the search of that number with its own tag.
    void answer(std::size_t number, std::shared_ptr<QVSocialProfile> profile) const {
        const QVString requestID = requests[number] ? requests[number]->requestID() : std::nullopt;
        mCompletions[number](QVSocialSearchResponse::initWithRequestID(requestID, std::move(profile)));
    }
    const Completion& completion(std::size_t number) const { return mCompletions[number]; }

    std::vector<std::shared_ptr<QVSocialSearchRequest>> requests;

  private:
    std::vector<Completion> mCompletions;
};

/// What a card processing operation answers to a card with these items.
inline std::shared_ptr<QVCardProcessingResponse> scanned(const std::vector<scans::Item>& items,
                                                         QVString noteUUID = "note-1") {
    testsupport::ScriptedServer server;
    server.respond(scans::answer(items));
    const auto operation = scans::operationFor(scans::request(std::move(noteUUID)), server.url());
    operation->main();
    return operation->response();
}

inline std::shared_ptr<QVCardProcessingResponse> scannedCard(QVString noteUUID = "note-1") {
    return scanned({scans::kName, scans::kTitle, scans::kEmail, scans::kPhone}, std::move(noteUUID));
}

inline std::shared_ptr<QVSocialProfile> profileWithLinks(QVString linkedIn, QVString facebook) {
    auto profile = std::make_shared<QVSocialProfile>();
    profile->setProfileURLLinkedInPublic(std::move(linkedIn));
    profile->setProfileURLFacebook(std::move(facebook));
    return profile;
}

/// A manager that may search, on the driven clock, with a search that is scripted and an ear for notifications.
class SocialSearchFixture : public testing::Test {
  protected:
    SocialSearchFixture() {
        QVSocialSearchManager::setSharedManager(mSearch);
        mManager->setSearchTimeOut(4.0);
        mManager->setLinkedInKey("key");
        mManager->setLinkedInSecret("secret");
    }
    ~SocialSearchFixture() override { QVSocialSearchManager::setSharedManager(nullptr); }

    void hear(const qv::Notification& notification) {
        EXPECT_EQ(std::this_thread::get_id(), mMainThread);
        EXPECT_FALSE(notification.object.has_value());
        mHeard.push_back(notification);
        mLogWhenHeard.push_back(mLog.messages());
    }
    template <typename Value>
    Value heard(std::string_view key) const {
        return std::any_cast<Value>(mHeard.back().userInfo.at(std::string(key)));
    }
    QVSocialSearchResultType heardType() const {
        return heard<QVSocialSearchResultType>("QVSocialSearchResultTypeKey");
    }
    std::vector<std::string> heardKeys() const {
        std::vector<std::string> keys;
        for (const auto& [key, value] : mHeard.back().userInfo)
            keys.push_back(key);
        return keys;
    }

    const std::thread::id mMainThread = std::this_thread::get_id();
    testsupport::DrivenMainQueue mMain;
    testsupport::CapturedLog mLog;
    std::shared_ptr<ScriptedSearch> mSearch = std::make_shared<ScriptedSearch>();
    std::shared_ptr<QVBizCardManager> mManager = std::make_shared<QVBizCardManager>();
    std::vector<qv::Notification> mHeard;
    std::vector<std::vector<std::string>> mLogWhenHeard;
    qv::NotificationCenter::Token mToken = qv::NotificationCenter::defaultCenter().addObserverForName(
        "QVSocialSearchFinishedNotification", [this](const auto& notification) { hear(notification); });
};

}  // namespace socialsearch
