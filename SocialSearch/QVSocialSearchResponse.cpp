#include "QVSocialSearch/QVSocialSearchResponse.h"

#include "QVPlatform/Format.h"

std::shared_ptr<QVSocialSearchResponse> QVSocialSearchResponse::initWithRequestID(
    QVString requestID, std::shared_ptr<QVSocialProfile> mergedSocialProfile) {
    auto response = std::make_shared<QVSocialSearchResponse>();
    response->mRequestID = std::move(requestID);
    response->mMergedSocialProfile = std::move(mergedSocialProfile);
    return response;
}

std::string QVSocialSearchResponse::description() const {
    if (!mMergedSocialProfile) return qv::format("request %@: nothing found", mRequestID);
    return qv::format("request %@: found a profile of type %d", mRequestID, mMergedSocialProfile->profileType());
}
