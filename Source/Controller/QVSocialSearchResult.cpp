#include "QVCardScan/QVSocialSearchResult.h"

#include <any>

namespace {

template <typename Value>
const Value* valueOf(const qv::Dictionary& dictionary, std::string_view key) {
    const auto entry = dictionary.find(std::string(key));
    return entry == dictionary.end() ? nullptr : std::any_cast<Value>(&entry->second);
}

template <typename Value>
void read(Value& value, const qv::Dictionary& dictionary, std::string_view key) {
    if (const auto* found = valueOf<Value>(dictionary, key)) value = *found;
}

}  // namespace

std::optional<QVSocialSearchResult> QVSocialSearchResult::fromNotification(const qv::Notification& notification) {
    if (notification.name != kQVSocialSearchFinishedNotification) return std::nullopt;
    const qv::Dictionary& info = notification.userInfo;
    const auto* requestID = valueOf<std::string>(info, kQVSocialSearchRequestIDKey);
    const auto* resultType = valueOf<QVSocialSearchResultType>(info, kQVSocialSearchResultTypeKey);
    if (requestID == nullptr || resultType == nullptr) return std::nullopt;
    QVSocialSearchResult result;
    result.requestID = *requestID;
    result.resultType = *resultType;
    read(result.socialProfile, info, kQVSocialSearchSocialProfileKey);
    if (const auto* content = valueOf<std::string>(info, kQVSocialSearchNewQVMLContentKey)) {
        result.newQVMLContent = *content;
    }
    read(result.newImageResources, info, kQVSocialSearchNewImageResourcesKey);
    read(result.baseVeltoContact, info, kQVSocialSearchBaseVeltoContactKey);
    return result;
}
