#include "QVCardScan/QVBizCardManager.h"
#include "QVCardScan/QVCardScanDefines.h"
#include "QVCardScan/QVVeltoNoteGenerator.h"
#include "QVPlatform/Log.h"
#include "QVPlatform/NotificationCenter.h"

#include <any>
#include <utility>

namespace {

using ContactPtr = std::shared_ptr<QVVeltoContact>;

template <typename Value>
void put(qv::Dictionary& dictionary, std::string_view key, Value value) {
    dictionary.insert_or_assign(std::string(key), std::move(value));
}

template <typename Value>
Value valueOf(const QVBizCardManager::RequestInfo& info, std::string_view key) {
    if (!info) return {};
    const auto entry = info->find(std::string(key));
    const auto* value = entry == info->end() ? nullptr : std::any_cast<Value>(&entry->second);
    return value ? *value : Value{};
}

std::string requestIDOf(const QVBizCardManager::RequestInfo& info) {
    return valueOf<std::string>(info, kQVSocialSearchRequestIDKey);
}

ContactPtr contactOf(const QVBizCardManager::RequestInfo& info) {
    return valueOf<ContactPtr>(info, kQVSocialSearchBaseVeltoContactKey);
}

QVSocialSearchResultType resultTypeOf(bool hasLinkedIn, bool hasFacebook) {
    if (hasLinkedIn && hasFacebook) return QVSocialSearchResultLinkedInAndFacebook;
    if (hasFacebook) return QVSocialSearchResultFacebook;
    return hasLinkedIn ? QVSocialSearchResultLinkedIn : QVSocialSearchResultNotFound;
}

void post(qv::Dictionary userInfo) {
    qv::NotificationCenter::defaultCenter().postNotification(
        {.name = std::string(kQVSocialSearchFinishedNotification), .object = {}, .userInfo = std::move(userInfo)});
}

void postWithContact(const QVBizCardManager::RequestInfo& requestInfo, QVSocialSearchResultType resultType) {
    qv::Dictionary userInfo;
    put(userInfo, kQVSocialSearchRequestIDKey, requestIDOf(requestInfo));
    put(userInfo, kQVSocialSearchBaseVeltoContactKey, contactOf(requestInfo));
    put(userInfo, kQVSocialSearchResultTypeKey, resultType);
    post(std::move(userInfo));
}

}  // namespace

void QVBizCardManager::sendSocialSearchFinishedNotification(const std::shared_ptr<QVSocialProfile>& profile,
                                                            const RequestInfo& forRequestInfo) {
    const auto contact = contactOf(forRequestInfo);
    bool avatarIsUpdated = false;
    if (contact) contact->mergeContactInfoFromSocialProfile(profile, avatarIsUpdated);
    const std::string requestID = requestIDOf(forRequestInfo);
    const QVString content = QVVeltoNoteGenerator().noteFromObject(contact);
    const bool hasLinkedIn = profile && profile->profileURLLinkedInPublic();
    const bool hasFacebook = profile && profile->profileURLFacebook();
    qv::Dictionary userInfo;
    put(userInfo, kQVSocialSearchRequestIDKey, requestID);
    // Absent only when the installation lacks its templates.
    if (content) put(userInfo, kQVSocialSearchNewQVMLContentKey, *content);
    if (avatarIsUpdated && contact->avatar()) {
        put(userInfo, kQVSocialSearchNewImageResourcesKey,
            std::make_shared<std::vector<std::shared_ptr<qv::Image>>>(1, contact->avatar()));
    }
    if (profile) put(userInfo, kQVSocialSearchSocialProfileKey, profile);
    put(userInfo, kQVSocialSearchResultTypeKey, resultTypeOf(hasLinkedIn, hasFacebook));
    post(std::move(userInfo));
    qv::Log::write("<INFO> sending out social search finished notification");
}

void QVBizCardManager::sendSocialSearchNotFoundNotificationForRequestInfo(const RequestInfo& requestInfo) {
    qv::Log::write("<INFO> sending out social search not found notification");
    postWithContact(requestInfo, QVSocialSearchResultNotFound);
}

void QVBizCardManager::sendSocialSearchTimeoutNotificationForRequestInfo(const RequestInfo& requestInfo) {
    qv::Log::write("<INFO> sending out social search timed out notification");
    postWithContact(requestInfo, QVSocialSearchResultTimedOut);
}
