#include "QVCardScan/QVBizCardManager.h"
#include "QVCardScan/QVCardScanDefines.h"
#include "QVPlatform/AssertionHandler.h"
#include "QVPlatform/Guarded.h"
#include "QVPlatform/Log.h"
#include "QVPlatform/MainQueue.h"
#include "QVSocialSearch/QVSocialSearchManager.h"

#include <chrono>
#include <cmath>
#include <utility>

namespace {

using ContactPtr = std::shared_ptr<QVVeltoContact>;

void assertRecordIsWhole() {
    qv::AssertionHandler::handleFailure({.description = "A social search needs a note UUID and a contact!",
                                         .function = "addSocialSearchRequestFromCardProcessingResponse:",
                                         .file = "QVBizCardManager",
                                         .line = __LINE__});
}

QVBizCardManager::RequestInfo recordOf(const std::string& requestID, const ContactPtr& contact) {
    return std::make_shared<qv::Dictionary>(
        qv::Dictionary{{std::string(kQVSocialSearchRequestIDKey), requestID},
                       {std::string(kQVSocialSearchBaseVeltoContactKey), contact},
                       {std::string(kQVSocialSearchStartedDateKey), std::chrono::system_clock::now()}});
}

/// Whole nanoseconds, the rest cut off. What does not fit is for ever, and what is no number is nothing.
std::chrono::nanoseconds nanosecondsFromSeconds(double seconds) {
    constexpr double kNanosecondsPerSecond = 1e9;
    using Count = std::chrono::nanoseconds::rep;
    const double count = seconds * kNanosecondsPerSecond;
    if (std::isnan(count) || count <= 0) return std::chrono::nanoseconds::zero();
    if (count >= std::ldexp(1.0, 63)) return std::chrono::nanoseconds::max();
    return std::chrono::nanoseconds(static_cast<Count>(count));
}

/// A step that looks a record up and removes it runs on the main executor only, so that two never overlap. The
/// executor is not owned: it may hold the very search that calls this, until the search is answered.
void runOnMain(const std::weak_ptr<qv::MainExecutor>& mainExecutor, std::function<void()> step) {
    const auto executor = mainExecutor.lock();
    if (!executor) return;
    qv::runGuarded("the main executor",
                   [&] { executor->isMainThread() ? step() : executor->dispatchAsync(std::move(step)); });
}

}  // namespace

void QVBizCardManager::addSocialSearchRequestFromCardProcessingResponse(
    const std::shared_ptr<QVCardProcessingResponse>& response) {
    if (!response) return;
    const QVString requestID = response->originalNoteUUID();
    const ContactPtr contact = response->contact();
    if (!requestID || !contact) {
        assertRecordIsWhole();
        return;
    }
    mSocialSearches->insert(*requestID, recordOf(*requestID, contact));
    qv::runGuarded("the main executor", [&] {
        qv::MainQueue::executor()->dispatchAfter(
            nanosecondsFromSeconds(mSearchTimeOut),
            [searches = mSocialSearches, requestID = *requestID] { searches->timeOut(requestID); });
    });
    startLinkedInSearchFromCardProcessingResponse(response);
}

void QVBizCardManager::startLinkedInSearchFromCardProcessingResponse(
    const std::shared_ptr<QVCardProcessingResponse>& response) {
    if (!canStartLinkedInSearchForCardProcessingResponse(response)) return;
    response->setWillStartLinkedInSearch(true);
    auto request = searchRequestFromCardProcessingResponse(response);
    QVSocialSearchManager::Completion completion =
        [searches = mSocialSearches, executor = std::weak_ptr(qv::MainQueue::executor())](auto searchResponse) {
            runOnMain(executor, [searches, searchResponse] { searches->complete(searchResponse); });
        };
    // The host may have put a search of its own there; one that fails is answered by the time-out.
    qv::runGuarded("the social search manager", [&] {
        QVSocialSearchManager::sharedManager()->addSearchByRequest(std::move(request), std::move(completion));
    });
}

std::shared_ptr<QVSocialSearchRequest> QVBizCardManager::searchRequestFromCardProcessingResponse(
    const std::shared_ptr<QVCardProcessingResponse>& response) const {
    const auto emails = response ? response->contactEmails() : nullptr;
    if (!emails || emails->empty() || emails->front().empty()) return nullptr;
    auto request = QVSocialSearchRequest::initWithEmailAddress(emails->front());
    request->setRequestID(response->originalNoteUUID());
    return request;
}

QVBizCardManager::RequestInfo QVBizCardManager::socialSearchRequestInfoWithID(const QVString& requestID) const {
    const std::lock_guard lock(mSocialSearches->mutex);
    return mSocialSearches->find(requestID);
}

void QVBizCardManager::SocialSearches::insert(const std::string& requestID, RequestInfo record) const {
    const std::lock_guard lock(mutex);
    if (const auto map = requestMap.load()) map->insert_or_assign(requestID, std::move(record));
}

QVBizCardManager::RequestInfo QVBizCardManager::SocialSearches::find(const QVString& requestID) const {
    const auto map = requestMap.load();
    if (!map || !requestID) return nullptr;
    const auto entry = map->find(*requestID);
    const auto* record = entry == map->end() ? nullptr : std::any_cast<RequestInfo>(&entry->second);
    return record ? *record : nullptr;
}

QVBizCardManager::RequestInfo QVBizCardManager::SocialSearches::remove(const QVString& requestID) const {
    const std::lock_guard lock(mutex);
    auto record = find(requestID);
    if (record) requestMap.load()->erase(*requestID);
    return record;
}

void QVBizCardManager::SocialSearches::complete(const std::shared_ptr<QVSocialSearchResponse>& response) const {
    qv::Log::write("<INFO> Social Search Response: %@", response);
    const auto record = remove(response ? response->requestID() : std::nullopt);
    if (!record) return;
    if (const auto profile = response->mergedSocialProfile()) {
        sendSocialSearchFinishedNotification(profile, record);
    } else {
        sendSocialSearchNotFoundNotificationForRequestInfo(record);
    }
}

void QVBizCardManager::SocialSearches::timeOut(const std::string& requestID) const {
    if (const auto record = remove(requestID)) sendSocialSearchTimeoutNotificationForRequestInfo(record);
}
