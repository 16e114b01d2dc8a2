#include "People/SocialLookup.h"

#include "QVCardScan/QVBizCardManager.h"

#include <chrono>
#include <utility>

namespace qvhost {
namespace {

/// The library announces a time-out of its own, so this is only there to end at all.
constexpr std::chrono::minutes kLongestWait{2};

void adopt(const QVSocialSearchResult& result, QVCardProcessingResponse& response) {
    if (result.newQVMLContent) response.setQvmlContent(result.newQVMLContent);
    if (result.newImageResources) response.setAvatars(result.newImageResources);
}

}  // namespace

SocialLookup::SocialLookup(MainLoop& loop, const std::string& key, const std::string& secret) : mLoop(loop) {
    const auto manager = QVBizCardManager::sharedManager();
    manager->setLinkedInKey(key);
    manager->setLinkedInSecret(secret);
}

SearchOutcome SocialLookup::run(const std::shared_ptr<QVCardProcessingResponse>& response) {
    if (!response->contact() || !QVBizCardManager::sharedManager()->searchRequestFromCardProcessingResponse(response))
        return {};
    const std::optional<QVSocialSearchResult> result = search(response);
    if (!result) return {SearchOutcome::Kind::TimedOut, std::nullopt, nullptr};
    if (result->resultType == QVSocialSearchResultTimedOut)
        return {SearchOutcome::Kind::TimedOut, result->resultType, nullptr};
    if (!result->socialProfile) return {SearchOutcome::Kind::NotFound, result->resultType, nullptr};
    adopt(*result, *response);
    return {SearchOutcome::Kind::Found, result->resultType, result->socialProfile};
}

std::optional<QVSocialSearchResult> SocialLookup::search(const std::shared_ptr<QVCardProcessingResponse>& response) {
    std::optional<QVSocialSearchResult> result;
    const auto observer = qv::NotificationCenter::defaultCenter().addObserverForName(
        kQVSocialSearchFinishedNotification, [&result, &response](const qv::Notification& notification) {
            auto announced = QVSocialSearchResult::fromNotification(notification);
            if (announced && announced->requestID == response->originalNoteUUID()) result = std::move(announced);
        });
    QVBizCardManager::sharedManager()->addSocialSearchRequestFromCardProcessingResponse(response);
    mLoop.runUntil([&result] { return result.has_value(); }, kLongestWait);
    return result;
}

}  // namespace qvhost
